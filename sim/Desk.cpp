#include "sim/Desk.h"

#include "base/Phase.h"
#include "base/Text.h"
#include "sim/Formats.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

namespace simulator {

namespace {

using quillon::numberOf;
using quillon::trim;

std::string refusal(const std::string& why) {
    return why.empty() ? why : std::string("?").append(why);
}

std::optional<int> wholeNumber(std::string_view text, int low, int high) {
    const auto value = numberIn(text);
    if (!value || *value != std::floor(*value) || *value < low || *value > high) {
        return std::nullopt;
    }
    return static_cast<int>(*value);
}

std::optional<bool> onOff(std::string_view text) {
    if (text == "1" || text == "on") {
        return true;
    }
    if (text == "0" || text == "off") {
        return false;
    }
    return std::nullopt;
}

struct Words {
    std::string_view first;
    std::string_view rest;
};

Words splitFirst(std::string_view text) {
    text = trim(text);
    const std::size_t end = std::min(text.find(' '), text.size());
    return {text.substr(0, end), trim(text.substr(end))};
}

std::string forcePhase(Assembly& g, std::string_view text) {
    const auto phase = wholeNumber(text, 1, quillon::kPhaseCount);
    if (!phase) {
        return "?phase takes 1 to " + std::to_string(quillon::kPhaseCount);
    }
    if (g.machine.phase() == Phase::Initialization && *phase != numberOf(Phase::Initialization)) {
        g.power.skip();
    }
    g.halt();
    g.machine.enter(static_cast<Phase>(*phase));
    return {};
}

std::string raiseError(Assembly& g, std::string_view text) {
    if (text.starts_with('L') || text.starts_with('l')) {
        if (const auto number = wholeNumber(text.substr(1), 0, 99)) {
            g.faults.raiseInterlock(*number);
            return {};
        }
    } else if (const auto code = wholeNumber(text, 0, INT16_MAX)) {
        g.faults.raise(*code);
        return {};
    }
    return "?error takes a code, or L and the number of an interlock";
}

std::string raiseWarning(Assembly& g, std::string_view text) {
    const auto code = wholeNumber(text, 0, 99);
    if (!code) {
        return "?warning takes a code";
    }
    g.faults.warn(*code);
    return {};
}

std::string raiseExposureControl(Assembly& g, std::string_view text) {
    const auto code = wholeNumber(text, 1, 99);
    if (!code) {
        return "?aec takes a code";
    }
    g.faults.raiseExposureControl(*code);
    return {};
}

std::string prepare(Assembly& g, std::string_view) {
    return refusal(g.exposure.prepare());
}

std::string expose(Assembly& g, std::string_view) {
    return refusal(g.exposure.expose());
}

std::string release(Assembly& g, std::string_view) {
    return refusal(g.exposure.release());
}

std::string fluoro(Assembly& g, std::string_view text) {
    const auto on = onOff(text);
    if (!on) {
        return "?fluoro takes on or off";
    }
    if (!*on) {
        return refusal(g.fluoroscopy.stop());
    }
    const std::string hindrance = g.hindrance();
    return refusal(hindrance.empty() ? g.fluoroscopy.start() : hindrance);
}

std::string silence(Assembly& g, std::string_view text) {
    const auto on = onOff(text);
    if (!on) {
        return "?silence takes on or off";
    }
    g.machine.options.silent = *on;
    return {};
}

std::string noise(Assembly& g, std::string_view text) {
    return refusal(applyOption(g.machine.options, "noise=" + std::string(text)));
}

std::string drop(Assembly& g, std::string_view text) {
    const Words words = splitFirst(text);
    if (words.first == "every") {
        return refusal(applyOption(g.machine.options, "dropack=" + std::string(words.rest)));
    }
    const auto count = wholeNumber(text, 0, 1'000'000);
    if (!count) {
        return "?drop takes a number, or every and a number";
    }
    g.machine.outbox.dropNext(*count);
    return {};
}

std::string hand(Assembly& g, std::string_view text) {
    const auto stage = wholeNumber(text, 0, 2);
    if (!stage) {
        return "?hand takes 0, 1 or 2";
    }
    const std::string refused = g.exposure.hand(*stage);
    return refusal(!refused.empty() && g.machine.phase() == kOff ? "it is off" : refused);
}

std::string plug(Assembly& g, std::string_view text) {
    using State = Plug::State;
    static constexpr std::pair<std::string_view, State> kStates[] = {
        {"in", State::In}, {"out", State::Out}, {"loose", State::Loose}};
    const auto* const state = std::ranges::find(kStates, text, &std::pair<std::string_view, State>::first);
    if (state == std::end(kStates)) {
        return "?plug takes in, out or loose";
    }
    g.plug.put(state->second, g.machine.now());
    return {};
}

std::string stick(Assembly& g, std::string_view text) {
    const auto [mnemonic, value] = splitFirst(text);
    if (mnemonic.empty()) {
        return "?stick takes a mnemonic, and a value or nothing; or off";
    }
    if (mnemonic == "off") {
        g.machine.outbox.unstick();
    } else {
        g.machine.outbox.stick(mnemonic, value);
    }
    return {};
}

std::string heat(Assembly& g, std::string_view text) {
    const auto percent = wholeNumber(text, 0, 100);
    if (!percent) {
        return "?heat takes 0 to 100";
    }
    g.tube.setPercent(*percent);
    g.tube.check();
    return {};
}

std::string power(Assembly& g, std::string_view text) {
    const auto on = onOff(text);
    if (!on) {
        return "?power takes on or off";
    }
    if (*on == (g.machine.phase() != kOff)) {
        return *on ? "?it is on" : "?it is off";
    }
    if (*on) {
        g.powerOn();
    } else {
        g.powerOff();
    }
    return {};
}

std::string send(Assembly& g, std::string_view text) {
    if (text.empty()) {
        return "?send takes the text of a message";
    }
    g.machine.say(text);
    return {};
}

std::string setTechnique(Assembly& g, std::string_view key, std::string_view value) {
    const auto number = numberIn(value);
    if (!number) {
        return refusal(std::string(key) + " takes a number");
    }
    bool asAsked = true;
    if (key == "kv") {
        asAsked = g.technique.chooseKvp(*number);
    } else if (key == "ma") {
        asAsked = g.technique.chooseMa(*number);
    } else if (key == "ms") {
        asAsked = g.technique.chooseMs(*number);
    } else {
        asAsked = g.technique.chooseMas(*number);
    }
    return asAsked ? "" : "limited";
}

std::string set(Assembly& g, std::string_view text) {
    const auto [key, value] = splitFirst(text);
    if (key.empty() || value.empty()) {
        return "?set takes a key and a value";
    }
    // The values of an exposure are the machine's; its switches can be set while it is off.
    const bool chosen = key == "kv" || key == "ma" || key == "ms" || key == "mas" || key == "focus";
    if (chosen && g.machine.phase() == kOff) {
        return "?it is off";
    }
    if (chosen && key != "focus") {
        return setTechnique(g, key, value);
    }
    if (key == "focus") {
        if (value != "small" && value != "large") {
            return "?focus takes small or large";
        }
        g.technique.chooseFocus(value == "large");
        return {};
    }
    if (key == "heat") {
        return heat(g, value);
    }
    if (key == "reading") {
        const auto reading = wholeNumber(value, 0, 4095);
        g.positioner.setReading(reading.value_or(g.positioner.reading()));
        return reading ? "" : "?reading takes 0 to 4095";
    }
    if (key.starts_with("counter")) {
        const auto counter = wholeNumber(key.substr(7), 0, 3);
        const auto count = wholeNumber(value, 0, 999'999);
        if (!counter || !count) {
            return "?counter0 to counter3 take a whole number";
        }
        g.records.setCounter(*counter, *count);
        return {};
    }
    if (key == "type" || key == "startphase") {
        return refusal(std::string(key) + " is fixed at the start");
    }
    const std::string problem = applyOption(g.machine.options, std::string(key) + "=" + std::string(value));
    if (problem.empty() && key == "seed") {
        g.reseed();
    }
    return refusal(problem);
}

std::string status(Assembly& g, std::string_view) {
    const auto line = [](std::string_view name, const std::string& value) {
        return std::string(name) + " " + value + "\n";
    };
    const Machine& m = g.machine;
    const auto& tally = g.tally();
    std::string text = line("phase", m.phase() == kOff ? "off" : std::to_string(numberOf(m.phase())));
    text += line("error", std::to_string(g.faults.code()));
    text += line("heat", shortNumber(g.tube.percent(), 1));
    text += line("x-rays", g.power.raysAllowed() ? "enabled" : "disabled");
    text += line("technique", shortNumber(g.technique.kvp(), 0) + " kVp " + shortNumber(g.technique.ma(), 1) +
                                  " mA " + shortNumber(g.technique.ms(), 1) + " ms " +
                                  (g.technique.largeFocus() ? "large" : "small"));
    text += line("workstation", std::to_string(g.configuration.workstation()));
    text += line("positioner", g.positioner.inServiceMode() ? "service" : "normal");
    text += "counters";
    for (int number = 0; number < 4; ++number) {
        text.append(" ").append(std::to_string(g.records.counter(number)));
    }
    text += "\n";
    text += line("frames", std::to_string(g.parser.frames()));
    text += line("flushes", std::to_string(g.parser.flushes()));
    text += line("malformed", std::to_string(g.parser.malformed()));
    text += line("taken", std::to_string(tally.taken));
    text += line("wrong-phase", std::to_string(tally.wrongPhase));
    text += line("bad-argument", std::to_string(tally.badArgument));
    text += line("unknown", std::to_string(tally.unknown));
    if (!tally.lastRefused.empty()) {
        text += line("last-refused", tally.lastRefused);
    }
    text += line("messages", std::to_string(m.outbox.messagesSent()));
    text += line("acknowledged", std::to_string(m.outbox.acknowledgementsSent()));
    text += "ack-dropped " + std::to_string(m.outbox.acknowledgementsDropped());
    return text;
}

std::string books(Assembly& g, std::string_view) {
    std::string text;
    const auto add = [&text](const std::string& name, int value) {
        text.append(text.empty() ? "" : "\n").append(name).append(" ").append(std::to_string(value));
    };
    for (const auto& [name, value] : g.configuration.allValues()) {
        add(name, value);
    }
    for (const auto& [name, value] : g.calibration.storedValues()) {
        add(name, value);
    }
    for (int number = 0; number < 4; ++number) {
        add("counter" + std::to_string(number), g.records.counter(number));
    }
    return text;
}

std::string help(Assembly&, std::string_view) {
    return deskHelp();
}

struct Command {
    std::string_view name;
    std::string_view takes;
    std::string_view meaning;
    bool needsPower;
    std::string (*run)(Assembly&, std::string_view);
};

// clang-format off
constexpr Command kCommands[] = {
    {"help",    "",             "these lines",                                             false, help},
    {"status",  "",             "what it does and what it has received",                   false, status},
    {"books",   "",             "what it has stored: configuration, calibration, counters", false, books},
    {"power",   "on|off",       "mains",                                                   false, power},
    {"phase",   "1..13",        "forces a phase",                                          true,  forcePhase},
    {"prepare", "",             "hand switch, first stage",                                true,  prepare},
    {"expose",  "",             "hand switch through: prepares if need be, then exposes",  true,  expose},
    {"release", "",             "hand switch let go; cuts a running exposure short",       true,  release},
    {"hand",    "0|1|2",        "hand switch let go, half pressed, pressed through",       false, hand},
    {"fluoro",  "on|off",       "foot switch",                                             true,  fluoro},
    {"error",   "N|LN",         "error N with phase 7, or interlock N",                    true,  raiseError},
    {"warning", "N",            "technique warning",                                       true,  raiseWarning},
    {"aec",     "N",            "fault of the exposure control",                           true,  raiseExposureControl},
    {"heat",    "0..100",       "tube heat in percent",                                    false, heat},
    {"silence", "on|off",       "works on, but answers nothing",                           false, silence},
    {"noise",   "0..100",       "percent of the messages with garbage beside them",        false, noise},
    {"drop",    "N|every N",    "loses the next N acknowledgements, or every Nth",         false, drop},
    {"plug",    "in|out|loose", "the plug at the machine; what passes without contact is lost", false, plug},
    {"stick",   "MNEMONIC [VALUE]", "its messages tell this value, or its own; stick off: all", false, stick},
    {"send",    "TEXT",         "sends a message",                                         true,  send},
    {"set",     "KEY VALUE",    "kv ma ms mas focus counter0..3 heat reading, or any option",      false, set},
};
// clang-format on

} // namespace

std::string carryOut(Assembly& generator, std::string_view line) {
    const Words words = splitFirst(line);
    if (words.first.empty()) {
        return {};
    }
    const std::string name = quillon::lowerCase(words.first);
    const auto command = std::ranges::find(kCommands, name, &Command::name);
    const bool off = generator.machine.phase() == kOff;
    if (command != std::end(kCommands)) {
        if (command->takes.empty() && !words.rest.empty()) {
            return refusal(name + " takes nothing");
        }
        return command->needsPower && off ? "?it is off" : command->run(generator, words.rest);
    }
    if (!Faults::hasLamp(name)) {
        return refusal("there is no command '" + name + "'; try help");
    }
    const auto on = onOff(words.rest);
    if (!on) {
        return refusal(name + " takes 0 or 1");
    }
    generator.faults.setLamp(name, *on);
    return {};
}

bool isCommand(std::string_view line) {
    const std::string name = quillon::lowerCase(splitFirst(line).first);
    return std::ranges::find(kCommands, name, &Command::name) != std::end(kCommands) || Faults::hasLamp(name);
}

std::string deskHelp() {
    static constexpr std::size_t kColumn = 22;
    const auto line = [](std::string text, std::string_view meaning) {
        text.resize(std::max(kColumn, text.size() + 2), ' ');
        return text + std::string(meaning);
    };
    std::string text;
    for (const Command& command : kCommands) {
        std::string usage("  ");
        usage.append(command.name).append(" ").append(command.takes);
        text += line(std::move(usage), command.meaning) + "\n";
    }
    return text + line("  LAMP 0|1", "a standing condition: " + Faults::lampNames());
}

} // namespace simulator
