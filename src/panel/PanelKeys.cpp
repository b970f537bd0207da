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
std::vector<Control*> elements(const ControlHost& panel, std::string_view name) {
    if (Control* single = panel.find(name)) {
        return {single};
    }
    return panel.all(name);
}

using State = GeneratorState;

using Condition = bool (*)(const ModelContext& context);
bool digitalMode(const ModelContext& context) {
    return context.state.m_WorkingMode >= kFirstDigitalMode;
}
bool brightnessControlled(const ModelContext& context) {
    return context.state.m_FlABS;
}
/// The kVp of a plain mA station is not to be moved while an autocalibration works on it.
bool kvpMovable(const ModelContext& context) {
    return context.link.m_OperatingPhase == Phase::Calibration ||
           (context.link.m_OperatingPhase == Phase::Autocalibration && context.state.m_CalibrationType != 0);
}

template <bool State::*kMember> bool isOn(const State& state) {
    return state.*kMember;
}
template <std::size_t kField> bool fieldIsOn(const State& state) {
    return state.m_AECFields[kField];
}

void setDensity(const PanelSubjects& subjects, int index) {
    subjects.exposureControl.SetAECDensity(toInt32(index - densityOffset(subjects.context.state)));
}
void setDigitalDensity(const PanelSubjects& subjects, int index) {
    subjects.exposureControl.SetAECDensity(index);
}
void expose(const PanelSubjects& subjects, int /*index*/) {
    subjects.context.commands.send(command("SoftwareExposure"), true);
}
void askHighDose(const PanelSubjects& subjects, int /*index*/) {
    subjects.context.commands.send(command("FlHighDose"), false);
}

struct KeyRow {
    std::string_view key; ///< all elements of it
    Touch touch;
    KeyWork work;
    Condition condition = nullptr;
};

// clang-format off
constexpr auto kPress = Touch::Press;
constexpr auto kRelease = Touch::Release;
constexpr auto kClick = Touch::Click;
constexpr std::array kKeys{
    // Technique
    KeyRow{"cmdSWExposure",         kClick,   &expose},
    KeyRow{"cmbDoseLastExposure",   kRelease, sends<command("LastExposureDose")>},
    KeyRow{"cmbDoseAccumulated",    kRelease, sends<command("AccumulatedDose")>},
    KeyRow{"cmbDoseReset",          kRelease, sends<command("DosemeterReset")>},
    // Exposure control; the field keys stand on the configuration page as well
    KeyRow{"cmbAECFieldLeft",       kClick,   switches<command("SetAECFieldLeft"), command("ToggleAECFieldLeft"), fieldIsOn<0>>},
    KeyRow{"cmbAECFieldCenter",     kClick,   switches<command("SetAECFieldCenter"), command("ToggleAECFieldCenter"), fieldIsOn<1>>},
    KeyRow{"cmbAECFieldRight",      kClick,   switches<command("SetAECFieldRight"), command("ToggleAECFieldRight"), fieldIsOn<2>>},
    KeyRow{"cmbAECFilmScreen",      kRelease, sendsIndex<command("SetAECFilmScreen")>},
    KeyRow{"cmbAECBrightnessDown",  kRelease, sends<command("BrightnessOneDown")>},
    KeyRow{"cmbAECDensity",         kRelease, &setDensity},
    KeyRow{"cmbDAECDensity",        kRelease, &setDigitalDensity, &digitalMode},
    KeyRow{"cmbDigitalAEC",         kRelease, switches<command("SetDAEC"), command("ToggleDAEC"), isOn<&State::m_DigitalAEC>>, &digitalMode},
    KeyRow{"cmbPhotomultiplier",    kRelease, switches<command("SetPhotomultiplier"), command("TogglePhotomultiplier"), isOn<&State::m_Photomultiplier>>, &digitalMode},
    // Fluoroscopy
    KeyRow{"cmbFlPPSNext",          kClick,   sends<command("FlPPSNext")>},
    KeyRow{"cmbFlContinuous",       kPress,   does<&Fluoroscopy::FlContinuousToggle>},
    KeyRow{"cmbFlMAUp",             kRelease, sends<command("FlMAOneUp")>},
    KeyRow{"cmbFlMADown",           kRelease, sends<command("FlMAOneDown")>},
    KeyRow{"cmdFlResetTime",        kRelease, sends<command("FlTimeReset")>},
    KeyRow{"cmbToggleABS",          kRelease, switches<command("SetFlABS"), command("FlABSToggle"), isOn<&State::m_FlABS>>},
    KeyRow{"cmbFlHighDose",         kRelease, &askHighDose, &brightnessControlled},
    KeyRow{"cmbFlMag",              kRelease, sendsIndex<command("FlMagnification")>},
    KeyRow{"cmbContrastUp",         kRelease, sends<command("FlContrastUp")>},
    KeyRow{"cmbContrastDown",       kRelease, sends<command("FlContrastDown")>},
    KeyRow{"cmbFlKVPTracking",      kRelease, does<&Fluoroscopy::FlKVPToggleKVPTracking>},
    KeyRow{"cmbKVPTrackingUp",      kRelease, does<&Fluoroscopy::FlKVPTrackingUp>},
    KeyRow{"cmbKVPTrackingDown",    kRelease, does<&Fluoroscopy::FlKVPTrackingDown>},
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
    KeyRow{"cmbAutocalibration",    kRelease, does<&Service::ToggleAutocalibrationFeature>},
    KeyRow{"cmbKVPCalUp",           kPress,   sends<command("KVPOneUp")>, &kvpMovable},
    KeyRow{"cmbKVPCalDown",         kPress,   sends<command("KVPOneDown")>, &kvpMovable},
    KeyRow{"cmbAutocalConfirm",     kClick,   does<&Service::confirm>},
    KeyRow{"cmbAutocalDismiss",     kClick,   does<&Service::dismiss>},
    KeyRow{"sldCalValue",           kRelease, does<&Service::sendCalibrationValue>},
    KeyRow{"cmbSaveCalValue",       kClick,   sends<command("CalibrationValueRead")>},
    KeyRow{"cmbStoreCalValue",      kRelease, sends<command("CalibrationValueStore")>},
};

/// Keys for whose messages there is no operation.
struct MessageRow {
    std::string_view key;
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

PanelKeys::PanelKeys(const PanelSubjects& subjects, PanelPages& pages, PanelFrame& frame)
    : subjects_(subjects), context_(subjects.context), state_(context_.state), panel_(context_.panel),
      pages_(pages), frame_(frame) {
    wireOperations();
    wireMessages();
    wireMenus();
    wireModes();
    wireFocusConfirmation();
    wireLists();
    wireStatusStrip();
}

void PanelKeys::wireOperations() {
    for (const KeyRow& row : kKeys) {
        for (Control* key : elements(panel_, row.key)) {
            handler(*key, row.touch) = [this, &row, key] {
                if (row.condition == nullptr || row.condition(context_)) {
                    row.work(subjects_, key->index().value_or(0));
                }
            };
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
        }
    }
}

void PanelKeys::wireMenus() {
    panel_["cmbGotoServiceMenu"].on.release = [this] { pages_.ShowServiceMenu(); };
    panel_["cmbGotoMainMenu"].on.release = [this] { pages_.ShowMainMenu(); };
    const auto selects = [this](std::string_view menu, void (PanelPages::*select)(std::int16_t)) {
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
    for (const std::string_view name : {"cmbToggleFocusConfirm", "cmbToggleFocusDismiss"}) {
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
