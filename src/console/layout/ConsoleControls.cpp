#include "console/layout/ConsoleControls.h"

#include <string>
#include <string_view>
#include <utility>

#include "console/layout/ConsoleTimers.h"
#include "console/layout/CounterScreen.h"
#include "console/layout/ModeColumn.h"
#include "console/layout/OrlaScreen.h"
#include "console/layout/RemoteScreen.h"
#include "console/layout/WorkingArea.h"

namespace quillon {

namespace {

// What the positioner reports can be read and not typed over, and so can a zero position's value.
void lockReadings(ControlHost& console) {
    for (const auto& control : console.controls()) {
        const std::string_view name = control->name();
        if (control->kind() == Kind::TextBox && (name.ends_with("ADC") || name.ends_with("Zero"))) {
            control->setReadOnly(true);
        }
    }
    console.at("TxtStoredSID").setReadOnly(true);
}

// The rows of the positioner's points have no labels.
void nameCalibrationPoints(ControlHost& console) {
    for (const char point : {'1', '2', '3', '4'}) {
        for (const std::string column : {"LblParam", "LblValue"}) {
            console.at(column + point).setNote(std::string("PT") + point);
        }
    }
}

void adoptLinkControl(ControlHost& console, std::unique_ptr<ControlHost> linkControl) {
    Control& frame = console.at("fraTorvaneSerial");
    ControlHost& link = console.adopt(std::move(linkControl), &frame);
    link.setPlace({0, 0, frame.width(), frame.height()});
    link.setVisible(false);
}

} // namespace

void addConsoleControls(ControlHost& console, std::unique_ptr<ControlHost> linkControl) {
    addControls(console, kModeColumnRows);
    addControls(console, kCounterScreenRows);
    addControls(console, kWorkingAreaRows);
    adoptLinkControl(console, std::move(linkControl));
    // The positioner screens hide whatever else is in the working area.
    addControls(console, kRemoteScreenRows);
    addControls(console, kOrlaScreenRows);
    addControls(console, kFootRows);
    lockReadings(console);
    nameCalibrationPoints(console);
    console.at("fraPrepExp").setEnabled(false);
    console.at("cmdSoftwareUpgrade").setEnabled(false);

    console.add(Kind::Images, "imglstPrep");
    console.add(Kind::Images, "imglstExp");
    for (const TimerRow& timer : kConsoleTimers) {
        console.addTimer(timer.name, timer.interval);
    }
}

} // namespace quillon
