#include <algorithm>

#include "link/LinkSilence.h"
#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

/// A touch of one key and all frames that it sends, each told once, with a blank between: what depends on the
/// phase, on what was reported, and on Handshaking. What every key sends where it belongs, EveryKey has.
struct KeyCase {
    std::string_view key;
    int index; // -1 for none
    int phase;
    std::string_view reports; ///< what the generator said before, with a blank between
    bool Handshaking;
    std::string_view frames;
};

void PrintTo(const KeyCase& row, std::ostream* out) {
    *out << "phase " << row.phase << " " << row.reports << (row.Handshaking ? " Handshaking" : "");
}

class PanelKeysTest : public LinkTest {
protected:
    /// Brings a key within reach, whatever page it lies on.
    Control& reached(std::string_view name, int index = -1) {
        Control& key = link.ControlHost::at(name, index < 0 ? std::nullopt : std::optional(index));
        for (Control* at = &key; at != nullptr; at = at->container()) {
            at->setVisible(true);
            if (at->has(Property::Enabled)) {
                at->setEnabled(true);
            }
        }
        return key;
    }
    /// Presses, and lets go once what the press sends has left: a key that is held takes no second message.
    void touch(std::string_view name, int index = -1) {
        Control& key = reached(name, index);
        ASSERT_TRUE(input.press(key)) << name;
        input.release(key);
        settle();
    }
    /// Without the empty message that follows one which nobody has acknowledged.
    std::string framesOnce() const {
        std::vector<std::string> told;
        std::string all;
        for (const std::string& frame : sent) {
            if (!frame.empty() && std::find(told.begin(), told.end(), frame) == told.end()) {
                all.append(told.empty() ? "" : " ").append(frame);
                told.push_back(frame);
            }
        }
        return all;
    }
};

class PanelKeyRows : public PanelKeysTest, public testing::WithParamInterface<KeyCase> {};

TEST_P(PanelKeyRows, SendsItsFrames) {
    const KeyCase& row = GetParam();
    phase(row.phase);
    for (const std::string_view report : split(row.reports, " ")) {
        msg(report);
    }
    put("Handshaking", row.Handshaking);
    settle();
    forget();
    touch(row.key, row.index);
    EXPECT_EQ(framesOnce(), row.frames);
}

// clang-format off
constexpr KeyCase kTechnique[]{
    {"cmbTM",                1, 6, "",           true,  ""},
    {"cmbToggleFocus",      -1, 2, "FO11",       false, "FO"},
    {"cmbToggleFocus",      -1, 2, "FO21",       true,  "FOS1"},
    {"cmbToggleFocus",      -1, 2, "",           true,  ""},
    {"cmbToggleFocus",      -1, 6, "FO11 ST2",   true,  ""},
    {"cmbToggleFocus",      -1, 6, "FO21 ST2",   true,  ""},
};
constexpr KeyCase kExposureControl[]{
    {"cmbAECFieldLeft",      0, 2, "FI01",       false, "FI0"},
    {"cmbAECFieldCenter",    1, 8, "",           false, "FI1"},
    {"cmbAECDensity",        4, 2, "MD4",        true,  "FN2"},
    {"cmbAECDensity",        1, 2, "MD4",        true,  ""},
    {"cmbAECDensity",        4, 2, "MD5",        true,  "FN2"},
    {"cmbDAECDensity",       3, 2, "MD4 WM5",    true,  "FN3"},
    {"cmbDAECDensity",       3, 2, "MD4 WM4",    true,  ""},
    {"cmbDigitalAEC",       -1, 2, "WM5 DA1",    true,  "DA0"},
    {"cmbDigitalAEC",       -1, 2, "WM5 DA1",    false, "DA"},
    {"cmbDigitalAEC",       -1, 2, "WM4",        true,  ""},
    {"cmbPhotomultiplier",  -1, 2, "WM7",        false, "PH"},
    {"cmbPhotomultiplier",  -1, 2, "WM0",        false, ""},
};
constexpr KeyCase kFluoroscopy[]{
    {"cmbFlMAUp",           -1, 2, "",           false, "FLMA+"},
    {"cmbToggleABS",        -1, 2, "",           true,  "FLA1"},
    {"cmbToggleABS",        -1, 2, "FLA1",       false, "FLA"},
    {"cmbFlHighDose",       -1, 2, "",           true,  ""},
    {"cmbKVPTrackingDown",  -1, 2, "KVT0",       true,  ""},
};
constexpr KeyCase kConfiguration[]{
    {"cmbConfiguration",    -1, 2, "",           true,  "CF1"},
    {"cmbConfiguration",    -1, 6, "",           true,  ""},
};
constexpr KeyCase kCalibration[]{
    {"cmbCalibration",      -1, 2, "",           true,  "CA1"},
    {"cmbCalibration",      -1, 6, "CAU1",       true,  ""},
    {"cmbAutocalibration",  -1, 9, "CAU1",       true,  "CAU0"},
    {"cmbAutocalibration",  -1, 2, "",           true,  ""},
    {"cmbKVPCalUp",         -1, 6, "",           false, "KV+"},
    {"cmbKVPCalUp",         -1, 2, "",           true,  ""},
};
// clang-format on

