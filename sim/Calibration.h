#pragma once

#include "sim/Commands.h"
#include "sim/Exposure.h"
#include "sim/Machine.h"

#include <cstddef>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace simulator {

/// The calibration list: the mA stations of the small focus, those of the large one, and the extended
/// parameters behind them. It is walked with the mA steps; the values at the present place can be changed
/// and stored, and stored values survive a power cut.
class Calibration {
public:
    explicit Calibration(Machine& machine);

    [[nodiscard]] static std::span<const Row<Calibration>> rows();

    /// Reports the present place with all that belongs to it.
    void report();

    /// Reports only what an exposure here is made with.
    void reportShot();

    [[nodiscard]] Shot shot() const { return place().shot; }
    [[nodiscard]] bool onParameter() const { return place().parameter != 0; }

    /// What the machine has measured by itself becomes the stored value, and is reported.
    void adopt(int value);
    [[nodiscard]] int value() const { return place().value; }
    /// The mode is entered again: what was changed and not stored is lost.
    void reread() { place().value = place().stored; }

    /// Name and stored value of each place: "small.50", "large.320", "E07".
    [[nodiscard]] std::vector<std::pair<std::string, int>> storedValues() const;

private:
    struct Place {
        int parameter; ///< 1 to 32; 0 for a station
        bool large;
        Shot shot;
        int value;
        int stored;
    };

    bool walk(const Request& request);
    bool toggleFocus(const Request& request);
    bool stepKvp(const Request& request);
    bool stepMas(const Request& request);
    bool stepValue(const Request& request);
    bool setValue(const Request& request);
    bool storeValue(const Request& request);
    bool readValue(const Request& request);
    bool tellKvp(const Request&) { return sayKvp(), true; }
    bool tellPlace(const Request&) { return sayPlace(), true; }
    bool tellMs(const Request&) { return sayMs(), true; }
    bool tellMas(const Request&) { return sayMas(), true; }
    bool tellFocus(const Request&) { return sayFocus(), true; }

    [[nodiscard]] const Place& place() const { return list_[at_]; }
    [[nodiscard]] Place& place() { return list_[at_]; }
    void sayPlace();
    void sayFocus();
    void sayKvp();
    void sayMs();
    void sayMas();
    void sayValue();

    Machine& machine_;
    std::vector<Place> list_;
    std::size_t at_ = 0;
};

} // namespace simulator
