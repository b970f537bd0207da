#include "sim/Options.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <optional>
#include <span>

namespace simulator {

namespace {

std::optional<std::int64_t> wholeNumber(std::string_view text, std::int64_t low, std::int64_t high) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value < low || value > high) {
        return std::nullopt;
    }
    return value;
}

template <class Number>
bool take(Number& target, std::string_view text, std::int64_t low, std::int64_t high) {
    const auto value = wholeNumber(text, low, high);
    if (value) {
        target = static_cast<Number>(*value);
    }
    return value.has_value();
}

bool takeFlag(bool& target, std::string_view text) {
    if (text == "1" || text == "on" || text == "yes") {
        target = true;
    } else if (text == "0" || text == "off" || text == "no") {
        target = false;
    } else {
        return false;
    }
    return true;
}

template <class Value> struct Choice {
    std::string_view name;
    Value value;
};

template <class Value, std::size_t Size>
bool takeChoice(Value& target, std::string_view text, const Choice<Value> (&choices)[Size]) {
    const auto found = std::ranges::find(choices, text, &Choice<Value>::name);
    if (found == std::end(choices)) {
        return false;
    }
    target = found->value;
    return true;
}

constexpr std::int64_t kLongestMs = 3'600'000;
constexpr std::int64_t kLargestSeed = std::numeric_limits<std::uint32_t>::max();

template <auto Member, std::int64_t Low, std::int64_t High>
bool number(Options& options, std::string_view text) {
    return take(options.*Member, text, Low, High);
}

template <auto Member> bool flag(Options& options, std::string_view text) {
    return takeFlag(options.*Member, text);
}

bool takeAck(Options& o, std::string_view v) {
    if (v == "off") {
        o.acknowledges = false;
        return true;
    }
    o.acknowledges = true;
    return take(o.ackMs, v, 0, kLongestMs);
}

bool takeEnd(Options& o, std::string_view v) {
    static constexpr Choice<MessageEnd> choices[] = {
        {"lf", MessageEnd::Lf}, {"etx", MessageEnd::Etx}, {"lfetx", MessageEnd::LfEtx}};
    return takeChoice(o.end, v, choices);
}

