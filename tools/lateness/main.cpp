// The console's window program with somebody beside it who measures how long it takes to its first window,
// how late its timers are and how long it paints. For scripts/lateness and scripts/bench.

#include "LatenessTrace.h"
#include "StartupTrace.h"
#include "qt/Program.h"

namespace quillon {

namespace {

struct Traces {
    Traces(QtScheduleDriver& driver, Schedule& schedule, QWidget& window)
        : startup(window), lateness(driver, schedule, window) {}
    StartupTrace startup;
    LatenessTrace lateness;
};

} // namespace

} // namespace quillon

int main(int argc, char** argv) {
    return quillon::runProgram(
        argc, argv, [](quillon::QtScheduleDriver& driver, quillon::Schedule& schedule, QWidget& window) {
            return std::make_shared<quillon::Traces>(driver, schedule, window);
        });
}
