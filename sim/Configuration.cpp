#include "sim/Configuration.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace simulator {

namespace {

struct Range {
    std::string_view mnemonic;
    int lowest;
    int highest;
};

// In the order of the items.
constexpr Range kRanges[] = {{"TU", 1, 2},  {"WM", 0, 7},  {"IC", 0, 3}, {"WSI", 0, 3},
                             {"WSF", 0, 1}, {"WSS", 0, 1}, {"KVT", 0, 8}};

constexpr int kLastModeWithoutFluoroscopy = 3;

} // namespace

Configuration::Configuration(Machine& machine, std::function<void()> fields)
    : machine_(machine), fields_(std::move(fields)) {
    fill();
}

std::span<const Row<Configuration>> Configuration::rows() {
    using C = Configuration;
    // clang-format off
    static constexpr Row<Configuration> rows[] = {
        {"WS",   Phases{Phase::NormalOperation, Phase::Configuration}, Takes::Number,  &C::setWorkstation},
        {"CFD",  kConfiguring,                                         Takes::Nothing, &C::setDefaults},
        {"TU+",  kConfiguring,                                         Takes::Nothing, &C::step<kTube>, 1},
        {"TU-",  kConfiguring,                                         Takes::Nothing, &C::step<kTube>, -1},
        {"WM+",  kConfiguring,                                         Takes::Nothing, &C::step<kWorkingMode>, 1},
        {"WM-",  kConfiguring,                                         Takes::Nothing, &C::step<kWorkingMode>, -1},
        {"IC+",  kConfiguring,                                         Takes::Nothing, &C::step<kChamber>, 1},
        {"IC-",  kConfiguring,                                         Takes::Nothing, &C::step<kChamber>, -1},
        {"WSI+", kConfiguring,                                         Takes::Nothing, &C::step<kInterlock>, 1},
        {"WSI-", kConfiguring,                                         Takes::Nothing, &C::step<kInterlock>, -1},
        {"WSF+", kConfiguring,                                         Takes::Nothing, &C::step<kFailSafe>, 1},
        {"WSF-", kConfiguring,                                         Takes::Nothing, &C::step<kFailSafe>, -1},
        {"WSS+", kConfiguring,                                         Takes::Nothing, &C::step<kSync>, 1},
        {"WSS-", kConfiguring,                                         Takes::Nothing, &C::step<kSync>, -1},
        {"KVT+", kConfiguring,                                         Takes::Nothing, &C::step<kTracking>, 1},
        {"KVT-", kConfiguring,                                         Takes::Nothing, &C::step<kTracking>, -1},
    };
    // clang-format on
    return rows;
}

bool Configuration::choose(double number) {
    if (number != std::floor(number) || number < 1 || number > kStations) {
        return false;
    }
    selected_ = static_cast<std::size_t>(number) - 1;
    if (machine_.phase() == Phase::Configuration) {
        report();
    } else {
        machine_.say("WS" + std::to_string(workstation()));
        say(kWorkingMode);
    }
    return true;
}

std::vector<std::pair<std::string, int>> Configuration::allValues() const {
    std::vector<std::pair<std::string, int>> all;
    for (std::size_t station = 0; station < kStations; ++station) {
        for (std::size_t item = 0; item < kItems; ++item) {
            all.emplace_back("WS" + std::to_string(station + 1) + "." + std::string(kRanges[item].mnemonic),
                             stations_.at(station).values.at(item));
        }
    }
    return all;
}

void Configuration::report() {
    machine_.say("WS" + std::to_string(workstation()));
    for (int item = 0; item < kItems; ++item) {
        say(static_cast<Item>(item));
    }
    fields_();
    machine_.say(machine_.options.kind == GeneratorKind::RadFluoro ? "FLD1" : "FLD0");
}

template <Configuration::Item item> bool Configuration::step(const Request& request) {
    int& value = stations_.at(selected_).values[item];
    value = std::clamp(value + request.amount, kRanges[item].lowest, highest(item));
    say(item);
    return true;
}

bool Configuration::setDefaults(const Request&) {
    fill();
    report();
    return true;
}

void Configuration::fill() {
    for (std::size_t number = 0; number < kStations; ++number) {
        auto& values = stations_.at(number).values;
        values.fill(0);
        values[kTube] = 1;
        // The first stations of a fresh machine: direct, two buckys, tomography, and fluoroscopy behind.
        values[kWorkingMode] = std::min(static_cast<int>(number), highest(kWorkingMode));
        values[kChamber] = number == 0 ? 0 : 1;
    }
}

void Configuration::say(Item item) {
    machine_.say(std::string(kRanges[item].mnemonic) + std::to_string(stations_.at(selected_).values[item]));
}

int Configuration::highest(Item item) const {
    if (item == kTube && machine_.options.thirdTube != ThirdTube::None) {
        return 3;
    }
    if (item == kWorkingMode && machine_.options.kind == GeneratorKind::Rad) {
        return kLastModeWithoutFluoroscopy;
    }
    return kRanges[item].highest;
}

} // namespace simulator
