#include "panel/PanelKeys.h"

#include <array>
#include <functional>
#include <string>

#include "base/Numbers.h"
#include "link/OutboundTable.h"

namespace quillon {

namespace {

enum class Touch : std::uint8_t { Press, Release, Click };

std::function<void()>& handler(Control& key, Touch touch) {
    switch (touch) {
    case Touch::Press:
        return key.on.press;
    case Touch::Release:
        return key.on.release;
    case Touch::Click:
        break;
    }
    return key.on.click;
}

/// A key with all its elements.
std::vector<Control*> elements(const PanelHost& panel, PanelControl name) {
    if (Control* single = panel.find(name)) {
        return {single};
    }
    return panel.all(name);
}

using State = GeneratorState;

using Condition = Hindrance (*)(const PanelSubjects& subjects, int index);
Hindrance digitalMode(const PanelSubjects& subjects, int /*index*/) {
    return subjects.context.state.m_WorkingMode >= kFirstDigitalMode ? Hindrance::None
                                                                     : Hindrance::NotDigital;
}
Hindrance brightnessControlled(const PanelSubjects& subjects, int /*index*/) {
    return subjects.context.state.m_FlABS ? Hindrance::None : Hindrance::NoBrightness;
}
/// The kVp of a plain mA station is not to be moved while an autocalibration works on it.
Hindrance kvpMovable(const PanelSubjects& subjects, int /*index*/) {
    const Phase phase = subjects.context.link.m_OperatingPhase;
    if (phase == Phase::Autocalibration) {
        return subjects.context.state.m_CalibrationType != 0 ? Hindrance::None : Hindrance::FixedKVP;
    }
    return phase == Phase::Calibration ? Hindrance::None : Hindrance::Phase;
}

template <auto kMember> bool isOn(const State& state) {
    return state.*kMember;
}
template <std::size_t kField> bool fieldIsOn(const State& state) {
    return state.m_AECFields[kField];
}

std::int32_t densityOf(const PanelSubjects& subjects, int index) {
    return toInt32(index - densityOffset(subjects.context.state));
}
void setDensity(const PanelSubjects& subjects, int index) {
    subjects.exposureControl.SetAECDensity(densityOf(subjects, index));
}
Hindrance inRange(const PanelSubjects& subjects, int index) {
    return subjects.exposureControl.takesDensity(densityOf(subjects, index)) ? Hindrance::None
                                                                             : Hindrance::NoDensity;
}
void setDigitalDensity(const PanelSubjects& subjects, int index) {
    subjects.exposureControl.SetAECDensity(index);
}
Hindrance digitalInRange(const PanelSubjects& subjects, int index) {
    const Hindrance mode = digitalMode(subjects, index);
    return mode != Hindrance::None || subjects.exposureControl.takesDensity(index) ? mode
                                                                                   : Hindrance::NoDensity;
}
void expose(const PanelSubjects& subjects, int /*index*/) {
    subjects.context.commands.send(command("SoftwareExposure"), true);
}
void askHighDose(const PanelSubjects& subjects, int /*index*/) {
    subjects.context.commands.send(command("FlHighDose"), false);
}

struct KeyRow {
    PanelControl key; ///< all elements of it
    Touch touch;
    KeyAct act;
    Condition condition = nullptr;
};

// clang-format off
constexpr auto kPress = Touch::Press;
constexpr auto kRelease = Touch::Release;
constexpr auto kClick = Touch::Click;
constexpr std::array kKeys{
    // Technique
    KeyRow{"cmdSWExposure",         kClick,   {&expose, "XR"}},
    KeyRow{"cmbDoseLastExposure",   kRelease, sends<command("LastExposureDose")>},
    KeyRow{"cmbDoseAccumulated",    kRelease, sends<command("AccumulatedDose")>},
    KeyRow{"cmbDoseReset",          kRelease, sends<command("DosemeterReset")>},
    // Exposure control; the field keys stand on the configuration page as well
    KeyRow{"cmbAECFieldLeft",       kClick,   switches<command("SetAECFieldLeft"), command("ToggleAECFieldLeft"), fieldIsOn<0>>},
    KeyRow{"cmbAECFieldCenter",     kClick,   switches<command("SetAECFieldCenter"), command("ToggleAECFieldCenter"), fieldIsOn<1>>},
    KeyRow{"cmbAECFieldRight",      kClick,   switches<command("SetAECFieldRight"), command("ToggleAECFieldRight"), fieldIsOn<2>>},
    KeyRow{"cmbAECFilmScreen",      kRelease, sendsIndex<command("SetAECFilmScreen")>},
    KeyRow{"cmbAECBrightnessDown",  kRelease, sends<command("BrightnessOneDown")>},
    KeyRow{"cmbAECDensity",         kRelease, {&setDensity, "FN"}, &inRange},
    KeyRow{"cmbDAECDensity",        kRelease, {&setDigitalDensity, "FN"}, &digitalInRange},
    KeyRow{"cmbDigitalAEC",         kRelease, switches<command("SetDAEC"), command("ToggleDAEC"), isOn<&State::m_DigitalAEC>>, &digitalMode},
    KeyRow{"cmbPhotomultiplier",    kRelease, switches<command("SetPhotomultiplier"), command("TogglePhotomultiplier"), isOn<&State::m_Photomultiplier>>, &digitalMode},
    // Fluoroscopy
    KeyRow{"cmbFlPPSNext",          kClick,   sends<command("FlPPSNext")>},
    KeyRow{"cmbFlContinuous",       kPress,   does<&Fluoroscopy::FlContinuousToggle>.asking("FLP")},
    KeyRow{"cmbFlMAUp",             kRelease, sends<command("FlMAOneUp")>},
    KeyRow{"cmbFlMADown",           kRelease, sends<command("FlMAOneDown")>},
    KeyRow{"cmdFlResetTime",        kRelease, sends<command("FlTimeReset")>},
    KeyRow{"cmbToggleABS",          kRelease, switches<command("SetFlABS"), command("FlABSToggle"), isOn<&State::m_FlABS>>},
    KeyRow{"cmbFlHighDose",         kRelease, {&askHighDose, "FLHD"}, &brightnessControlled},
    KeyRow{"cmbFlMag",              kRelease, sendsIndex<command("FlMagnification")>},
    KeyRow{"cmbContrastUp",         kRelease, sends<command("FlContrastUp")>},
    KeyRow{"cmbContrastDown",       kRelease, sends<command("FlContrastDown")>},
    KeyRow{"cmbFlKVPTracking",      kRelease, does<&Fluoroscopy::FlKVPToggleKVPTracking>.asking("KVT")},
    KeyRow{"cmbKVPTrackingUp",      kRelease, does<&Fluoroscopy::FlKVPTrackingUp>.asking("KVT+")},
    KeyRow{"cmbKVPTrackingDown",    kRelease, does<&Fluoroscopy::FlKVPTrackingDown>.asking("KVT-")},
    // Configuration
    KeyRow{"cmbDfltConfig",         kClick,   sends<command("DefaultConfiguration")>},
    KeyRow{"cmbConfTubeUp",         kRelease, sends<command("ConfTubeUp")>},
    KeyRow{"cmbConfTubeDown",       kRelease, sends<command("ConfTubeDown")>},
    KeyRow{"cmbConfWMUp",           kRelease, sends<command("ConfWorkingModeUp")>},
    KeyRow{"cmbConfWMDown",         kRelease, sends<command("ConfWorkingModeDown")>},
    KeyRow{"cmbConfAECUp",          kRelease, sends<command("ConfICUp")>},
    KeyRow{"cmbConfAECDown",        kRelease, sends<command("ConfICDown")>},
    KeyRow{"cmbKVTrackingUp",       kRelease, sends<command("ConfKVTrackingUp")>},
    KeyRow{"cmbKVTrackingDown",     kRelease, sends<command("ConfKVTrackingDown")>},
    // Calibration
    KeyRow{"cmbAutocalibration",    kRelease, does<&Service::ToggleAutocalibrationFeature>.asking("CAU")},
    KeyRow{"cmbKVPCalUp",           kPress,   sends<command("KVPOneUp")>, &kvpMovable},
    KeyRow{"cmbKVPCalDown",         kPress,   sends<command("KVPOneDown")>, &kvpMovable},
    KeyRow{"cmbAutocalConfirm",     kClick,   does<&Service::confirm>.asking("CAU")},
    KeyRow{"cmbAutocalDismiss",     kClick,   does<&Service::dismiss>.asking("CAU")},
    KeyRow{"sldCalValue",           kRelease, does<&Service::sendCalibrationValue>.asking("CV")},
    KeyRow{"cmbSaveCalValue",       kClick,   sends<command("CalibrationValueRead")>},
    KeyRow{"cmbStoreCalValue",      kRelease, sends<command("CalibrationValueStore")>},
};

/// Keys for whose messages there is no operation.
struct MessageRow {
    PanelControl key;
    std::string_view mnemonic;
    std::string_view value; ///< empty for the key's index
    bool acknowledged;      ///< when Handshaking is on
};
constexpr std::array kMessages{
    MessageRow{"cmbTM",                  "TM",  "",  true},
    MessageRow{"cmbConfWSInterlockUp",   "WSI", "+", false},
    MessageRow{"cmbConfWSInterlockDown", "WSI", "-", false},
    MessageRow{"cmbConfFailSafeUp",      "WSF", "+", false},
    MessageRow{"cmbConfFailSafeDown",    "WSF", "-", false},
    MessageRow{"cmbConfSyncTypeUp",      "WSS", "+", false},
    MessageRow{"cmbConfSyncTypeDown",    "WSS", "-", false},
};
// clang-format on

} // namespace

PanelKeys::PanelKeys(const PanelSubjects& subjects, KeyNeeds& needs, PanelPages& pages, PanelFrame& frame)
    : subjects_(subjects), needs_(needs), context_(subjects.context), state_(context_.state),
      panel_(context_.panel), pages_(pages), frame_(frame) {
    wireOperations();
    wireMessages();
    wireMenus();
    wireModes();
    wireFocusConfirmation();
    wireLists();
    wireStatusStrip();
    addNeeds();
}

/// Of the keys that stand in no table.
void PanelKeys::addNeeds() {
    struct Row {
        PanelControl key;
        std::string_view asks;
    };
    constexpr std::array kRows{
        Row{"cmbConfiguration", "CF"},
        Row{"cmbCalibration", "CA"},
        Row{"cmbToggleFocus", "FOS"},
        Row{"cmbFluoroAlarmReset", "FLAR"},
        Row{"cmbWS", "WS"},
        Row{"cmbToggleFocusCal", "CO"},
        Row{"cmbCalFocusSet", "CO"},
        Row{"cmbToggleFocusConfirm", "CO"},
        Row{"cmbReadExposureCounter", "TC"},
        Row{"cmbResetExposureCounter", "TCR"},
    };
    for (const Row& row : kRows) {
        for (const Control* key : elements(panel_, row.key)) {
            needs_.add(*key, row.asks);
        }
    }
    for (const PanelControl name : {PanelControl("cmbMSCalUp"), PanelControl("cmbMSCalDown")}) {
        needs_.add(panel_[name], "", [] { return Hindrance::NoAction; });
    }
}

void PanelKeys::wireOperations() {
    for (const KeyRow& row : kKeys) {
        for (Control* key : elements(panel_, row.key)) {
            const int index = key->index().value_or(0);
            const auto hindrance = [this, &row, index] {
                return row.condition == nullptr ? Hindrance::None : row.condition(subjects_, index);
            };
            handler(*key, row.touch) = [this, &row, index, hindrance] {
                if (hindrance() == Hindrance::None) {
                    row.act.work(subjects_, index);
                }
            };
            needs_.add(*key, row.act.asks, hindrance);
        }
    }
}

void PanelKeys::wireMessages() {
    for (const MessageRow& row : kMessages) {
        for (Control* key : elements(panel_, row.key)) {
            key->on.click = [this, &row, key] {
                std::string message(row.mnemonic);
                message.append(row.value.empty() ? decimalText(key->index().value_or(0))
                                                 : std::string(row.value));
                context_.send.SendMessage(message, phasesOf(row.mnemonic),
                                          row.acknowledged && context_.link.Handshaking);
            };
            needs_.add(*key, row.mnemonic);
        }
    }
}

void PanelKeys::wireMenus() {
    panel_["cmbGotoServiceMenu"].on.release = [this] { pages_.ShowServiceMenu(); };
    panel_["cmbGotoMainMenu"].on.release = [this] { pages_.ShowMainMenu(); };
    const auto selects = [this](PanelControl menu, void (PanelPages::*select)(std::int16_t)) {
        for (Control* key : panel_.all(menu)) {
            key->on.release = [this, select, page = toInt16(key->index().value_or(0))] {
                (pages_.*select)(page);
            };
        }
    };
    selects("cmbMainMenu", &PanelPages::SelectMainPage);
    selects("cmbServiceMenu", &PanelPages::SelectServicePage);
}

void PanelKeys::wireModes() {
    panel_["cmbConfiguration"].on.release = [this] { toggleConfiguration(); };
    panel_["cmbCalibration"].on.release = [this] { toggleCalibration(); };
    panel_["cmbToggleFocus"].on.release = [this] { toggleFocus(); };
    Control& cmbFluoroAlarmReset = panel_["cmbFluoroAlarmReset"];
    cmbFluoroAlarmReset.on.click = [this, &cmbFluoroAlarmReset] {
        cmbFluoroAlarmReset.setBackColour(kNormalColour);
        context_.commands.send(command("FlAlarmReset"));
    };
    for (Control* key : panel_.all("cmbWS")) {
        key->on.release = [this, key] {
            context_.commands.send(command("Workstation"), std::int32_t{key->index().value_or(0) + 1});
            for (Control* each : panel_.all("cmbWS")) {
                each->setEnabled(true);
            }
        };
    }
}

void PanelKeys::toggleConfiguration() {
    if (context_.link.m_OperatingPhase == Phase::NormalOperation) {
        context_.commands.send(command("Configuration"), true);
    } else if (context_.link.m_OperatingPhase == Phase::Configuration) {
        context_.commands.send(command("Configuration"), false);
        panel_["cmbConfiguration"].setBackColour(kNormalColour);
        panel_["cmbConfiguration"].setCaption("ON");
        pages_.clearConfigurationPage();
    }
}

void PanelKeys::toggleCalibration() {
    if (state_.m_AutocalState != 0) {
        return;
    }
    const auto forgetTechnique = [this] {
        state_.m_SmallFocus = 0;
        state_.m_LargeFocus = 0;
        for (std::string* shown :
             {&state_.m_KVPDisplay, &state_.m_MADisplay, &state_.m_MSDisplay, &state_.m_MASDisplay}) {
            shown->clear();
        }
    };
    const bool leaving = context_.link.m_OperatingPhase == Phase::Calibration;
    if (leaving) {
        forgetTechnique();
        pages_.EnableCalibrationKeys(false);
        pages_.EnableRADKeys(true);
    } else {
        pages_.EnableRADKeys(false);
        pages_.EnableCalibrationKeys(true);
        forgetTechnique();
    }
    subjects_.service.calibration(!leaving);
}

void PanelKeys::toggleFocus() {
    if (!context_.link.Handshaking) {
        context_.commands.send(command("ToggleFocus"));
    } else if (state_.m_SmallFocus == 1) {
        context_.commands.send(command("SetFocalSpot"), 1);
    } else if (state_.m_LargeFocus == 1) {
        context_.commands.send(command("SetFocalSpot"), 0);
    }
}

void PanelKeys::wireFocusConfirmation() {
    panel_["cmbToggleFocusCal"].on.click = [this] { showFocusConfirmation(true); };
    panel_["cmbCalFocusSet"].on.release = [this] {
        panel_["cmbCalFocusSet"].setBackColour(kActiveColour);
        showFocusConfirmation(true);
    };
    const auto closes = [this] {
        panel_["cmbCalFocusSet"].setBackColour(kNormalColour);
        showFocusConfirmation(false);
    };
    panel_["cmbToggleFocusConfirm"].on.click = [this, closes] {
        context_.commands.send(command("CalibrationSetFocus"));
        closes();
    };
    panel_["cmbToggleFocusDismiss"].on.click = closes;
}

void PanelKeys::showFocusConfirmation(bool shown) {
    for (const PanelControl name :
         {PanelControl("cmbToggleFocusConfirm"), PanelControl("cmbToggleFocusDismiss")}) {
        panel_[name].setBackColour(shown ? kActiveColour : kNormalColour);
        panel_[name].setVisible(shown);
    }
}

void PanelKeys::wireLists() {
    Control& comboReadExposureCounter = panel_["comboReadExposureCounter"];
    comboReadExposureCounter.on.click = [this] { panel_["txtExposureCounter"].setCaption(""); };
    panel_["cmbReadExposureCounter"].on.release = [this, &comboReadExposureCounter] {
        context_.commands.send(command("ReadExposureCounter"), comboReadExposureCounter.listIndex());
    };
    panel_["cmbResetExposureCounter"].on.release = [this] { resetExposureCounter(); };
    Control& sldCalValue = panel_["sldCalValue"];
    sldCalValue.on.change = [&sldCalValue] { sldCalValue.setToolTip(decimalText(sldCalValue.value())); };
}

void PanelKeys::resetExposureCounter() {
    const std::int32_t counter = panel_["comboResetExposureCounter"].listIndex();
    state_.m_ExposureCounterResetPending = true;
    context_.commands.send(command("ResetExposureCounter"), counter);
    // The report that answers ends the flashing of the key.
    context_.commands.send(command("ReadExposureCounter"), counter);
}

void PanelKeys::wireStatusStrip() {
    Control& cmbResetError = panel_["cmbResetError"];
    cmbResetError.on.release = [this, &cmbResetError] {
        cmbResetError.setCaption("Reset Error");
        cmbResetError.setBackColour(kNormalColour);
        subjects_.errors.ResetError();
    };
    panel_["cmbMinimize"].on.click = [this] { minimize(); };
}

void PanelKeys::minimize() {
    if (!frame_.minimized()) {
        frame_.minimize();
        return;
    }
    if (pages_.mainMenuShown()) {
        pages_.ShowMainMenu();
    } else {
        pages_.ShowServiceMenu();
    }
    frame_.restore();
}

} // namespace quillon
