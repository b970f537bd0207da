#include "sim/ExposureControl.h"

#include "sim/Formats.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace simulator {

namespace {

constexpr int kScreens = 3;
constexpr int kHighestBrightness = 100;
constexpr std::string_view kSwitchMnemonics[] = {"PH", "DA", "RM"};

bool whole(double value, int low, int high) {
    return value == std::floor(value) && value >= low && value <= high;
}

} // namespace

std::span<const Row<ExposureControl>> ExposureControl::rows() {
    using C = ExposureControl;
    // clang-format off
    static constexpr Row<ExposureControl> rows[] = {
        {"MD?",  Phases{Phase::NormalOperation, Phase::Calibration},   Takes::Nothing,         &C::tellMaxDensity},
        {"AEC",  kReady,                                               Takes::Text,            &C::setAll},
        {"AF",   kReady,                                               Takes::Nothing,         &C::refresh},
        {"FI",   Phases{Phase::NormalOperation, Phase::Configuration}, Takes::Text,            &C::setField},
        {"FI?",  kReady,                                               Takes::Nothing,         &C::tellFields},
        {"FN",   kReady,                                               Takes::Number,          &C::setDensity},
        {"FN?",  kReady,                                               Takes::Nothing,         &C::tellDensity},
        {"FS",   kReady,                                               Takes::Number,          &C::setScreen},
        {"FS?",  kReady,                                               Takes::Nothing,         &C::tellScreen},
        {"PH",   kReady,                                               Takes::NumberOrNothing, &C::setSwitch, kPhotomultiplier},
        {"DA",   kReady,                                               Takes::NumberOrNothing, &C::setSwitch, kDigital},
        {"RM",   kEveryPhase,                                          Takes::NumberOrNothing, &C::setSwitch, kRoadmapping},
        {"BR",   kReady,                                               Takes::Number,          &C::setBrightness},
        {"BR+",  kReady,                                               Takes::Nothing,         &C::stepBrightness, 1},
        {"BR++", kReady,                                               Takes::Nothing,         &C::stepBrightness, 5},
        {"BRU",  kReady,                                               Takes::Nothing,         &C::stepBrightness, 1},
        {"BR-",  kReady,                                               Takes::Nothing,         &C::stepBrightness, -1},
        {"BR--", kReady,                                               Takes::Nothing,         &C::stepBrightness, -5},
        {"BRD",  kReady,                                               Takes::Nothing,         &C::stepBrightness, -1},
    };
    // clang-format on
    return rows;
}

void ExposureControl::powerUp() {
    fields_ = {};
    switches_ = {};
    density_ = machine_.options.maxDensity / 2;
    screen_ = 1;
    brightness_ = 50;
}

bool ExposureControl::chooseFields(std::string_view digits) {
    if (digits.size() != fields_.size() || digits.find_first_not_of("01") != std::string_view::npos) {
        return false;
    }
    std::ranges::transform(digits, fields_.begin(), [](char digit) { return digit == '1'; });
    machine_.say("AEC" + std::string(digits));
    return true;
}

bool ExposureControl::chooseDensity(double step) {
    if (!whole(step, 0, machine_.options.maxDensity)) {
        return false;
    }
    sayDensity(false);
    density_ = static_cast<int>(step);
    sayDensity(true);
    return true;
}

bool ExposureControl::chooseScreen(double screen) {
    if (!whole(screen, 0, kScreens - 1)) {
        return false;
    }
    sayScreen(false);
    screen_ = static_cast<int>(screen);
    sayScreen(true);
    return true;
}

bool ExposureControl::chooseDigital(double on) {
    switches_[kDigital] = on != 0;
    saySwitch(kDigital);
    return true;
}

bool ExposureControl::chooseBrightness(double level) {
    if (!whole(level, 0, kHighestBrightness)) {
        return false;
    }
    brightness_ = static_cast<int>(level);
    sayBrightness();
    return true;
}

bool ExposureControl::chooseRoadmapping(double on) {
    switches_[kRoadmapping] = on != 0;
    saySwitch(kRoadmapping);
    return true;
}

bool ExposureControl::tellMaxDensity(const Request&) {
    machine_.say("MD" + std::to_string(machine_.options.maxDensity));
    return true;
}

bool ExposureControl::setAll(const Request& request) {
    // Three digits for the fields; then, or not, one for the screen and the rest for the density.
    const std::string_view fields = request.argument.substr(0, fields_.size());
    const std::string_view rest = request.argument.substr(fields.size());
    if (rest.empty()) {
        return chooseFields(fields);
    }
    const auto screen = numberIn(rest.substr(0, 1));
    const auto density = numberIn(rest.substr(1));
    return screen && density && chooseFields(fields) && chooseScreen(*screen) && chooseDensity(*density);
}

bool ExposureControl::setField(const Request& request) {
    const std::string_view text = request.argument;
    if (text.empty() || text.size() > 2 || text[0] < '0' || text[0] > '2') {
        return false;
    }
    const int field = text[0] - '0';
    bool& state = fields_[static_cast<std::size_t>(field)];
    if (text.size() == 1) {
        state = !state;
    } else if (text[1] == '0' || text[1] == '1') {
        state = text[1] == '1';
    } else {
        return false;
    }
    sayField(field);
    return true;
}

bool ExposureControl::setSwitch(const Request& request) {
    bool& state = switches_.at(static_cast<std::size_t>(request.amount));
    state = request.number ? *request.number != 0 : !state;
    saySwitch(request.amount);
    return true;
}

bool ExposureControl::stepBrightness(const Request& request) {
    return chooseBrightness(std::clamp(brightness_ + request.amount, 0, kHighestBrightness));
}

bool ExposureControl::refresh(const Request&) {
    sayFields();
    sayScreen(true);
    sayDensity(true);
    for (int which = 0; which < kSwitches; ++which) {
        saySwitch(which);
    }
    sayBrightness();
    return true;
}

void ExposureControl::sayFields() {
    for (int field = 0; field < 3; ++field) {
        sayField(field);
    }
}

void ExposureControl::sayField(int field) {
    machine_.say("FI" + std::to_string(field) + (fields_.at(static_cast<std::size_t>(field)) ? "1" : "0"));
}

void ExposureControl::sayDensity(bool on) {
    machine_.say("FN" + std::to_string(density_) + (on ? "1" : "0"));
}

void ExposureControl::sayScreen(bool on) {
    machine_.say("FS" + std::to_string(screen_) + (on ? "1" : "0"));
}

void ExposureControl::saySwitch(int which) {
    const auto index = static_cast<std::size_t>(which);
    machine_.say(std::string(kSwitchMnemonics[index]) + (switches_.at(index) ? "1" : "0"));
}

void ExposureControl::sayBrightness() {
    machine_.say("BR" + std::to_string(brightness_));
}

} // namespace simulator
