#include "Session.h"

#include <algorithm>

#include "base/Numbers.h"
#include "base/Text.h"
#include "sim/Options.h"
#include "tools/scenario/Reader.h"

namespace quillon {

namespace {

constexpr Milliseconds kPollPace = 1350;
constexpr std::size_t kMostViolations = 20;

/// The first word, and what stands behind it.
std::pair<std::string_view, std::string_view> firstWord(std::string_view text) {
    const auto blank = std::min(text.find(' '), text.size());
    return {text.substr(0, blank), trim(text.substr(blank))};
}

simulator::Options optionsOf(std::string_view text) {
    simulator::Options options;
    for (const std::string_view word : split(text, " ")) {
        if (const std::string problem = word.empty() ? "" : simulator::applyOption(options, word);
            !problem.empty()) {
            throw BadScript(problem);
        }
    }
    return options;
}

} // namespace

std::string scenarioOf(const Plan& plan) {
    std::string text;
    if (!plan.commandLine.empty()) {
        text += "args " + plan.commandLine + "\n";
    }
    text += "file Quillon.ini\n[CONFIG]\n";
    for (const std::string& line : plan.configuration) {
        text += line + "\n";
    }
    text += "end\nstart\n";
    if (plan.generator) {
        text += "simulate " + *plan.generator + "\n";
    }
    for (const std::string& line : plan.lines) {
        text += line + "\n";
    }
    return text;
}

Session::Session(const Plan& plan) {
    rig_.report.close();
    std::string configuration = "[CONFIG]\r\n";
    for (const std::string& line : plan.configuration) {
        configuration += line + "\r\n";
    }
    rig_.machine.folder.put("Quillon.ini", configuration);
    rig_.commandLine = plan.commandLine;
    rig_.machine.port.onWritten = [this](std::string_view bytes) {
        rig_.machine.port.takeWritten(); // what a session has no use for must not pile up over its days
        rig_.farEnd.written(bytes);
    };
    rig_.farEnd.onFrame = [this](std::string_view text) { frameWritten(text); };
    rig_.farEnd.toConsole = [this](std::string_view bytes) { return arriving(bytes); };
    rig_.start();
    facts_.begin();
    if (plan.generator) {
        honest_ = true;
        rig_.farEnd.simulate(optionsOf(*plan.generator));
    }
}

Session::~Session() {
    rig_.machine.port.onWritten = {};
}

// The line -----------------------------------------------------------------------------------------------

void Session::frameWritten(std::string_view text) {
    ++frameCount_;
    if (rig_.started()) {
        facts_.frameWritten(text);
        check(When::Frame);
    }
    if (onFrame) {
        onFrame(text);
    }
}

std::string Session::arriving(std::string_view bytes) {
    std::string text = toConsole ? toConsole(bytes) : std::string(bytes);
    if (rig_.machine.port.isOpen()) {
        heard(text);
    }
    return text;
}

void Session::heard(std::string_view bytes) {
    for (const char c : bytes) {
        if (c != '\r' && c != '\n' && c != '\x03') {
            partialText_ += c;
            continue;
        }
        ++reportCount_;
        facts_.reportHeard(partialText_);
        partialText_.clear();
    }
}

// What must hold -----------------------------------------------------------------------------------------

void Session::check(When when) {
    for (const Invariant& invariant : invariants()) {
        if (invariant.when != when || violations_.size() >= kMostViolations) {
            continue;
        }
        const Violation found{std::string(invariant.name), invariant.broken(facts_), facts_.now()};
        if (!found.what.empty() &&
            std::find(violations_.begin(), violations_.end(), found) == violations_.end()) {
            violations_.push_back(found);
        }
    }
}

void Session::look() {
    facts_.look();
    check(When::Always);
}

std::string Session::complaints() const {
    std::string text;
    for (const Violation& violation : violations_) {
        text += violation.text() + "\n";
    }
    return text;
}

Milliseconds Session::nextWait() {
    Milliseconds shortest = kPollPace;
    for (const auto& control : application().console().controls()) {
        const auto* named = dynamic_cast<const TimerControl*>(control.get());
        if (named != nullptr && named->timer().running() && named->timer().interval() > 0) {
            shortest = std::min<Milliseconds>(shortest, named->timer().interval());
        }
    }
    return shortest;
}

std::uint64_t Session::state() {
    std::uint64_t sum = 1469598103934665603U;
    const auto add = [&sum](const auto&... values) {
        const auto addText = [&sum](std::string_view text) {
            for (const char c : text) {
                sum = (sum ^ static_cast<unsigned char>(c)) * 1099511628211U;
            }
            sum = (sum ^ 0xFFU) * 1099511628211U;
        };
        const auto addOne = [&](const auto& value) {
            if constexpr (std::is_convertible_v<decltype(value), std::string_view>) {
                addText(value);
            } else {
                sum = (sum ^ static_cast<std::uint64_t>(value)) * 1099511628211U;
            }
        };
        (addOne(values), ...);
    };
    const ServiceSession& session = doing();
    add(session.run(), session.mode(), session.lastPhase(), session.poweringUp(), session.isLost(),
        session.lent());
    const TorvaneSerialV3_07_QLC1& link = application().link();
    const GeneratorState& mirror = link.mirror();
    add(link.PortOpen(), link.StatusUpdateEnable(), link.answering(), link.allows("RX"), mirror.RXEnable,
        mirror.m_AutocalState, mirror.m_CalibrationType, mirror.m_LargeFocus, mirror.m_SmallFocus);
    add(facts_.phase, facts_.rays, acknowledges_, rig_.farEnd.simulated() ? ask("status").substr(0, 8) : "");
    for (const std::string& key : facts_.held) {
        add(key);
    }
    for (const ControlHost* host : facts_.hosts()) {
        for (const auto& control : host->controls()) {
            if (const auto* timer = dynamic_cast<const TimerControl*>(control.get())) {
                add(timer->timer().running() ? timer->timer().interval() : -1);
            } else if (control->has(Property::Visible)) {
                add(control->visible(), control->has(Property::Enabled) && control->offered(),
                    control->locked(), control->has(Property::Caption) ? control->caption() : "",
                    control->has(Property::Text) ? control->text() : "");
            }
        }
    }
    return sum;
}

// The operator -------------------------------------------------------------------------------------------

std::vector<std::string> Session::reachable() {
    std::vector<std::string> names;
    for (const Control* control : facts_.inReach()) {
        names.push_back(nameOf(*control));
    }
    return names;
}

bool Session::reaches(std::string_view name) {
    const Control* control = find(name);
    return control != nullptr && application().input().reachable(*control);
}

bool Session::perform(std::string_view line) {
    const auto [word, rest] = firstWord(line);
    if (ended() || !perform(word, rest)) {
        return false;
    }
    if (keepDone_) {
        done_.emplace_back(line);
    }
    if (!ended()) {
        look();
        check(When::Moved);
    }
    return true;
}

bool Session::perform(std::string_view word, std::string_view rest) {
    FarEnd& far = rig_.farEnd;
    if (word == "wait") {
        machine().time.advance(toInt32(rest), [this] {
            look();
            return ended();
        });
    } else if (word == "sim") {
        forced_ = forced_ || rest.starts_with("phase");
        return far.simulated() && !ask(rest).starts_with('?');
    } else if (word == "simulate") {
        far.simulate(optionsOf(rest));
    } else if (word == "msg") {
        far.deliver(std::string(rest) + "\r\n");
    } else if (word == "ack") {
        acknowledges_ = rest != "off";
        far.setAcknowledgement(acknowledges_ ? std::optional<Milliseconds>(toInt32(rest)) : std::nullopt);
    } else if (word == "answer") {
        machine().desktop.answer(rest == "yes" ? MemoryDesktop::Answer::Yes : MemoryDesktop::Answer::No);
    } else {
        const auto [name, value] = firstWord(rest);
        return act(word, std::string(name), value);
    }
    return true;
}

bool Session::act(std::string_view word, const std::string& name, std::string_view value) {
    Input& input = application().input();
    std::set<std::string>& held = facts_.held;
    Control* control = find(name);
    if (control == nullptr || (word == "release" && !held.contains(name))) {
        held.erase(name); // what was taken off the screen is held no more
        return false;
    }
    if (word != "release" && input.reachable(*control)) {
        facts_.handAt(name);
    }
    const Run before = doing().run();
    const bool closes = name == "Quillon.cmbClose";
    const bool wasHeld = held.contains(name);
    if (closes && (word == "press" || word == "click") && input.reachable(*control)) {
        facts_.closeDown();
    } else {
        facts_.raysBefore.reset();
    }
    const bool comesUp = word == "click" ? input.reachable(*control) : word == "release" && wasHeld;
    if (name == "Quillon.cmbConfiguration" && comesUp) {
        facts_.frameTaken = doing().mode() != Phase::NormalOperation && doing().mode() != Phase::Configuration;
    }
    const bool closeUp = closes && comesUp;
    if (word == "press") {
        held.insert(name);
        if (!input.press(*control)) {
            held.erase(name);
        }
    } else if (word == "release") {
        input.release(*control, value != "outside");
        held.erase(name);
    } else if (word == "click") {
        input.click(*control);
        held.erase(name);
    } else if (word == "type") {
        input.type(*control, value);
    } else if (word == "select") {
        input.select(*control, value);
    } else {
        input.slide(*control, toInt32(value));
    }
    if (closeUp && !ended()) {
        facts_.closeUp(before);
    }
    return true;
}

bool Session::clickIfReachable(std::string_view name) {
    return reaches(name) && perform("click " + std::string(name));
}

} // namespace quillon
