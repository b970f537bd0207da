#pragma once

#include "sim/Commands.h"
#include "sim/Exposure.h"
#include "sim/Machine.h"

#include <array>
#include <optional>
#include <span>
#include <string>

namespace simulator {

/// What the machine remembers of its exposures: counters, dose, and the values of the last one. It all
/// survives a power cut.
class Records {
public:
    static constexpr int kFluoroCounter = 2;

    explicit Records(Machine& machine) : machine_(machine) {}

    [[nodiscard]] static std::span<const Row<Records>> rows();

    /// Counts an exposure of tube 1 to 3, adds its dose, and reports what was measured.
    void record(int tube, const Shot& shot);
    void addFluoroSecond(double kvp, double ma);

    [[nodiscard]] int counter(int number) const { return counters_.at(static_cast<std::size_t>(number)); }
    void setCounter(int number, int value) { counters_.at(static_cast<std::size_t>(number)) = value; }

private:
    bool tellCounter(const Request& request);
    bool resetCounter(const Request& request);
    bool tellLastDose(const Request& request);
    bool tellDose(const Request& request);
    bool resetDose(const Request& request);
    bool tellLast(const Request& request);
    void sayLast();

    /// The number, if there is such a counter.
    [[nodiscard]] std::optional<int> counterOf(const Request& request) const;

    Machine& machine_;
    std::array<int, 4> counters_{};
    double lastDose_ = 0;
    double dose_ = 0;
    std::optional<Shot> last_;
};

} // namespace simulator
