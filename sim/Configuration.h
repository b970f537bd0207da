#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <array>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace simulator {

/// Workstations and what belongs to each: tube, working mode, ionisation chamber, interlock, fail safe,
/// synchronisation and kVp tracking. Configuration survives a power cut.
class Configuration {
public:
    /// `fields` reports the measuring fields, which belong to the picture too.
    Configuration(Machine& machine, std::function<void()> fields);

    [[nodiscard]] static std::span<const Row<Configuration>> rows();

    /// Tube of the selected workstation, 1 to 3.
    [[nodiscard]] int tube() const { return stations_.at(selected_).values[kTube]; }
    [[nodiscard]] int workstation() const { return static_cast<int>(selected_) + 1; }
    /// In the order tube, working mode, chamber, interlock, fail safe, synchronisation, tracking.
    [[nodiscard]] std::span<const int> valuesOf(std::size_t station) const {
        return stations_.at(station).values;
    }
    /// Mnemonic and value of each item of each workstation: "WS1.TU".
    [[nodiscard]] std::vector<std::pair<std::string, int>> allValues() const;

    /// Selects a workstation and reports it. False: there is none of that number.
    bool choose(double number);

    /// Reports everything the configuration page shows.
    void report();

private:
    enum Item { kTube, kWorkingMode, kChamber, kInterlock, kFailSafe, kSync, kTracking, kItems };
    static constexpr std::size_t kStations = 8;

    struct Station {
        std::array<int, kItems> values{};
    };

    bool setWorkstation(const Request& request) { return choose(*request.number); }
    template <Item item> bool step(const Request& request);
    bool setDefaults(const Request& request);

    void fill();
    void say(Item item);
    [[nodiscard]] int highest(Item item) const;

    Machine& machine_;
    std::function<void()> fields_;
    std::array<Station, kStations> stations_{};
    std::size_t selected_ = 0;
};

} // namespace simulator
