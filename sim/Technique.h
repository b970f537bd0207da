#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <optional>
#include <span>

namespace simulator {

/// kVp, mA, ms, mAs, focal spot and technique mode of a radiographic exposure. mAs is not a value of its
/// own: it follows from mA and ms, and a chosen mAs is reached through ms.
class Technique {
public:
    explicit Technique(Machine& machine) : machine_(machine) {}

    [[nodiscard]] static std::span<const Row<Technique>> rows();

    /// The values a cold machine starts with.
    void powerUp();

    [[nodiscard]] double kvp() const { return kvp_; }
    [[nodiscard]] double ma() const { return ma_; }
    [[nodiscard]] double ms() const { return ms_; }
    [[nodiscard]] double mas() const { return ma_ * ms_ / 1000; }
    [[nodiscard]] bool largeFocus() const { return largeFocus_; }

    // Each limits what it is given, reports what it took, and warns of a limit. False: it was limited.
    bool chooseKvp(double kvp);
    bool chooseMa(double ma);
    bool chooseMs(double ms);
    bool chooseMas(double mas);
    bool chooseFocus(bool large);

    /// Reports all values.
    void report();

private:
    bool stepKvp(const Request& request) { return chooseKvp(kvp_ + request.amount), true; }
    bool stepMa(const Request& request);
    bool stepMs(const Request& request);
    bool stepMas(const Request& request);
    bool setKvp(const Request& request) { return chooseKvp(*request.number), true; }
    bool setMa(const Request& request) { return chooseMa(*request.number), true; }
    bool setMs(const Request& request) { return chooseMs(*request.number), true; }
    bool setMas(const Request& request) { return chooseMas(*request.number / 1000), true; }
    bool toggleFocus(const Request&) { return chooseFocus(!largeFocus_), true; }
    bool setFocus(const Request& request);
    bool setMode(const Request& request);
    bool refresh(const Request& request);
    bool tellKvp(const Request&) { return sayKvp(), true; }
    bool tellMa(const Request&) { return sayMa("MA"), true; }
    bool tellMs(const Request&) { return sayMs("MS"), true; }
    bool tellMas(const Request&) { return sayMas("MX"), true; }
    bool tellFocus(const Request&) { return sayFocus(), true; }
    bool tellMode(const Request&) { return sayMode(), true; }

    [[nodiscard]] const Focus& focusOf(bool large) const {
        return large ? machine_.options.largeFocus : machine_.options.smallFocus;
    }
    void sayKvp();
    void sayMa(std::string_view mnemonic);
    void sayMs(std::string_view mnemonic);
    void sayMas(std::string_view mnemonic);
    void sayFocus();
    void sayMode();
    void warn(int code);

    Machine& machine_;
    double kvp_ = 0;
    double ma_ = 0;
    double ms_ = 0;
    bool largeFocus_ = false;
};

} // namespace simulator