std::string rowName(const testing::TestParamInfo<KeyCase>& info) {
    std::string name = decimalText(static_cast<double>(info.index)) + "_" + std::string(info.param.key);
    return info.param.index < 0 ? name : name + "_" + decimalText(info.param.index);
}

INSTANTIATE_TEST_SUITE_P(Technique, PanelKeyRows, testing::ValuesIn(kTechnique), rowName);
INSTANTIATE_TEST_SUITE_P(ExposureControl, PanelKeyRows, testing::ValuesIn(kExposureControl), rowName);
INSTANTIATE_TEST_SUITE_P(Fluoroscopy, PanelKeyRows, testing::ValuesIn(kFluoroscopy), rowName);
INSTANTIATE_TEST_SUITE_P(Configuration, PanelKeyRows, testing::ValuesIn(kConfiguration), rowName);
INSTANTIATE_TEST_SUITE_P(Calibration, PanelKeyRows, testing::ValuesIn(kCalibration), rowName);

TEST_F(PanelKeysTest, PositionerSettingsAreNeverAcknowledgedAndTheTechniqueModeIs) {
    put("Handshaking", true);
    phase(8);
    touch("cmbConfWSInterlockUp");
    EXPECT_EQ(sent, std::vector<std::string>{"WSI+"});
    phase(2);
    touch("cmbTM", 3);
    EXPECT_EQ(sent, (std::vector<std::string>{"TM3", "TM3", "TM3", "TM3", ""}));
}

TEST_F(PanelKeysTest, KvpInAutocalibrationMovesOnlyForAParameter) {
    put("Handshaking", true);
    phase(6);
    msg("MA100");
    phase(9);
    touch("cmbKVPCalUp");
    EXPECT_EQ(framesOnce(), "");
    phase(6);
    msg("MASE03");
    ASSERT_EQ(valueTo<std::int32_t>(link.operations().get("CalibrationType")), 1);
    phase(9);
    touch("cmbKVPCalDown");
    EXPECT_EQ(framesOnce(), "KVD");
}

TEST_F(PanelKeysTest, BothFocusKeysAskForConfirmation) {
    phase(6);
    for (const std::string_view key : {"cmbToggleFocusCal", "cmbCalFocusSet"}) {
        for (const std::string_view answer : {"cmbToggleFocusConfirm", "cmbToggleFocusDismiss"}) {
            touch(key);
            EXPECT_TRUE(visible("cmbToggleFocusConfirm") && visible("cmbToggleFocusDismiss")) << key;
            EXPECT_TRUE(active("cmbToggleFocusConfirm") && active("cmbToggleFocusDismiss")) << key;
            EXPECT_EQ(active("cmbCalFocusSet"), key == "cmbCalFocusSet");
            touch(answer);
            EXPECT_FALSE(visible("cmbToggleFocusConfirm") || visible("cmbToggleFocusDismiss")) << answer;
            EXPECT_FALSE(active("cmbCalFocusSet") || active("cmbToggleFocusConfirm")) << answer;
        }
    }
}

