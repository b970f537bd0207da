#pragma once

#include "sim/Calibration.h"
#include "sim/Commands.h"
#include "sim/Machine.h"

#include <functional>
#include <span>
#include <string>

namespace simulator {

/// The machine calibrates the present place of the list by itself: it asks whether to (phase 11), takes its
/// exposures (phase 9, with 3 and 4 in between), and ends well (13) or badly (12).
class Autocalibration {
public:
    /// `press` presses the hand switch through; it returns why that had no effect, or nothing.
    Autocalibration(Machine& machine, Calibration& calibration, std::function<std::string()> press)
        : machine_(machine), calibration_(calibration), press_(std::move(press)) {}

    [[nodiscard]] static std::span<const Row<Autocalibration>> rows();

    /// An exposure in phase 9 is over; a short one counts for nothing.
    void exposureOver(bool complete);

    /// Ends without a result and says so.
    void leave();
    void halt();

    /// That this autocalibration has taken.
    [[nodiscard]] int exposures() const { return exposures_; }

private:
    bool onOff(const Request& request);
    bool retry(const Request& request);
    void ask();
    void confirm();
    void begin();
    void dismiss();
    void pressLater(std::int64_t ms);
    void tellProgress();
    void end();

    Machine& machine_;
    Calibration& calibration_;
    std::function<std::string()> press_;
    Agenda::Ticket next_ = Agenda::kNone;
    bool waiting_ = false; ///< a step of the entry or the exit is under way
    int exposures_ = 0;
};

} // namespace simulator
