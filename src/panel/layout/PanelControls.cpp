#include "panel/layout/PanelControls.h"

#include <array>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "panel/layout/Names.h"

namespace quillon {

namespace {

struct ListItems {
    std::string_view name;
    std::vector<std::string> items;
    int selected;
};

void fillLists(ControlHost& host) {
    // The line's lists show a setting only once somebody has written it to them.
    const std::array lists{
        ListItems{"comboReadExposureCounter", {"Tube1 RAD", "Tube2 RAD", "Fluoro"}, 0},
        ListItems{"comboResetExposureCounter", {"Tube1 RAD", "Tube2 RAD", "Fluoro"}, 0},
        ListItems{"cmbCommPort", {"1", "2", "3", "4", "5", "6"}, -1},
        ListItems{"cmbCommBaudRate", {"9600", "19200"}, -1},
        ListItems{"cmbCommParity", {"e", "n", "o"}, -1},
        ListItems{"cmbCommDataBits", {"7", "8"}, -1},
        ListItems{"cmbCommStopBits", {"1", "2"}, -1},
    };
    for (const ListItems& list : lists) {
        Control& control = host.at(list.name);
        control.setItems(list.items);
        control.setListIndex(list.selected);
    }
}

/// From the top of the panel to its foot, so that the Tab key walks the same way; the surface comes last, as
/// the icon has to lie in front of everything.
template <const auto&... kTables>
void addTables(ControlHost& host, std::type_identity<CheckedName<kTables...>> /*names*/) {
    (addControls(host, kTables), ...);
}

} // namespace

void addPanelControls(ControlHost& host) {
    addTables(host, std::type_identity<PanelControl>());
    fillLists(host);
    // The widest range of the generator, until a narrower one is set.
    host["sldCalValue"].setMaximum(4095);
    host.at("txtDebugComm").setMultiLine(true);
    host.at("txtDebugComm").setReadOnly(true);
    host.at("txtDebugComm").setNote(host.at("cmbToggleDebug").caption());
    for (const std::string_view key : {"cmbFlPPSNext", "cmbFlContinuous"}) {
        host.at(key).setNote(host.at("lblPPS").caption());
    }
    for (Control* key : host.all("cmbTM")) {
        key->setNote("Technique");
    }
    for (const TimerRow& timer : kPanelTimers) {
        host.addTimer(timer.name, timer.interval);
    }
}

} // namespace quillon