TEST_F(PanelKeysTest, LeavingConfigurationClearsItsPage) {
    phase(8);
    msg("TU2");
    EXPECT_EQ(captionAfter("FI01", "cmbConfiguration"), "OFF");
    ++link.silence().age.time; // a silence
    touch("cmbConfiguration");
    EXPECT_EQ(caption("cmbConfiguration"), "ON");
    EXPECT_FALSE(active("cmbConfiguration"));
    EXPECT_EQ(caption("txtCfgTube"), "");
    EXPECT_EQ(control("cmbAECFieldLeft", 1).backColour(), kNormalColour);
    EXPECT_FALSE(control("txtCfgTube").old() || control("cmbAECFieldLeft", 1).old())
        << "there is nothing in them";
}

TEST_F(PanelKeysTest, CalibrationKeyHandsTheKeysOver) {
    phase(2);
    msg("KV80");
    touch("cmbCalibration");
    EXPECT_FALSE(control("cmbReadExposureCounter").enabled());
    EXPECT_TRUE(control("cmbStoreCalValue").enabled());
    EXPECT_EQ(caption("txtKVp"), "");
    EXPECT_EQ(valueTo<std::string>(link.operations().get("KVPDisplay")), "");
    EXPECT_FALSE(valueTo<bool>(link.operations().get("SmallFocus")));
    EXPECT_TRUE(visible("fraServiceMenu"));
    phase(6);
    msg("CV0100");
    touch("cmbCalibration");
    EXPECT_TRUE(control("cmbReadExposureCounter").enabled());
    EXPECT_FALSE(control("cmbStoreCalValue").enabled());
    EXPECT_EQ(caption("txtCalValue") + control("sldCalValue").toolTip(), "0");
}

TEST_F(PanelKeysTest, ListsAndSlider) {
    phase(2);
    EXPECT_EQ(captionAfter("TC0123", "txtExposureCounter"), "123");
    ASSERT_TRUE(input.select(reached("comboReadExposureCounter"), "Fluoro"));
    EXPECT_EQ(caption("txtExposureCounter"), "");
    touch("cmbReadExposureCounter");
    EXPECT_EQ(framesOnce(), "TC2");
    reached("sldCalValue");
    link.at("sldCalValue").setMaximum(4095);
    ASSERT_TRUE(input.drag(link.at("sldCalValue"), 4000));
    EXPECT_EQ(link.at("sldCalValue").toolTip(), "4000");
    link.at("comboReadExposureCounter").setText("none of the list");
    EXPECT_EQ(link.at("comboReadExposureCounter").text(), "");
}

TEST_F(PanelKeysTest, TheLineIsOpenedAsItsListsSay) {
    std::string opened;
    platform.port.onOpened = [&opened](int port, std::string_view settings) {
        opened = decimalText(port) + " " + std::string(settings);
    };
    link.setPortOpen(false);
    for (const auto& [list, entry] : {std::pair{"cmbCommPort", "3"},
                                      {"cmbCommBaudRate", "9600"},
                                      {"cmbCommParity", "e"},
                                      {"cmbCommDataBits", "7"},
                                      {"cmbCommStopBits", "2"}}) {
        ASSERT_TRUE(input.select(reached(list), entry)) << list;
    }
    link.setPortOpen(true);
    EXPECT_EQ(opened, "3 9600,e,7,2");
}

