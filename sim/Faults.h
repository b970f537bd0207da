#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>

namespace simulator {

/// Errors, warnings, interlocks and the standing conditions of the machine's lamps.
class Faults {
public:
    /// `stop` stops whatever runs when an error comes, and tells the phase to go on in after its reset;
    /// `hindered` is told when a condition comes that forbids radiation.
    Faults(Machine& machine, std::function<Phase()> stop, std::function<void()> hindered)
        : machine_(machine), stop_(std::move(stop)), hindered_(std::move(hindered)) {}

    [[nodiscard]] static std::span<const Row<Faults>> rows();
    void powerUp();
    /// Reports the lamps that stand; they outlast a power cut, like an open door.
    void sayLamps();

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
    /// Why a lamp that stands forbids radiation; empty when none does.
    [[nodiscard]] std::string_view hindrance() const;
    [[nodiscard]] int code() const { return code_; }
    [[nodiscard]] bool lampOn(std::string_view name) const { return lamps_.contains(name); }

    [[nodiscard]] static bool hasLamp(std::string_view name);

    /// Names of the lamps, one blank between.
    [[nodiscard]] static std::string lampNames();

private:
    bool tell(const Request& request);
    bool reset(const Request& request);
    [[nodiscard]] bool hinders(std::string_view lamp) const;

    Machine& machine_;
    std::function<Phase()> stop_;
    std::function<void()> hindered_;
    int code_ = 0;
    int interlock_ = 0;
    Phase resume_ = Phase::NormalOperation;
    std::set<std::string, std::less<>> lamps_; // the names of those that stand
};

} // namespace simulator
