#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace simulator {

/// Errors, warnings, interlocks and the standing conditions of the machine's lamps.
class Faults {
public:
    /// `stop` stops whatever runs when an error comes, and tells the phase to go on in after its reset;
    /// `doorOpened` is told when the door opens.
    Faults(Machine& machine, std::function<Phase()> stop, std::function<void()> doorOpened)
        : machine_(machine), stop_(std::move(stop)), doorOpened_(std::move(doorOpened)) {}

    [[nodiscard]] static std::span<const Row<Faults>> rows();
    void powerUp();

    /// Phase 7 with this code; 0 repeats that there is none.
    void raise(int code);

    /// A workstation interlock: reported, without a phase of its own.
    void raiseInterlock(int number);

    /// A short-lived technique warning.
    void warn(int code) { machine_.say("WN" + std::to_string(code)); }

    /// A fault of the exposure control, reported as the acknowledgement of a reset would be.
    void raiseExposureControl(int code) { machine_.say("AR" + std::to_string(code)); }

    /// Sets a lamp by its name, such as "door", which must be one.
    void setLamp(std::string_view name, bool on);
    [[nodiscard]] bool doorOpen() const { return doorOpen_; }
    [[nodiscard]] int code() const { return code_; }

    [[nodiscard]] static bool hasLamp(std::string_view name);

    /// Names of the lamps, one blank between.
    [[nodiscard]] static std::string lampNames();

private:
    bool tell(const Request& request);
    bool reset(const Request& request);
    void say();

    Machine& machine_;
    std::function<Phase()> stop_;
    std::function<void()> doorOpened_;
    int code_ = 0;
    int interlock_ = 0;
    Phase resume_ = Phase::NormalOperation;
    bool doorOpen_ = false;
};

} // namespace simulator