TEST_F(PanelKeysTest, ErrorKeyTakesItsRestingLook) {
    phase(2);
    msg("ER33");
    advance(500);
    ASSERT_EQ(caption("cmbResetError"), "ERROR 33");
    touch("cmbResetError");
    EXPECT_EQ(caption("cmbResetError"), "Reset Error");
    EXPECT_EQ(control("cmbResetError").backColour(), kNormalColour);
}

TEST_F(PanelKeysTest, MenusTurnThePages) {
    const auto shown = [this](PanelControl pages) {
        std::string all;
        for (const Control* page : link.all(pages)) {
            if (page->visible()) {
                all += decimalText(*page->index());
            }
        }
        return all;
    };
    EXPECT_EQ(shown("fraMainMenuItem"), "0");
    EXPECT_TRUE(visible("fraMainMenu"));
    for (int page = 3; page >= 0; --page) {
        input.click(control("cmbMainMenu", page));
        EXPECT_EQ(shown("fraMainMenuItem"), decimalText(page));
        for (const Control* key : link.all("cmbMainMenu")) {
            EXPECT_EQ(key->backColour() == kActiveColour, key->index() == page);
        }
    }
    input.click(control("cmbMainMenu", 2));
    click("cmbGotoServiceMenu");
    EXPECT_TRUE(visible("fraServiceMenu"));
    EXPECT_FALSE(visible("fraMainMenu"));
    EXPECT_EQ(shown("fraMainMenuItem") + "/" + shown("fraServiceMenuItem"), "/0");
    input.click(control("cmbServiceMenu", 2));
    EXPECT_EQ(shown("fraServiceMenuItem"), "2");
    click("cmbGotoMainMenu");
    EXPECT_EQ(shown("fraMainMenuItem") + "/" + shown("fraServiceMenuItem"), "2/");
    click("cmbGotoServiceMenu");
    EXPECT_EQ(shown("fraServiceMenuItem"), "2");
}

TEST_F(PanelKeysTest, AStepOfConfigurationIsSaidOnceThoughNobodyAcknowledges) {
    link.setHandshaking(true);
    phase(8);
    for (const char* key : {"cmbConfWSInterlockUp", "cmbConfWSInterlockDown", "cmbConfFailSafeUp",
                            "cmbConfFailSafeDown", "cmbConfSyncTypeUp", "cmbConfSyncTypeDown"}) {
        settle();
        forget();
        touch(key);
        settle();
        EXPECT_THAT(sent, testing::SizeIs(1)) << key;
    }
}

TEST_F(PanelKeysTest, WhatTheLineSaysIsShownInPlaceOfTheStatusStrip) {
    for (const bool shown : {true, false}) {
        put("DebugActive", shown);
        EXPECT_EQ(visible("fraDebug"), shown);
        EXPECT_EQ(visible("fraStatus"), !shown);
    }
}

TEST_F(PanelKeysTest, MinimizingTwiceRestoresTheScreen) {
    link.setPlace({0, 0, 9840, 10440});
    link.UserControl_Show();
    click("cmbGotoServiceMenu");
    const Place panel = link.place();
    const Place strip = control("fraStatus").place();
    const Place key = control("cmbMinimize").place();
    const Place page = control("cmbDfltConfig").place();
    click("cmbMinimize");
    EXPECT_EQ(link.place(), (Place{panel.left, panel.top, key.width, key.height}));
    EXPECT_EQ(control("fraStatus").place(), (Place{0, 0, strip.width, strip.height}));
    EXPECT_EQ(control("cmbMinimize").place(), (Place{0, 0, key.width, key.height}));
    EXPECT_FALSE(visible("fraMainMenu") || visible("fraServiceMenu") || visible("Iconized"));
    EXPECT_FALSE(control("cmbWS", 0).visible() || link.border());
    EXPECT_EQ(control("cmbDfltConfig").place(), page) << "laid out on the way";
    click("cmbMinimize");
    EXPECT_EQ(link.place(), panel);
    EXPECT_EQ(control("fraStatus").place(), strip);
    EXPECT_EQ(control("cmbMinimize").place(), key);
    EXPECT_TRUE(visible("fraServiceMenu") && control("cmbWS", 7).visible() && link.border());
    EXPECT_FALSE(visible("fraMainMenu"));
    EXPECT_TRUE(control("fraServiceMenuItem", 0).visible());
    EXPECT_EQ(control("cmbDfltConfig").place(), page);
}

