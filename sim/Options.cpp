#include "sim/Options.h"

#include "base/Phase.h"
#include "base/Text.h"
#include "sim/Faults.h"
#include "sim/Formats.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <iterator>
#include <limits>
#include <optional>
#include <span>

namespace simulator {

namespace {

using quillon::trim;

constexpr std::int64_t kLongestMs = 3'600'000;
constexpr std::int64_t kLargestSeed = std::numeric_limits<std::uint32_t>::max();

std::optional<std::int64_t> wholeNumber(std::string_view text, std::int64_t low, std::int64_t high) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || value < low || value > high) {
        return std::nullopt;
    }
    return value;
}

template <class Number>
bool takeWhole(Number& target, std::string_view text, std::int64_t low, std::int64_t high) {
    const auto value = wholeNumber(text, low, high);
    if (value) {
        target = static_cast<Number>(*value);
    }
    return value.has_value();
}

bool takeDecimal(double& target, std::string_view text, double low, double high) {
    const auto value = numberIn(text);
    if (!value || *value < low || *value > high) {
        return false;
    }
    target = *value;
    return true;
}

std::string decimal(double value) {
    return shortNumber(value, 3);
}

// How a kind of value is read and told.

template <auto Member, std::int64_t Low, std::int64_t High> struct Whole {
    static bool take(Options& o, std::string_view v) { return takeWhole(o.*Member, v, Low, High); }
    static std::string tell(const Options& o) { return std::to_string(static_cast<std::int64_t>(o.*Member)); }
};

/// The bounds in thousandths.
template <auto Member, int Low, int High> struct Decimal {
    static bool take(Options& o, std::string_view v) {
        return takeDecimal(o.*Member, v, Low / 1000.0, High / 1000.0);
    }
    static std::string tell(const Options& o) { return decimal(o.*Member); }
};

template <auto Member> struct Flag {
    static bool take(Options& o, std::string_view v) {
        const bool on = v == "1" || v == "on" || v == "yes";
        const bool known = on || v == "0" || v == "off" || v == "no";
        o.*Member = known ? on : o.*Member;
        return known;
    }
    static std::string tell(const Options& o) { return o.*Member ? "1" : "0"; }
};

template <class Value> struct Named {
    std::string_view name;
    Value value;
};

template <auto Member, const auto& Names> struct Choice {
    static bool take(Options& o, std::string_view v) {
        const auto* const found = std::ranges::find(Names, v, [](const auto& each) { return each.name; });
        if (found == std::end(Names)) {
            return false;
        }
        o.*Member = found->value;
        return true;
    }
    static std::string tell(const Options& o) {
        const auto* const found =
            std::ranges::find(Names, o.*Member, [](const auto& each) { return each.value; });
        return std::string(found->name);
    }
};

constexpr Named<MessageEnd> kEnds[] = {
    {"lf", MessageEnd::Lf}, {"etx", MessageEnd::Etx}, {"lfetx", MessageEnd::LfEtx}};
constexpr Named<GeneratorKind> kKinds[] = {{"rad", GeneratorKind::Rad}, {"rf", GeneratorKind::RadFluoro}};
constexpr Named<ThirdTube> kThirdTubes[] = {
    {"0", ThirdTube::None}, {"1", ThirdTube::OwnCounter}, {"dash", ThirdTube::BehindDash}};
constexpr Named<PositionerKind> kPositioners[] = {{"none", PositionerKind::None},
                                                  {"orla", PositionerKind::Orla},
                                                  {"remote", PositionerKind::Remote},
                                                  {"both", PositionerKind::Both}};
constexpr Named<bool> kResults[] = {{"ok", true}, {"error", false}};
constexpr Named<bool> kDipReadings[] = {{"atonce", false}, {"powerup", true}};
constexpr Named<bool> kHands[] = {{"released", false}, {"held", true}};

struct Acknowledgement {
    static bool take(Options& o, std::string_view v) {
        o.acknowledges = v != "off";
        return !o.acknowledges || takeWhole(o.ackMs, v, 0, kLongestMs);
    }
    static std::string tell(const Options& o) { return o.acknowledges ? std::to_string(o.ackMs) : "off"; }
};

