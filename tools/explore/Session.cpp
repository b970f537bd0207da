#include "Session.h"

#include <algorithm>
#include <cstdlib>

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

std::string lines(const std::vector<std::string>& all, std::string_view end = "\n") {
    std::string text;
    for (const std::string& line : all) {
        text.append(line).append(end);
    }
    return text;
}

} // namespace

std::string scenarioOf(const Plan& plan) {
    std::string text;
    if (!plan.commandLine.empty()) {
        text += "args " + plan.commandLine + "\n";
    }
    text += "file Quillon.ini\n" + lines({"[CONFIG]"}) + lines(plan.configuration) + "end\n";
    if (!plan.installation.empty()) {
        text += "file temp.ini\n" + lines(plan.installation) + "end\n";
    }
    text += lines(plan.before);
    text += "start\n";
    if (plan.generator) {
        text += "simulate " + *plan.generator + "\n";
    }
    return text + lines(plan.lines);
}

Session::Session(const Plan& plan, Marks marks) : marks_(marks) {
    rig_.report.close();
    rig_.machine.folder.put("Quillon.ini", "[CONFIG]\r\n" + lines(plan.configuration, kLineBreak));
    rig_.machine.folder.put("temp.ini", lines(plan.installation, kLineBreak));
    rig_.commandLine = plan.commandLine;
    rig_.machine.port.onWritten = [this](std::string_view bytes) {
        rig_.machine.port.takeWritten(); // what a session has no use for must not pile up over its days
        rig_.farEnd.written(bytes);
    };
    rig_.farEnd.onFrame = [this](std::string_view text) { frameWritten(text); };
    rig_.farEnd.toConsole = [this](std::string_view bytes) { return arriving(bytes); };
    for (const std::string& line : plan.before) {
        const auto [word, rest] = firstWord(line);
        (void)befalls(word, rest);
    }
    rig_.start();
    facts_.begin();
    if (marks.any()) {
        watch_.emplace(rig_, facts_, marks);
    }
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
        if (watch_) {
            watch_->frameWritten(text);
        }
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
        if (onReport && !partialText_.empty()) {
            onReport(partialText_);
        }
        if (watch_) {
            watch_->reportHeard(partialText_);
        }
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
    if (watch_) {
        watch_->look();
    }
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
        if (control->kind() != Kind::Timer) {
            continue;
        }
        const Timer& timer = static_cast<const TimerControl&>(*control).timer();
        if (timer.running() && timer.interval() > 0) {
            shortest = std::min<Milliseconds>(shortest, timer.interval());
        }
    }
    return shortest;
}

std::uint64_t Session::situation() {
    std::uint64_t sum = 1469598103934665603U;
    const auto add = [&sum](auto... values) {
        ((sum = (sum ^ static_cast<std::uint64_t>(values)) * 1099511628211U), ...);
    };
    const ServiceSession& session = doing();
    const TorvaneSerialV3_07_QLC1& link = application().link();
    add(session.run(), session.mode(), session.lastPhase(), session.generator().poweringUp(),
        session.generator().isLost(), session.lent());
    add(link.PortOpen(), link.StatusUpdateEnable(), link.polls(), link.answering(), link.mirror().RXEnable);
    add(facts_.phase, acknowledges_, machine().desktop.boxes().size() < answeredBoxes_,
        rig_.farEnd.simulated() ? std::atoi(ask("status").substr(6, 2).c_str()) : 0);
    for (const ControlHost* host : facts_.hosts()) {
        for (const auto& control : host->controls()) {
            if (control->kind() == Kind::Timer) {
                add(static_cast<const TimerControl&>(*control).timer().running());
            } else if (control->kind() == Kind::Frame) {
                add(control->shown());
            } else if (takesSomething(*control)) {
                add(application().input().reachable(*control));
            }
        }
    }
    for (const std::string& key : facts_.held) {
        for (const char c : key) {
            add(c);
        }
    }
    return sum;
}

bool Session::touched(std::string_view name) const {
    return marks_.reached("key " + std::string(name));
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
    if (word == "hold") {
        const auto [name, time] = firstWord(rest);
        const std::string key(name);
        return perform("press " + key) && perform("wait " + std::string(time)) && perform("release " + key);
    }
    if (ended() || !perform(word, rest)) {
        return false;
    }
    if (keepDone_) {
        done_.emplace_back(line);
    }
    if (!ended()) {
        restartIfAsked();
    }
    if (!ended()) {
        look();
        if (watch_) {
            watch_->moved();
        }
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
        led_ = led_ || forced_;
        return far.simulated() && !ask(rest).starts_with('?');
    } else if (word == "simulate") {
        far.simulate(optionsOf(rest));
    } else if (word == "msg") {
        far.deliver(std::string(rest) + "\r\n");
    } else if (word == "ack") {
        acknowledges_ = rest != "off";
        far.setAcknowledgement(acknowledges_ ? std::optional<Milliseconds>(toInt32(rest)) : std::nullopt);
    } else if (!befalls(word, rest)) {
        const auto [name, value] = firstWord(rest);
        return act(word, std::string(name), value);
    }
    return true;
}

/// What befalls the machine that the console runs on.
bool Session::befalls(std::string_view word, std::string_view rest) {
    if (word == "gap") {
        machine().time.sleep(toInt32(rest));
        facts_.slept(toInt32(rest));
    } else if (word == "port") {
        const auto [number, state] = firstWord(rest);
        machine().port.setFailing(toInt32(number), state == "fail");
    } else if (word == "close") {
        application().requestClose();
    } else if (word == "call") {
        if (rest == "Quillon.LeaveNow") {
            facts_.handAt("Quillon.cmbClose"); // it ends as that key does
        }
        (void)application().console().operations().call(rest.substr(rest.find('.') + 1), {});
    } else if (word == "answer") {
        machine().desktop.answer(rest == "yes" ? MemoryDesktop::Answer::Yes : MemoryDesktop::Answer::No);
        answeredBoxes_ = std::max(answeredBoxes_, machine().desktop.boxes().size()) + 1;
    } else {
        return false;
    }
    return true;
}

/// A PC that is restarted ends its programs.
void Session::restartIfAsked() {
    if (const std::size_t asked = machine().power.exits().size(); asked > restarts_) {
        restarts_ = asked;
        perform("call Quillon.LeaveNow");
    }
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
        if (watch_) {
            watch_->handAt(nameOf(*control));
        }
    }
    const Run before = doing().run();
    const bool closes = name == "Quillon.cmbClose";
    const bool wasHeld = held.contains(name);
    if (closes && (word == "press" || word == "click") && input.reachable(*control)) {
        if (!wasHeld) {
            facts_.closeDown();
        }
    } else {
        facts_.raysBefore.reset();
    }
    const bool comesUp = word == "click" ? input.reachable(*control) : word == "release" && wasHeld;
    if (name == "Quillon.cmbConfiguration" && comesUp) {
        facts_.frameTaken =
            doing().mode() != Phase::NormalOperation && doing().mode() != Phase::Configuration;
    }
    const bool closeUp = closes && comesUp;
    if (closeUp && watch_) {
        watch_->closes();
    }
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
