#include "Session.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "base/Numbers.h"
#include "base/Text.h"
#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "sim/Options.h"
#include "ui/ControlTable.h"

namespace quillon {

namespace {

constexpr std::string_view kFrameEnd = "\r\n\x03";
constexpr std::array<std::string_view, 5> kPanels{"SelWSCal", "SelWSAutocal", "AutocalSelFocusOrParameter",
                                                  "AutocalWarning", "Error"};

/// The first word, and what stands behind it.
std::pair<std::string_view, std::string_view> firstWord(std::string_view text) {
    const auto blank = std::min(text.find(' '), text.size());
    return {text.substr(0, blank), trim(text.substr(blank))};
}

simulator::Options optionsOf(const std::string& text) {
    simulator::Options options;
    for (const std::string_view word : split(text, " ")) {
        if (!word.empty()) {
            if (const std::string problem = simulator::applyOption(options, word); !problem.empty()) {
                throw std::invalid_argument(problem);
            }
        }
    }
    return options;
}

std::string nameOf(const ControlHost& host, const Control& control) {
    std::string name = host.name() + "." + control.name();
    return control.index() ? name + "(" + std::to_string(*control.index()) + ")" : name;
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
    text += "end\nstart\nsimulate " + plan.generator + "\n";
    for (const std::string& line : plan.lines) {
        text += line + "\n";
    }
    return text;
}

Session::Session(const Plan& plan) {
    std::string configuration = "[CONFIG]\r\n";
    for (const std::string& line : plan.configuration) {
        configuration += line + "\r\n";
    }
    machine.folder.put("Quillon.ini", configuration);
    machine.port.onWritten = [this](std::string_view bytes) { written(bytes); };
    application_ =
        std::make_unique<Application>(Platform{machine.time.schedule(), machine.time, machine.port,
                                               machine.store, machine.folder, machine.desktop, machine.power},
                                      plan.commandLine);
    watch_ = std::make_unique<Watch>(*application_, machine);
    application_->start();
    generator_ = std::make_unique<simulator::Generator>(
        optionsOf(plan.generator), [this](std::string_view bytes) { deliver(bytes); }, machine.time.now());
    wakeGenerator();
}

Session::~Session() {
    machine.port.onWritten = {};
}

// The line -----------------------------------------------------------------------------------------------

void Session::written(std::string_view bytes) {
    writing_ = true;
    machine.port.takeWritten(); // what a session has no use for must not pile up over its days
    partialFrame_ += bytes;
    for (auto end = partialFrame_.find(kFrameEnd); end != std::string::npos;
         end = partialFrame_.find(kFrameEnd)) {
        const std::string text = partialFrame_.substr(0, end);
        partialFrame_.erase(0, end + kFrameEnd.size());
        frameWritten(text);
    }
    if (generator_) {
        generator_->receive(toGenerator ? toGenerator(bytes) : std::string(bytes), machine.time.now());
        wakeGenerator();
    }
    writing_ = false;
}

void Session::frameWritten(const std::string& text) {
    ++frameCount_;
    watch_->frameWritten(text);
    if (onFrame) {
        onFrame(text);
    }
}

void Session::deliver(std::string_view bytes) {
    if (writing_) {
        machine.time.schedule().post(0, [this, later = std::string(bytes)] { deliver(later); });
        return;
    }
    const std::string arriving = toConsole ? toConsole(bytes) : std::string(bytes);
    if (machine.port.isOpen()) {
        heard(arriving);
    }
    machine.port.receive(arriving);
}

void Session::heard(std::string_view bytes) {
    for (const char c : bytes) {
        if (c != '\r' && c != '\n' && c != '\x03') {
            partialText_ += c;
            continue;
        }
        ++reportCount_;
        watch_->reportHeard(partialText_);
        partialText_.clear();
    }
}

void Session::wakeGenerator() {
    const auto due = generator_->nextDue();
    if (!due || (wake_ && *wake_ <= *due)) {
        return;
    }
    wake_ = due;
    machine.time.schedule().post(*due - machine.time.now(), [this, at = *due] {
        if (wake_ == at) {
            wake_.reset();
            generator_->advance(machine.time.now());
            wakeGenerator();
        }
    });
}

void Session::advance(Milliseconds ms) {
    machine.time.advance(ms, [this] {
        watch_->look(!held_.empty());
        return ended();
    });
    watch_->look(!held_.empty());
}

// The operator -------------------------------------------------------------------------------------------

Control* Session::find(std::string_view name) {
    const auto dot = name.find('.');
    if (dot == std::string_view::npos) {
        return nullptr;
    }
    const std::string_view owner = name.substr(0, dot);
    const ControlHost* host = equalsNoCase(owner, "Quillon") ? &application_->console()
                              : equalsNoCase(owner, "TorvaneSerial")
                                  ? static_cast<ControlHost*>(&application_->link())
                                  : application_->console().keyed(owner);
    if (host == nullptr) {
        return nullptr;
    }
    const auto [plain, index] = indexedName(name.substr(dot + 1));
    return host->find(plain, index < 0 ? std::nullopt : std::optional(index));
}

std::vector<std::string> Session::reachable() {
    std::vector<std::string> names;
    std::vector<ControlHost*> hosts{&application_->console(), &application_->link()};
    for (const std::string_view key : kPanels) {
        if (ControlHost* panel = application_->console().keyed(key)) {
            hosts.push_back(panel);
        }
    }
    for (const ControlHost* host : hosts) {
        for (const auto& control : host->controls()) {
            const Kind kind = control->kind();
            const bool touched = kind == Kind::Button || kind == Kind::Slider || kind == Kind::List ||
                                 (kind == Kind::TextBox && !control->readOnly());
            if (touched && application_->input().reachable(*control)) {
                names.push_back(nameOf(*host, *control));
            }
        }
    }
    return names;
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
        watch_->look(!held_.empty());
        watch_->checkScreen();
    }
    return true;
}

bool Session::perform(std::string_view word, std::string_view rest) {
    if (word == "wait") {
        advance(toInt32(rest));
    } else if (word == "sim") {
        forced_ = forced_ || rest.starts_with("phase");
        return !ask(rest).starts_with('?');
    } else if (word == "msg") {
        deliver(std::string(rest) + "\r\n");
    } else if (word == "answer") {
        machine.desktop.answer(rest == "yes" ? MemoryDesktop::Answer::Yes : MemoryDesktop::Answer::No);
    } else {
        const auto [name, value] = firstWord(rest);
        return act(word, std::string(name), value);
    }
    return true;
}

std::string Session::ask(std::string_view command) {
    std::string answer = generator_->command(command, machine.time.now());
    wakeGenerator();
    return answer;
}

bool Session::act(std::string_view word, const std::string& name, std::string_view value) {
    Input& input = application_->input();
    Control* control = find(name);
    if (control == nullptr || (word == "release" && !held_.contains(name))) {
        held_.erase(name); // what was taken off the screen is held no more
        return false;
    }
    if (word != "release" && input.reachable(*control)) {
        watch_->paidFor(name);
    }
    if (word == "press") {
        held_.insert(name);
        if (!input.press(*control)) {
            held_.erase(name);
        }
    } else if (word == "release") {
        input.release(*control, value != "outside");
        held_.erase(name);
    } else if (word == "click") {
        input.click(*control);
        held_.erase(name);
    } else if (word == "type") {
        input.type(*control, value);
    } else if (word == "select") {
        input.select(*control, value);
    } else {
        input.slide(*control, toInt32(value));
    }
    return true;
}

bool Session::clickIfReachable(std::string_view name) {
    const Control* control = find(name);
    return control != nullptr && application_->input().reachable(*control) &&
           perform("click " + std::string(name));
}

} // namespace quillon
