// What each key of the layouts sends, pressed once where it belongs: the table is the list of all keys, and
// one that has no row is missed.

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "base/Text.h"
#include "console/ctrQuillonConsole.h"
#include "console/layout/PanelLayouts.h"
#include "explore/Copy.h"
#include "explore/Scenes.h"
#include "explore/Session.h"
#include "link/TorvaneSerial.h"

namespace quillon {
namespace {

/// Where keys are pressed.
struct Place {
    std::string_view name;
    std::string how; ///< from Ready, as in a scene
    std::string_view configuration = {};
    std::string_view commandLine = {};
};

const std::string kToCalibration = "cmbManualCalibration;SelWSCal.cmdOK;wait 8000;";
const std::string kToUsers = kToCalibration + "cmbGoToUserMode;wait 15000;";
const std::string kToPoint = "cmbAutocalibration;SelWSAutocal.cmdOK;";
const std::string kToCounters = "cmbReadExposureCounters;wait 9000;";

std::string page(const std::string& reports, int number) {
    return kToUsers + reports + "wait 100;TorvaneSerial.cmbMainMenu(" + std::to_string(number) + ");wait 100";
}

// clang-format off
const std::vector<Place> kPlaces{
    {"Ready",           "", "REMOTE=YES"},
    {"Autotracking",    "cmdOrla;wait 3000;type Quillon.txtOTCLongPlus 11;type Quillon.txtOTCLongMinus 12;cmdTrayPosition;"
                        "type Quillon.txtOTCTrayPlus 13;type Quillon.txtOTCTrayMinus 14;cmdAlfaTubeAngle;"
                        "type Quillon.txtTubeAlfaPlus 15;type Quillon.txtTubeAlfaMinus 16;cmdBetaTubeAngle;"
                        "type Quillon.txtTubeBetaPlus 17;type Quillon.txtTubeBetaMinus 18;cmdSID;"
                        "type Quillon.txtSIDPlus 19;type Quillon.txtSIDMinus 20", "ORLA=YES"},
    {"remote",          "cmdMultiRoom;wait 3000", "REMOTE=YES"},
    {"configuration",   "cmbConfiguration;wait 5000"},
    {"workstation",     "cmbManualCalibration"},
    {"calibration",     kToCalibration},
    {"RAD",             page("", 0)},
    {"AEC",             page("msg MD8;msg FI01;msg WM5;", 1)},
    {"fluoro",          page("msg WM4;msg KVT3;", 3)},
    {"ABS",             page("msg WM4;msg FLA1;", 3)},
    {"preparation",     kToUsers + "msg WM1;msg WSS1;sim prepare;wait 350", {}, "-swsync"},
    {"first panel",     "cmbAutocalibration"},
    {"point",           kToPoint},
    {"warning",         kToPoint + "AutocalSelFocusOrParameter.cmbOKFocus"},
    {"question",        kToPoint + "AutocalSelFocusOrParameter.cmbOKFocus;AutocalWarning.cmbAutocalYes;wait 12000"},
    {"autocalibration", kToPoint + "AutocalSelFocusOrParameter.cmbOKParameter;AutocalWarning.cmbAutocalYes;wait 30000;"
                        "TorvaneSerial.cmbAutocalConfirm;wait 10000"},
    {"counters",        kToCounters},
    {"reset",           kToCounters + "press Quillon.cmdResetT1;wait 10500;release Quillon.cmdResetT1"},
    {"message",         "sim set dipswitch 0;cmbManualCalibration;SelWSCal.cmdOK;wait 20000"},
};

/// `{a|b}` stands for a, then for b, in all of a row at the same time; a name without its host is the link control's.
struct Row {
    std::string_view place;
    std::string_view keys;
    std::string_view frames; ///< but for the poll's, each once, with a blank between
    bool covered = false;    ///< out of reach there, and pressed all the same
};
constexpr bool kCovered = true;
constexpr Row kRows[]{
    {"Ready",           "Quillon.cmbClose",                                       "RX0 RX1"},
    {"Ready",           "Quillon.{cmbConfiguration|cmbReadExposureCounters}",     "{CF1|TC0}"},
    {"Ready",           "Quillon.{cmbManualCalibration|cmbAutocalibration}",      ""},
    {"Ready",           "Quillon.cmbResetError",                                  "AR"},
    {"Ready",           "Quillon.cmdMultiRoom",                                   "URSSO1 URSCG URSSG URSRQ"},
    {"Ready",           "Quillon.cmdSoftwareUpgrade",                             "", kCovered},
    {"Autotracking",    "Quillon.cmdOrla",                                        ""},
    {"Autotracking",    "Quillon.{cmdLongPosition|cmdTrayPosition|cmdAlfaTubeAngle|cmdBetaTubeAngle|cmdSID}", ""},
    {"Autotracking",    "Quillon.cmdSetOTCLong{Plus|Zero|Minus}",                 "URSPS{+011|+000|-012}"},
    {"Autotracking",    "Quillon.cmdSetOTCTray{Plus|Zero|Minus}",                 "URSPB{+013|+000|-014}"},
    {"Autotracking",    "Quillon.cmdSetTubeAlfa{Plus|Zero|Minus}",                "URSAA{+015|+000|-016}"},
    {"Autotracking",    "Quillon.cmdSetTubeBeta{Plus|Zero|Minus}",                "URSAB{+017|+000|-018}"},
    {"Autotracking",    "Quillon.cmdSetSID{Plus|Minus}",                          "URSSI{+019|-020}"},
    {"remote",          "Quillon.cmd{DownSID|UPSid|DownParameter|UpParameter|NextCalibPoint}", "URSRQ"},
    {"remote",          "Quillon.cmd{SetNewSID|RequestSID|CalibrationGet}",       "URSRQ URS{CF1000|SG|CG}"},
    {"remote",          "Quillon.cmdStoreCalibPoint",                             "URSRQ URSCD004002040"},
    {"configuration",   "cmbWS({0|1|2|3|4|5|6|7})",                               "WS{1|2|3|4|5|6|7|8}"},
    {"configuration",   "cmbDfltConfig",                                          "CFD"},
    {"configuration",   "cmbConfTube{Down|Up}",                                   "TU{-|+}"},
    {"configuration",   "cmbConfWM{Down|Up}",                                     "WM{-|+}"},
    {"configuration",   "cmbConfAEC{Down|Up}",                                    "IC{-|+}"},
    {"configuration",   "cmbConfWSInterlock{Down|Up}",                            "WSI{-|+}"},
    {"configuration",   "cmbConfFailSafe{Down|Up}",                               "WSF{-|+}"},
    {"configuration",   "cmbConfSyncType{Down|Up}",                               "WSS{-|+}"},
    {"configuration",   "cmbKVTracking{Down|Up}",                                 "KVT{-|+}"},
    {"configuration",   "cmbAECField{Left|Center|Right}(1)",                      "FI{0|1|2}1"},
    {"configuration",   "cmbConfiguration",                                       "CF0", kCovered},
    {"workstation",     "SelWSCal.cmbWS{Up|Down}",                                ""},
    {"workstation",     "SelWSCal.cmdOK",                                         "WS1 CA1"},
    {"calibration",     "Quillon.cmbGoToUserMode",                                "RX1 CA0"},
    {"calibration",     "cmbMACal{Up|Down}",                                      "MA{U|D}"},
    {"calibration",     "cmbMSCal{Up|Down}",                                      ""},
    {"calibration",     "cmb{ToggleFocusCal|CalFocusSet}",                        ""},
    {"calibration",     "cmbToggleFocus{Confirm|Dismiss}",                        "{CO|}", kCovered},
    {"calibration",     "cmbCalValue{Up|Down}",                                   "C{+|-}"},
    {"calibration",     "sldCalValue",                                            "CV0100"},
    {"calibration",     "cmb{Save|Store}CalValue",                                "C{R|S}"},
    {"calibration",     "cmb{Calibration|Autocalibration}",                       "CA{0|U1}", kCovered},
    {"RAD",             "cmbMainMenu({0|1|3})",                                   ""},
    {"RAD",             "cmbMainMenu(2)",                                         "", kCovered},
    {"RAD",             "cmbKVP{Up|Down}",                                        "KV{U|D}"},
    {"RAD",             "cmbMA{Up|Down}",                                         "MA{U|D}"},
    {"RAD",             "cmbMS{Up|Down}",                                         "MS{U|D}"},
    {"RAD",             "cmbMAS{Up|Down}",                                        "MX{U|D}"},
    {"RAD",             "cmbToggleFocus",                                         "FOS2"},
    {"RAD",             "cmbTM({0|1|2|3})",                                       "TM{0|1|2|3}", kCovered},
    {"RAD",             "cmbDose{LastExposure|Accumulated|Reset}",                "DO{?|A?|R}", kCovered},
    {"RAD",             "cmb{Read|Reset}ExposureCounter",                         "{TC0|TCR0 TC0}", kCovered},
    {"RAD",             "cmbResetError",                                          "AR", kCovered},
    {"RAD",             "cmb{GotoServiceMenu|GotoMainMenu|Minimize|CommOnOff|ToggleDebug}", "", kCovered},
    {"RAD",             "cmbServiceMenu({0|1|2})",                                "", kCovered},
    {"RAD",             "Iconized",                                               "", kCovered},
    {"AEC",             "cmbAECField{Left|Center|Right}(0)",                      "FI{00|11|21}"},
    {"AEC",             "cmbAECFilmScreen({0|1|2})",                              "FS{0|1|2}"},
    {"AEC",             "cmbAECDensity({0|1|2|3|4|5|6|7|8})",                     "FN{0|1|2|3|4|5|6|7|8}"},
    {"AEC",             "cmbAECDensity{Up|Down}",                                 "FN{1|0}"},
    {"AEC",             "cmbAECBrightness{Up|Down}",                              "BR{U|D}"},
    {"AEC",             "cmbDAECDensity({0|1|2|3|4|5|6|7|8})",                    "FN{0|1|2|3|4|5|6|7|8}", kCovered},
    {"AEC",             "cmbDAECDensity{Up|Down}",                                "FN{1|0}", kCovered},
    {"AEC",             "cmbDAECBrightness{Up|Down}",                             "BR{U|D}", kCovered},
    {"AEC",             "cmb{DigitalAEC|Photomultiplier}",                        "{DA|PH}1", kCovered},
    {"fluoro",          "cmbFlPPS{Up|Down|Next}",                                 "FLP{U|D|}"},
    {"fluoro",          "cmbFlKVP{Up|Down}",                                      "FLK{U|D}"},
    {"fluoro",          "cmbFlMA{Up|Down}",                                       "FLMA{U|D}"},
    {"fluoro",          "cmbContrast{Up|Down}",                                   "FLC{+|-}"},
    {"fluoro",          "cmbKVPTracking{Up|Down}",                                "KVT{+|-}"},
    {"fluoro",          "cmbFlKVPTracking",                                       "KVT0"},
    {"fluoro",          "cmbFlContinuous",                                        "FLP00"},
    {"fluoro",          "cmbFlMag({0|1|2|3})",                                    "FLM{0|1|2|3}"},
    {"fluoro",          "{cmdFlResetTime|cmbFluoroAlarmReset}",                   "FL{R|AR}"},
    {"ABS",             "cmb{ToggleABS|FlHighDose}",                              "FL{A0|HD}"},
    {"preparation",     "cmdSWExposure",                                          "XR1"},
    {"first panel",     "SelWSAutocal.{cmbWSUp|cmbWSDown|cmdOK}",                 ""},
    {"point",           "AutocalSelFocusOrParameter.cmb{AutocalSmallFocus|AutocalLargeFocus|OKFocus|Cancel}", ""},
    {"point",           "AutocalSelFocusOrParameter.cmb{ParameterUp|ParameterDown|OKParameter}", ""},
    {"warning",         "AutocalWarning.cmbAutocal{Yes|No}",                      "{WS1|}"},
    {"question",        "cmbAutocal{Confirm|Dismiss}",                            "{CAU1|CAU0 RX1 CA0}"},
    {"autocalibration", "cmbKVPCal{Up|Down}",                                     "KV{U|D}"},
    {"autocalibration", "cmbMASCal{Up|Down}",                                     "MX{U|D}"},
    {"counters",        "Quillon.cmdReset{T1|T2|Fluoro}",                         ""},
    {"counters",        "Quillon.cmdResetT3",                                     "", kCovered},
    {"reset",           "Quillon.cmdResetCounter{Yes|No}",                        "{TCR0 TC0|}"},
    {"message",         "Error.cmbOK",                                            ""},
};
// clang-format on

/// The nth of each choice; empty for one that has no such.
std::string chosen(std::string_view text, std::size_t nth) {
    std::string all;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t open = text.find('{', at);
        all += text.substr(at, open - at);
        if (open == std::string_view::npos) {
            break;
        }
        const std::size_t close = text.find('}', open);
        all += split(text.substr(open + 1, close - open - 1), "|").at(nth);
        at = close + 1;
    }
    return all;
}
std::size_t choices(std::string_view text) {
    const std::size_t open = text.find('{');
    return open == std::string_view::npos ? 1 : split(text.substr(open, text.find('}') - open), "|").size();
}
std::string keyOf(const Row& row, std::size_t nth) {
    const std::string name = chosen(row.keys, nth);
    return name.find('.') == std::string::npos ? "TorvaneSerial." + name : name;
}

void uncover(Control& key) {
    for (Control* at = &key; at != nullptr; at = at->container()) {
        at->setVisible(true);
        if (at->has(Property::Enabled)) {
            at->setEnabled(true);
        }
    }
}

std::string framesOf(Session& session, const std::string& name) {
    std::vector<std::string> told;
    session.onFrame = [&told](const std::string_view frame) {
        const bool polls = frame.empty() || frame == "ST" || frame == "HU";
        if (!polls && std::find(told.begin(), told.end(), frame) == told.end()) {
            told.emplace_back(frame);
        }
    };
    Control& key = *session.find(name);
    if (key.kind() == Kind::Slider) {
        session.perform("slide " + name + " 100");
    } else {
        session.perform("hold " + name + " " + std::to_string(std::max(100, key.holdTime() + 1)));
    }
    session.perform("wait 3000");
    std::string all;
    for (const std::string& frame : told) {
        all.append(all.empty() ? "" : " ").append(frame);
    }
    return all;
}

class EveryKey : public testing::TestWithParam<Place> {};

TEST_P(EveryKey, SendsItsFramesWhereItBelongs) {
    const Place& place = GetParam();
    Plan plan{std::string(place.commandLine), {}, "startphase=2", {}};
    if (!place.configuration.empty()) {
        plan.configuration.emplace_back(place.configuration);
    }
    Session session(plan);
    for (const std::string& line : Scene{Run::None, place.name, true, place.how}.lines()) {
        session.perform(line);
    }
    SharedText told(1U << 12U);
    for (const Row& row : kRows) {
        for (std::size_t nth = 0; row.place == place.name && nth < choices(row.keys); ++nth) {
            const std::string name = keyOf(row, nth);
            SCOPED_TRACE(name);
            ASSERT_NE(session.find(name), nullptr);
            EXPECT_EQ(session.reaches(name), !row.covered);
            told.clear();
            EXPECT_EQ(inACopy([&] {
                          if (row.covered) {
                              uncover(*session.find(name));
                          }
                          told.add(framesOf(session, name));
                      }),
                      "");
            EXPECT_EQ(told.text(), chosen(row.frames, nth));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Of, EveryKey, testing::ValuesIn(kPlaces), [](const auto& place) {
    std::string name(place.param.name);
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
});

TEST(EveryKeyTable, HasARowForEachKey) {
    std::multiset<std::string> named;
    for (const Row& row : kRows) {
        EXPECT_TRUE(std::any_of(kPlaces.begin(), kPlaces.end(), [&row](const Place& place) {
            return place.name == row.place;
        })) << row.place;
        for (std::size_t nth = 0; nth < choices(row.keys); ++nth) {
            named.insert(keyOf(row, nth));
        }
    }
    std::set<std::string> keys;
    Session session(Plan{});
    const Probes& probes = Probes::all(); // which knows the controls of all hosts and panels
    for (std::size_t i = 0; i < probes.size(); ++i) {
        if (probes.name(i).starts_with("key ")) {
            const std::string name = probes.name(i).substr(4);
            const Control* control = session.find(name); // of a panel only what is pressed has a probe
            if (control == nullptr || control->kind() == Kind::Button || control->kind() == Kind::Slider) {
                keys.insert(name);
            }
        }
    }
    for (const std::string& key : keys) {
        EXPECT_EQ(named.count(key), 1U) << key;
    }
    for (const std::string& key : named) {
        EXPECT_TRUE(keys.contains(key)) << key;
    }
}

} // namespace
} // namespace quillon
