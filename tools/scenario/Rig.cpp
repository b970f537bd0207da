#include "Rig.h"

#include "Reader.h"
#include "base/Numbers.h"
#include "base/ScenarioText.h"
#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "shell/frmMain.h"
#include "ui/ControlTable.h"

namespace quillon {

namespace {

constexpr std::string_view kLink = "TorvaneSerial";
constexpr std::string_view kConsole = "Quillon";

std::string boxText(const MemoryDesktop::Shown& shown) {
    const std::string texts = " " + scenarioText(shown.title) + " " + scenarioText(shown.text);
    switch (shown.box) {
    case MemoryDesktop::Box::Info:
        return "box info" + texts;
    case MemoryDesktop::Box::Critical:
        return "box critical" + texts;
    case MemoryDesktop::Box::Question:
        break;
    }
    return "box question" + texts + (shown.yes ? " yes" : " no");
}

} // namespace

Rig::Rig(std::ostream& out) : report(out, machine.time), farEnd(machine.time.schedule(), machine.port) {
    reportMachine();
}

Rig::~Rig() {
    // What the application does while it is taken down is not part of the run.
    report.close();
    if (recorder_) {
        recorder_->end();
    }
}

void Rig::start() {
    const Platform platform{machine.time.schedule(), machine.time,    machine.port, machine.store,
                            machine.folder,          machine.desktop, machine.power};
    if (recordTo_) {
        recorder_ = std::make_unique<Recorder>(platform, std::move(recordTo_), commandLine);
    }
    application_ = std::make_unique<Application>(recorder_ ? recorder_->platform() : platform, commandLine);
    reportEvents();
    application_->onEnded = [this] {
        if (recorder_) {
            recorder_->end();
        }
        report.print("end");
    };
    if (onStarted) {
        onStarted();
    }
    if (recorder_) {
        recorder_->begin(*application_);
    }
    application_->start();
    if (recorder_) {
        recorder_->started();
    }
}

void Rig::resize(Twips width, Twips height) {
    if (recorder_) {
        recorder_->windowResized(width, height);
    }
    application_->resizeWindow(width, height);
}

void Rig::requestClose() {
    if (recorder_) {
        recorder_->closeRequested();
    }
    application_->requestClose();
}

void Rig::leaveRequested() {
    if (recorder_) {
        recorder_->leaveRequested();
    }
}

void Rig::catchUp() {
    if (recorder_) {
        recorder_->catchUp();
    }
}

void Rig::wait(Milliseconds ms) {
    machine.time.advance(ms, [this] { return ended(); });
}

void Rig::reportMachine() {
    machine.port.onOpened = [this](int port, std::string_view settings) {
        report.print("opened " + std::to_string(port) + " " + scenarioText(settings));
    };
    machine.port.onClosed = [this](int port) { report.print("closed " + std::to_string(port)); };
    machine.port.onWritten = [this](std::string_view bytes) { farEnd.written(bytes); };
    farEnd.onFrame = [this](std::string_view text) { report.print("tx " + scenarioText(text)); };
    machine.desktop.onBox = [this](const MemoryDesktop::Shown& shown) { report.print(boxText(shown)); };
    machine.power.onExit = [this](const MemoryPowerControl::Exit& exit) {
        report.print(std::string("power ") + (exit.restart ? "restart" : "shutdown") +
                     " force=" + std::string(flagText(exit.force)));
    };
}

void Rig::reportEvents() {
    application_->link().events().forEach([this](int, std::string_view name, std::string_view, auto& signal) {
        reportEvent(kLink, name, signal);
    });
    ConsoleEvents& console = application_->console().events;
    reportEvent(kConsole, "Goodbye", console.Goodbye);
    reportEvent(kConsole, "Busy", console.Busy);
    reportEvent(kConsole, "CannotOpenPort", console.CannotOpenPort);
}

template <typename... Arguments>
void Rig::reportEvent(std::string_view owner, std::string_view name, Signal<Arguments...>& signal) {
    // In front of all listeners, so that the line comes before what the event brings about.
    signal.observe(
        [this, start = std::string(owner) + "." + std::string(name)](const Arguments&... arguments) {
            if (report.hidesEvents()) {
                return;
            }
            std::string list;
            ((list += (list.empty() ? "" : ", ") + valueText(toValue(arguments))), ...);
            report.printEvent("event " + start + "(" + list + ")");
        });
}

ControlHost* Rig::findHost(std::string_view name) {
    for (ControlHost* host : {&application_->form(), static_cast<ControlHost*>(&application_->console()),
                              static_cast<ControlHost*>(&application_->link())}) {
        if (equalsNoCase(host->name(), name)) {
            return host;
        }
    }
    return application_->console().keyed(name);
}

Control* Rig::find(std::string_view name) {
    const auto dot = name.find('.');
    if (dot == std::string_view::npos) {
        return findHost(name);
    }
    const ControlHost* host = findHost(name.substr(0, dot));
    if (host == nullptr) {
        return nullptr;
    }
    const auto [plain, index] = indexedName(name.substr(dot + 1));
    return host->find(plain, index < 0 ? std::nullopt : std::optional(index));
}

Rig::Member Rig::member(std::string_view name) {
    const auto dot = name.find('.');
    const std::string_view owner = dot == std::string_view::npos ? kLink : name.substr(0, dot);
    const std::string_view plain = dot == std::string_view::npos ? name : name.substr(dot + 1);
    if (equalsNoCase(owner, kLink)) {
        return {application_->link().operations(), kLink, plain};
    }
    if (equalsNoCase(owner, kConsole)) {
        return {application_->console().operations(), kConsole, plain};
    }
    throw BadScript("no operations at \"" + std::string(owner) + "\"");
}

} // namespace quillon
