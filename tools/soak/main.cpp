// Random work against the simulated generator in virtual time: many short sessions, or one of many days.

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>
#include <span>
#include <string>
#include <string_view>

#include <unistd.h>

#include "Trial.h"

namespace {

using namespace quillon;

constexpr Milliseconds kDay = Milliseconds{24} * 3600 * 1000;

/// What is left of a day when the work ends.
constexpr Milliseconds kEvening = Milliseconds{30} * 60 * 1000;

/// Seconds of processor that a day of polling may take.
#ifdef __SANITIZE_ADDRESS__
constexpr double kIdleLimit = 10;
#elif defined(NDEBUG)
constexpr double kIdleLimit = 2;
#else
constexpr double kIdleLimit = 5;
#endif

/// Resident memory in KiB.
long residentMemory() {
    std::ifstream file("/proc/self/statm");
    long total = 0;
    long resident = 0;
    file >> total >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

int trials(std::uint32_t first, std::uint32_t count, int commands) {
    for (std::uint32_t seed = first; seed < first + count; ++seed) {
        Plan played;
        if (!violationsOf(seed, commands, played).empty()) {
            std::cout << shrunk(seed, std::move(played)).text();
            return 1;
        }
    }
    std::cout << count << " sessions, nothing that must not happen\n";
    return 0;
}

/// Prints a session as a scenario file, and on standard error the frames that it brings on the line.
int print(std::uint32_t seed, int commands) {
    Plan played;
    (void)violationsOf(seed, commands, played);
    Session session(played);
    session.onFrame = [&session](std::string_view frame) {
        std::cerr << session.machine.time.now() << " tx \"" << frame << "\"\n";
    };
    for (const std::string& line : played.lines) {
        session.perform(line);
    }
    std::cout << scenarioOf(played);
    return 0;
}

/// One application that is never restarted. A day of work ends at rest, so that days can be compared.
int soak(int days, std::uint32_t seed) {
    Plan plan;
    plan.generator = "startphase=2";
    Session session(plan);
    session.keepDone(false);
    Chance chance(seed);
    // Its own clock, started once and never corrected: it shows whether lateness adds up.
    Timer second(session.machine.time.schedule());
    std::uint64_t ticks = 0;
    second.setTick([&ticks] { ++ticks; });
    const Milliseconds begin = session.machine.time.now();
    second.start(1000);

    long firstDay = 0;
    long lastDay = 0;
    for (int day = 1; day <= days; ++day) {
        while (session.machine.time.now() < begin + day * kDay - kEvening) {
            std::string line = chance.next(session);
            // The day ends with the closing of the window; this operator works on.
            if (line.find("Quillon.cmbClose") == std::string::npos ||
                session.find("Quillon.cmbClose")->caption() == "Exit") {
                session.perform(line);
            }
            if (session.machine.time.now() % 7 == 0) {
                session.perform("wait 120000"); // somebody has coffee
            }
        }
        session.comeToRest();
        session.perform("wait " + std::to_string(std::max<Milliseconds>(0, begin + day * kDay -
                                                                               session.machine.time.now())));
        lastDay = residentMemory();
        if (day == std::max(1, days / 10)) {
            firstDay = lastDay;
        }
        std::cout << "day " << day << ": " << session.frameCount() << " frames, " << session.reportCount()
                  << " messages, " << lastDay << " KiB" << std::endl;
    }
    const auto passed = static_cast<std::uint64_t>((session.machine.time.now() - begin) / 1000);
    std::cout << "timer: " << ticks << " ticks in " << passed << " s\n"
              << "memory: " << firstDay << " KiB after day " << std::max(1, days / 10) << ", " << lastDay
              << " KiB at the end\n";
    for (const std::string& violation : session.violations()) {
        std::cout << "violation: " << violation << "\n";
    }
    const bool flat = lastDay <= firstDay + firstDay / 50 + 512;
    std::cout << (flat ? "" : "memory grows\n") << (ticks == passed ? "" : "the timer drifts\n");
    return flat && ticks == passed && session.violations().empty() ? 0 : 1;
}

/// A day in which nobody comes: the generator is polled and answers.
int idle() {
    Plan plan;
    plan.generator = "startphase=2";
    Session session(plan);
    const std::clock_t begin = std::clock(); // of this process: other work on the machine does not count
    session.machine.time.advance(kDay);
    const double took = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    // One poll in 1350 ms, each answered.
    const bool polled = session.frameCount() >= kDay / 1400 && session.reportCount() >= kDay / 1400;
    std::cout << "a day of polling: " << session.frameCount() << " frames in " << took << " s of processor\n";
    return polled && took < kIdleLimit ? 0 : 1;
}

std::uint32_t number(std::string_view text) {
    return static_cast<std::uint32_t>(std::strtoul(std::string(text).c_str(), nullptr, 10));
}

int run(std::span<char*> words) {
    const auto argument = [&](std::size_t at, std::uint32_t otherwise) {
        return at < words.size() ? number(words[at]) : otherwise;
    };
    const std::string_view what = words.empty() ? "" : words[0];
    if (what == "trials") {
        return trials(argument(1, 1), argument(2, 100), static_cast<int>(argument(3, 150)));
    }
    if (what == "print") {
        return print(argument(1, 1), static_cast<int>(argument(2, 150)));
    }
    if (what == "days") {
        return soak(static_cast<int>(argument(1, 30)), argument(2, 1));
    }
    if (what == "idle") {
        return idle();
    }
    std::cerr << "usage: quillon-soak trials [FIRST-SEED [COUNT [COMMANDS]]]   short random sessions\n"
                 "       quillon-soak print SEED [COMMANDS]                    one of them as a scenario\n"
                 "       quillon-soak days [DAYS [SEED]]                       one session of many days\n"
                 "       quillon-soak idle                                     a day of polling, timed\n";
    return 2;
}

} // namespace

int main(int count, char** arguments) {
    return run(std::span(arguments + 1, static_cast<std::size_t>(count > 0 ? count - 1 : 0)));
}
