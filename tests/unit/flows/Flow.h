#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "base/Numbers.h"
#include "console/ctrQuillonConsole.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"

namespace quillon {

/// The whole application in virtual time with a generator that acknowledges everything, in Ready.
class FlowTest : public testing::Test {
protected:
    void start(std::string_view commandLine = {}, std::string_view configuration = {}) {
        application.reset();
        machine.folder.put("Quillon.ini", "[CONFIG]\r\n" + std::string(configuration));
        application = std::make_unique<Application>(Platform{machine.time.schedule(), machine.time,
                                                             machine.port, machine.store, machine.folder,
                                                             machine.desktop, machine.power},
                                                    commandLine);
        application->console().events.Busy.connect(
            [this](std::int16_t busy) { busyReports.push_back(busy); });
        application->console().events.Goodbye.connect([this] { ++goodbyes; });
        machine.port.onWritten = [this](std::string_view bytes) {
            sent.emplace_back(bytes.substr(0, bytes.find('\r')));
            machine.time.schedule().post(20, [this] { report("AK"); });
        };
        application->start();
        report("ST2");
        wait(12000);
        forget();
    }

    void report(std::string_view message) { machine.port.receive(std::string(message) + "\r\n"); }
    void wait(Milliseconds ms) { machine.time.advance(ms); }
    void forget() {
        sent.clear();
        busyReports.clear();
    }

    [[nodiscard]] Control& control(std::string_view name) {
        return application->console().ControlHost::at(name);
    }
    [[nodiscard]] Timer& timer(std::string_view name) {
        return application->console().ControlHost::timer(name);
    }
    [[nodiscard]] bool running(std::string_view name) { return timer(name).running(); }
    [[nodiscard]] ControlHost* panel(std::string_view key) { return application->console().keyed(key); }
    /// The title of the message on show; empty when there is none.
    [[nodiscard]] std::string message() {
        ControlHost* error = panel("Error");
        return error == nullptr ? std::string() : (*error)["myCaption"].caption();
    }
    [[nodiscard]] const std::string& prompt() { return control("lblHelp").caption(); }
    [[nodiscard]] Indicators indicators() { return application->indicators(); }
    [[nodiscard]] LinkEvents& events() { return application->link().events(); }

    void press(std::string_view name) {
        ASSERT_TRUE(application->input().press(control(name))) << name << " cannot be reached";
    }
    void release(std::string_view name) { application->input().release(control(name)); }
    void click(std::string_view name) {
        press(name);
        release(name);
    }
    void click(std::string_view key, std::string_view name) {
        ASSERT_NE(panel(key), nullptr) << key;
        ASSERT_TRUE(application->input().click((*panel(key))[name])) << name << " cannot be reached";
    }
    void type(std::string_view name, std::string_view text) {
        ASSERT_TRUE(application->input().type(control(name), text)) << name;
    }

    /// Everything up to the "OK" of the warning.
    void beginAutocalibration() {
        click("cmbAutocalibration");
        click("SelWSAutocal", "cmdOK");
        click("AutocalSelFocusOrParameter", "cmbAutocalSmallFocus");
        click("AutocalSelFocusOrParameter", "cmbOKFocus");
        click("AutocalWarning", "cmbAutocalYes");
    }
    /// The generator is in calibration on the chosen focus, and was asked for the autocalibration.
    void reachWait() {
        beginAutocalibration();
        wait(4000);
        report("ST6\rMA050\rFO11\rFO20");
        wait(5000);
        forget();
    }
    /// The generator asks, and the operator's yes blinks.
    void confirm() {
        reachWait();
        report("ST11");
        application->input().click(application->link()["cmbAutocalConfirm"]);
        ASSERT_TRUE(running("tmrIniAutocal"));
    }

    MemoryPlatform machine;
    std::unique_ptr<Application> application;
    std::vector<std::string> sent; ///< frames without their end bytes
    std::vector<int> busyReports;
    int goodbyes = 0;
    /// Outlives the test: the end of the application tells of changes, too.
    const std::shared_ptr<int> changes = std::make_shared<int>(0);
};

} // namespace quillon