TEST_F(PanelKeysTest, APanelTooSmallForItsPagesIsAnIcon) {
    const Place icon = control("Iconized").place();
    for (const auto& [width, height, small] : {std::tuple{51, 51, false}, {50, 51, true}, {51, 50, true}}) {
        link.setPlace({0, 0, icon.width + width, icon.height + height});
        link.UserControl_Show();
        EXPECT_EQ(visible("Iconized"), small) << width << ", " << height;
    }
}

TEST_F(PanelKeysTest, ConsoleTakesTheNavigationAway) {
    put("fromGUI", true);
    phase(6);
    for (const std::string_view hidden :
         {"cmbCalibration", "cmbAutocalibration", "cmbMinimize", "cmbResetError"}) {
        EXPECT_FALSE(visible(hidden)) << hidden;
    }
    EXPECT_FALSE(control("fraServiceMenu").enabled() || control("cmbGotoMainMenu").enabled());
    EXPECT_FALSE(control("cmbWS", 0).enabled() || control("cmbServiceMenu", 2).enabled());
    EXPECT_TRUE(control("fraCalValue").enabled() && control("fraResetExposureCounter").enabled());
    phase(2);
    phase(8);
    EXPECT_FALSE(visible("cmbConfiguration"));
    EXPECT_TRUE(control("cmbWS", 0).enabled());
}

TEST_F(PanelKeysTest, AutocalibrationPageFollowsWhatIsCalibrated) {
    put("fromGUI", true);
    phase(6);
    msg("MA100");
    call("ToggleAutocalibrationFeature");
    EXPECT_FALSE(control("cmbMACalUp").enabled() || control("cmbToggleFocusCal").enabled() ||
                 control("cmbCalFocusSet").enabled() || control("fraCalValue").enabled());
    EXPECT_TRUE(visible("txtFocusCal") && visible("cmbToggleFocusConfirm"));
    EXPECT_FALSE(visible("fraResetExposureCounter"));
    EXPECT_FALSE(control("cmbServiceMenu", 2).enabled() || control("cmbGotoMainMenu").enabled());

    msg("CAU0");
    msg("MASE03");
    call("ToggleAutocalibrationFeature");
    EXPECT_TRUE(control("cmbMACalUp").enabled() && control("cmbToggleFocusCal").enabled());
    EXPECT_FALSE(visible("txtFocusCal") || visible("cmbCalFocusSet"));
    EXPECT_FALSE(control("cmbResetExposureCounter").enabled());

    // Both keys of the focus come back together: with calibration, a station and the one parameter of the
    // focus.
    phase(9);
    phase(6);
    EXPECT_FALSE(visible("cmbToggleFocusCal") || visible("cmbCalFocusSet"));
    for (const std::string_view item : {"MASE01", "MASE03", "MAS100"}) {
        msg(item);
        EXPECT_EQ(visible("cmbToggleFocusCal"), item != "MASE03") << item;
        EXPECT_EQ(visible("cmbCalFocusSet"), item != "MASE03") << item;
        EXPECT_TRUE(control("cmbCalFocusSet").enabled()) << item;
    }
    msg("CAU0");
    msg("MASE01");
    call("ToggleAutocalibrationFeature");
    EXPECT_FALSE(visible("cmbCalFocusSet"));
    phase(9);
    phase(6);
    EXPECT_TRUE(visible("cmbCalFocusSet"));
}

} // namespace
} // namespace quillon