struct Pace {
    static bool take(Options& o, std::string_view v) {
        return takeWhole(o.baud, v, 0, 0) || takeWhole(o.baud, v, 300, 115'200);
    }
    static std::string tell(const Options& o) { return std::to_string(o.baud); }
};

struct TechniqueMode {
    static bool take(Options& o, std::string_view v) {
        if (v == "none") {
            o.techniqueMode = -1;
            return true;
        }
        return takeWhole(o.techniqueMode, v, 0, 3);
    }
    static std::string tell(const Options& o) {
        return o.techniqueMode < 0 ? "none" : std::to_string(o.techniqueMode);
    }
};

struct Version {
    static bool take(Options& o, std::string_view v) {
        const bool printable = std::ranges::all_of(v, [](char c) { return c >= ' ' && c <= '~'; });
        if (printable) {
            o.version = v;
        }
        return printable;
    }
    static std::string tell(const Options& o) { return o.version; }
};

bool takeRange(Range& range, std::string_view text, double low, double high) {
    const auto mark = text.find("..");
    Range read{};
    if (mark == std::string_view::npos || !takeDecimal(read.low, text.substr(0, mark), low, high) ||
        !takeDecimal(read.high, text.substr(mark + 2), read.low, high)) {
        return false;
    }
    range = read;
    return true;
}

struct Kvp {
    static bool take(Options& o, std::string_view v) { return takeRange(o.kvp, v, 1, 200); }
    static std::string tell(const Options& o) { return decimal(o.kvp.low) + ".." + decimal(o.kvp.high); }
};

/// "10..160,24": from, to, and the power in kW.
template <auto Member> struct FocalSpot {
    static bool take(Options& o, std::string_view v) {
        const auto comma = v.find(',');
        Range ma{};
        double kw = 0;
        if (comma == std::string_view::npos || !takeRange(ma, v.substr(0, comma), 10, 640) ||
            !takeDecimal(kw, v.substr(comma + 1), 1, 200)) {
            return false;
        }
        o.*Member = {ma.low, ma.high, kw};
        return true;
    }
    static std::string tell(const Options& o) {
        const Focus& focus = o.*Member;
        return decimal(focus.lowestMa) + ".." + decimal(focus.highestMa) + "," + decimal(focus.highestKw);
    }
};

struct Stops {
    static bool take(Options& o, std::string_view v) {
        const auto names = v == "none" ? std::vector<std::string_view>() : quillon::split(v, ",");
        const bool known = std::ranges::all_of(names, Faults::hasLamp);
        if (known) {
            o.stops = v;
        }
        return known;
    }
    static std::string tell(const Options& o) { return o.stops; }
};

struct Key {
    std::string_view name;
    std::string_view values;
    std::string_view meaning;
    bool (*take)(Options&, std::string_view);
    std::string (*tell)(const Options&);
};

template <class Kind>
constexpr Key key(std::string_view name, std::string_view values, std::string_view meaning) {
    return {name, values, meaning, Kind::take, Kind::tell};
}

using O = Options;
template <auto Member> using Ms = Whole<Member, 0, kLongestMs>;
template <auto Member> using Percent = Whole<Member, 0, 100>;

// clang-format off
constexpr Key kKeys[] = {
    key<Whole<&O::seed, 0, kLargestSeed>>        ("seed",          "N",                     "start of everything random (1)"),
    key<Ms<&O::powerUpMs>>                       ("powerup",       "MS",                    "time in phase 1 (3000)"),
    key<Whole<&O::startPhase, 1, quillon::kPhaseCount>>("startphase",    "1..13",                 "phase it is found in; 1 powers up (1)"),
    key<Ms<&O::answerMs>>                        ("answer",        "MS",                    "delay of answers and reports (40)"),
    key<Acknowledgement>                         ("ack",           "MS|off",                "delay of acknowledgements, or none at all (20)"),
    key<Whole<&O::dropEvery, 0, 1'000'000>>      ("dropack",       "N",                     "every Nth acknowledgement is lost; 0 none (0)"),
    key<Percent<&O::noisePercent>>               ("noise",         "PERCENT",               "share of the messages with garbage beside them (0)"),
    key<Percent<&O::twicePercent>>               ("twice",         "PERCENT",               "share of the messages that come twice (0)"),
    key<Percent<&O::wrongPercent>>               ("wrong",         "PERCENT",               "share of the values told that look right and are not (0)"),
    key<Flag<&O::stuck>>                         ("stuck",         "0|1",                   "tells each value as it was when this began (0)"),
    key<Flag<&O::silent>>                        ("silent",        "0|1",                   "works but says nothing (0)"),
    key<Choice<&O::end, kEnds>>                  ("end",           "lf|etx|lfetx",          "what follows the CR of a message (lf)"),
    key<Pace>                                    ("line",          "0|300..115200",         "baud rate the bytes are paced at, in pieces; 0: no pace (0)"),
    key<Ms<&O::modeMs>>                          ("modechange",    "MS",                    "time to change into a service mode and back (300)"),
    key<Flag<&O::dipSwitch>>                     ("dipswitch",     "0|1",                   "0: service modes are acknowledged but not entered (1)"),
    key<Choice<&O::dipReadAtStart, kDipReadings>>("dipswitch.read","atonce|powerup",        "when the dip switch is looked at (atonce)"),
    key<Choice<&O::kind, kKinds>>                ("type",          "rad|rf",                "with fluoroscopy or without (rf)"),
    key<TechniqueMode>                           ("techmode",      "0..3|none",             "technique mode, or a machine without (none)"),
    key<Whole<&O::maxDensity, 0, 8>>             ("maxdensity",    "0..8",                  "largest density step (8)"),
    key<Choice<&O::thirdTube, kThirdTubes>>      ("thirdtube",     "0|1|dash",              "counter of tube 3: none, own, behind a dash (0)"),
    key<Choice<&O::positioner, kPositioners>>    ("positioner",    "none|orla|remote|both", "positioners that answer (both)"),
    key<Percent<&O::heatPercent>>                ("heat",          "0..100",                "tube heat in percent at the start (0)"),
    key<Version>                                 ("version",       "TEXT",                  "software version (SIM 1.0)"),
    key<Kvp>                                     ("kvp",           "LOW..HIGH",             "kVp that can be chosen (40..150)"),
    key<FocalSpot<&O::smallFocus>>               ("small",         "LOW..HIGH,KW",          "mA of the small focus, and its power (10..160,24)"),
    key<FocalSpot<&O::largeFocus>>               ("large",         "LOW..HIGH,KW",          "mA of the large focus, and its power (50..640,64)"),
    key<Decimal<&O::highestMas, 1000, 1000'000>> ("mas",           "1..1000",               "largest mAs (600)"),
    key<Decimal<&O::tubeKhu, 1000, 10'000'000>> ("tube",          "KHU",                   "heat that the tube holds (300)"),
    key<Decimal<&O::coolingPerSecond, 1, 100'000>>("cooling",       "PERCENT",               "what the tube cools in a second (0.1)"),
    key<Percent<&O::tooHotPercent>>              ("toohot",        "PERCENT",               "heat that makes it rest (90)"),
    key<Percent<&O::coolEnoughPercent>>          ("coolenough",    "PERCENT",               "heat that ends its rest (75)"),
    key<Ms<&O::rotorMs>>                         ("rotor",         "MS",                    "time that the rotor takes to run up (1000)"),
    key<Stops>                                   ("stops",         "LAMP,...|none",         "lamps that forbid radiation while they stand (door)"),
    key<Choice<&O::handStaysPressed, kHands>>    ("hand",          "released|held",         "what an exposure's end makes of the hand switch (released)"),
    key<Flag<&O::autoExpose>>                    ("autoexpose",    "0|1",                   "exposes by itself in autocalibration (0)"),
    key<Whole<&O::autocalExposures, 1, 10>>      ("exposures",     "1..10",                 "exposures an autocalibration takes (3)"),
    key<Choice<&O::autocalSucceeds, kResults>>   ("autocalresult", "ok|error",              "how an autocalibration ends (ok)"),
    key<Ms<&O::questionMs>>                      ("autocal.question", "MS",                 "time until an autocalibration asks (1500)"),
    key<Ms<&O::beginMs>>                         ("autocal.begin", "MS",                    "from its confirmation on (1500)"),
    key<Ms<&O::endMs>>                           ("autocal.end",   "MS",                    "behind its last exposure (500)"),
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
    const auto* const found = std::ranges::find(kKeys, name, &Key::name);
    if (found == std::end(kKeys)) {
        return "there is no option '" + name + "'";
    }
    if (!found->take(options, value)) {
        return name + " takes " + std::string(found->values) + ", not '" + std::string(value) + "'";
    }
    return {};
}

std::string optionsHelp() {
    constexpr std::size_t kColumn = 36;
    std::string help;
    for (const Key& each : kKeys) {
        std::string line("  ");
        line.append(each.name).append("=").append(each.values);
        line.resize(std::max(kColumn, line.size() + 2), ' ');
        help += line + std::string(each.meaning) + "\n";
    }
    return help;
}

std::string applyProfile(Options& options, std::string_view content) {
    int number = 0;
    for (std::string_view line : quillon::split(content, "\n")) {
        ++number;
        line = trim(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        if (std::string problem = applyOption(options, line); !problem.empty()) {
            return std::to_string(number) + ": " + problem;
        }
    }
    return {};
}

std::string applyProfileFile(Options& options, const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        return file + " cannot be read";
    }
    const std::string content(std::istreambuf_iterator<char>(in), {});
    const std::string problem = applyProfile(options, content);
    return problem.empty() ? problem : std::string(file).append(":").append(problem);
}

std::string profileOf(const Options& options) {
    std::string text;
    for (const Key& each : kKeys) {
        text += "# " + std::string(each.values) + ": " + std::string(each.meaning) + "\n" +
                std::string(each.name) + "=" + each.tell(options) + "\n";
    }
    return text;
}

} // namespace simulator