bool takeLine(Options& o, std::string_view v) {
    return take(o.baud, v, 0, 0) || take(o.baud, v, 300, 115'200);
}

bool takeStartPhase(Options& o, std::string_view v) {
    return take(o.startPhase, v, numberOf(quillon::Phase::Initialization),
                numberOf(quillon::Phase::AutocalOk));
}

bool takeKind(Options& o, std::string_view v) {
    static constexpr Choice<GeneratorKind> choices[] = {{"rad", GeneratorKind::Rad},
                                                        {"rf", GeneratorKind::RadFluoro}};
    return takeChoice(o.kind, v, choices);
}

bool takeThirdTube(Options& o, std::string_view v) {
    static constexpr Choice<ThirdTube> choices[] = {
        {"0", ThirdTube::None}, {"1", ThirdTube::OwnCounter}, {"dash", ThirdTube::BehindDash}};
    return takeChoice(o.thirdTube, v, choices);
}

bool takePositioner(Options& o, std::string_view v) {
    static constexpr Choice<PositionerKind> choices[] = {{"none", PositionerKind::None},
                                                         {"orla", PositionerKind::Orla},
                                                         {"remote", PositionerKind::Remote},
                                                         {"both", PositionerKind::Both}};
    return takeChoice(o.positioner, v, choices);
}

bool takeTechniqueMode(Options& o, std::string_view v) {
    if (v == "none") {
        o.techniqueMode = -1;
        return true;
    }
    return take(o.techniqueMode, v, 0, 3);
}

bool takeResult(Options& o, std::string_view v) {
    static constexpr Choice<bool> choices[] = {{"ok", true}, {"error", false}};
    return takeChoice(o.autocalSucceeds, v, choices);
}

bool takeVersion(Options& o, std::string_view v) {
    const bool printable = std::ranges::all_of(v, [](char c) { return c >= ' ' && c <= '~'; });
    if (printable) {
        o.version = v;
    }
    return printable;
}

struct Key {
    std::string_view name;
    std::string_view values;
    std::string_view meaning;
    bool (*take)(Options&, std::string_view);
};

// clang-format off
constexpr Key kKeys[] = {
    {"seed",          "N",                      "start of everything random (1)",                            number<&Options::seed, 0, kLargestSeed>},
    {"powerup",       "MS",                     "time in phase 1 (3000)",                                    number<&Options::powerUpMs, 0, kLongestMs>},
    {"startphase",    "1..13",                  "phase it is found in; 1 powers up (1)",                     takeStartPhase},
    {"answer",        "MS",                     "delay of answers and reports (40)",                         number<&Options::answerMs, 0, kLongestMs>},
    {"ack",           "MS|off",                 "delay of acknowledgements, or none at all (20)",            takeAck},
    {"dropack",       "N",                      "every Nth acknowledgement is lost; 0 none (0)",             number<&Options::dropEvery, 0, 1'000'000>},
    {"noise",         "PERCENT",                "share of the messages with garbage beside them (0)",        number<&Options::noisePercent, 0, 100>},
    {"twice",         "PERCENT",                "share of the messages that come twice (0)",                 number<&Options::twicePercent, 0, 100>},
    {"wrong",         "PERCENT",                "share of the values told that look right and are not (0)",  number<&Options::wrongPercent, 0, 100>},
    {"stuck",         "0|1",                    "tells each value as it was when this began (0)",            flag<&Options::stuck>},
    {"silent",        "0|1",                    "works but says nothing (0)",                                flag<&Options::silent>},
    {"end",           "lf|etx|lfetx",           "what follows the CR of a message (lf)",                     takeEnd},
    {"line",          "0|300..115200",          "baud rate the bytes are paced at, in pieces; 0: no pace (0)", takeLine},
    {"modechange",    "MS",                     "time to change into a service mode and back (300)",         number<&Options::modeMs, 0, kLongestMs>},
    {"dipswitch",     "0|1",                    "0: service modes are acknowledged but not entered (1)",     flag<&Options::dipSwitch>},
    {"type",          "rad|rf",                 "with fluoroscopy or without (rf)",                          takeKind},
    {"techmode",      "0..3|none",              "technique mode, or a machine without (none)",               takeTechniqueMode},
    {"maxdensity",    "0..8",                   "largest density step (8)",                                  number<&Options::maxDensity, 0, 8>},
    {"thirdtube",     "0|1|dash",               "counter of tube 3: none, own, behind a dash (0)",           takeThirdTube},
    {"positioner",    "none|orla|remote|both",  "positioners that answer (both)",                            takePositioner},
    {"heat",          "0..100",                 "tube heat in percent at the start (0)",                     number<&Options::heatPercent, 0, 100>},
    {"version",       "TEXT",                   "software version (SIM 1.0)",                                takeVersion},
    {"autoexpose",    "0|1",                    "exposes by itself in autocalibration (0)",                  flag<&Options::autoExpose>},
    {"exposures",     "1..10",                  "exposures an autocalibration takes (3)",                    number<&Options::autocalExposures, 1, 10>},
    {"autocalresult", "ok|error",               "how an autocalibration ends (ok)",                          takeResult},
};
// clang-format on

} // namespace

std::string applyOption(Options& options, std::string_view keyValue) {
    const std::size_t mark = keyValue.find('=');
    if (mark == std::string_view::npos) {
        return std::string(keyValue) + " is no KEY=VALUE";
    }
    const std::string name = quillon::lowerCase(keyValue.substr(0, mark));
    const std::string_view value = keyValue.substr(mark + 1);
    const auto key = std::ranges::find(kKeys, name, &Key::name);
    if (key == std::end(kKeys)) {
        return "there is no option '" + name + "'";
    }
    if (!key->take(options, value)) {
        return name + " takes " + std::string(key->values) + ", not '" + std::string(value) + "'";
    }
    return {};
}

std::string optionsHelp() {
    constexpr std::size_t kColumn = 36;
    std::string help;
    for (const Key& key : kKeys) {
        std::string line("  ");
        line.append(key.name).append("=").append(key.values);
        line.resize(std::max(kColumn, line.size() + 2), ' ');
        help += line + std::string(key.meaning) + "\n";
    }
    return help;
}

} // namespace simulator
