#include "panel/PanelKeys.h"

#include <array>
#include <functional>
#include <string>

#include "base/Numbers.h"
#include "link/OutboundTable.h"
#include "model/Commands.h"
#include "model/ExposureControl.h"

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

using Argument = Value (*)(const State& state, const Control& key);
Value index(const State&, const Control& key) {
    return std::int32_t{key.index().value_or(0)};
}
Value number(const State&, const Control& key) {
    return std::int32_t{key.index().value_or(0) + 1};
}
Value density(const State& state, const Control& key) {
    return toInt32(key.index().value_or(0) - densityOffset(state));
}
Value off(const State&, const Control&) {
    return false;
}
template <bool State::*Member> Value opposite(const State& state, const Control&) {
    return !(state.*Member);
}
template <std::size_t Field> Value oppositeField(const State& state, const Control&) {
    return !state.m_AECFields[Field];
}

struct KeyRow {
    std::string_view key; ///< all elements of it
    Touch touch;
    std::string_view operation;
    Argument argument = nullptr;
    std::string_view plain = {}; ///< operation without argument while Handshaking is off, where it differs
    Condition condition = nullptr;
};

// clang-format off
constexpr auto kPress = Touch::Press;
constexpr auto kRelease = Touch::Release;
constexpr auto kClick = Touch::Click;
constexpr std::array kKeys{
    // Technique
    KeyRow{"cmbDoseLastExposure",   kRelease, "LastExposureDose"},
    KeyRow{"cmbDoseAccumulated",    kRelease, "AccumulatedDose"},
    KeyRow{"cmbDoseReset",          kRelease, "DosemeterReset"},
    // Exposure control; the field keys stand on the configuration page as well
    KeyRow{"cmbAECFieldLeft",       kClick,   "SetAECFieldLeft", &oppositeField<0>, "ToggleAECFieldLeft"},
    KeyRow{"cmbAECFieldCenter",     kClick,   "SetAECFieldCenter", &oppositeField<1>, "ToggleAECFieldCenter"},
    KeyRow{"cmbAECFieldRight",      kClick,   "SetAECFieldRight", &oppositeField<2>, "ToggleAECFieldRight"},
    KeyRow{"cmbAECFilmScreen",      kRelease, "SetAECFilmScreen", &index},
    KeyRow{"cmbAECDensity",         kRelease, "SetAECDensity", &density},
    KeyRow{"cmbDAECDensity",        kRelease, "SetAECDensity", &index, "", &digitalMode},
    KeyRow{"cmbDigitalAEC",         kRelease, "SetDAEC", &opposite<&State::m_DigitalAEC>, "ToggleDAEC", &digitalMode},
    KeyRow{"cmbPhotomultiplier",    kRelease, "SetPhotomultiplier", &opposite<&State::m_Photomultiplier>, "TogglePhotomultiplier", &digitalMode},
    // Fluoroscopy
    KeyRow{"cmbFlPPSNext",          kClick,   "FlPPSNext"},
    KeyRow{"cmbFlContinuous",       kPress,   "FlContinuousToggle"},
    KeyRow{"cmbFlMAUp",             kRelease, "FlMAOneUp", nullptr, "FlMAUp"},
    KeyRow{"cmbFlMADown",           kRelease, "FlMAOneDown", nullptr, "FlMADown"},
    KeyRow{"cmdFlResetTime",        kRelease, "FlTimeReset"},
    KeyRow{"cmbToggleABS",          kRelease, "SetFlABS", &opposite<&State::m_FlABS>, "FlABSToggle"},
    KeyRow{"cmbFlHighDose",         kRelease, "FlHighDose", &off, "", &brightnessControlled},
    KeyRow{"cmbFlMag",              kRelease, "FlMagnification", &index},
    KeyRow{"cmbContrastUp",         kRelease, "FlContrastUp"},
    KeyRow{"cmbContrastDown",       kRelease, "FlContrastDown"},
    KeyRow{"cmbFlKVPTracking",      kRelease, "FlKVPToggleKVPTracking"},
    KeyRow{"cmbKVPTrackingUp",      kRelease, "FlKVPTrackingUp"},
    KeyRow{"cmbKVPTrackingDown",    kRelease, "FlKVPTrackingDown"},
    // Configuration
    KeyRow{"cmbDfltConfig",         kClick,   "DefaultConfiguration"},
    KeyRow{"cmbConfTubeUp",         kRelease, "ConfTubeUp"},
    KeyRow{"cmbConfTubeDown",       kRelease, "ConfTubeDown"},
    KeyRow{"cmbConfWMUp",           kRelease, "ConfWorkingModeUp"},
    KeyRow{"cmbConfWMDown",         kRelease, "ConfWorkingModeDown"},
    KeyRow{"cmbConfAECUp",          kRelease, "ConfICUp"},
    KeyRow{"cmbConfAECDown",        kRelease, "ConfICDown"},
    KeyRow{"cmbKVTrackingUp",       kRelease, "ConfKVTrackingUp"},
    KeyRow{"cmbKVTrackingDown",     kRelease, "ConfKVTrackingDown"},
    // Calibration
    KeyRow{"cmbAutocalibration",    kRelease, "ToggleAutocalibrationFeature"},
    KeyRow{"cmbKVPCalUp",           kPress,   "KVPOneUp", nullptr, "", &kvpMovable},
    KeyRow{"cmbKVPCalUp",           kRelease, "KVPUpMouseUp"},
    KeyRow{"cmbKVPCalDown",         kPress,   "KVPOneDown", nullptr, "", &kvpMovable},
    KeyRow{"cmbKVPCalDown",         kRelease, "KVPUpMouseUp"},
    KeyRow{"cmbSaveCalValue",       kClick,   "CalibrationValueRead"},
    KeyRow{"cmbStoreCalValue",      kRelease, "CalibrationValueStore"},
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

PanelKeys::PanelKeys(ModelContext& context, PanelPages& pages, PanelFrame& frame)
    : context_(context), state_(context.state), panel_(context.panel), pages_(pages), frame_(frame) {
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
                if (row.condition != nullptr && !row.condition(context_)) {
                    return;
                }
                if (!row.plain.empty() && !context_.link.Handshaking) {
                    context_.operations.call(row.plain);
                } else if (row.argument != nullptr) {
                    context_.operations.call(row.operation, {row.argument(state_, *key)});
                } else {
                    context_.operations.call(row.operation);
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
        context_.operations.call("FlAlarmReset");
    };
    for (Control* key : panel_.all("cmbWS")) {
        key->on.release = [this, key] {
            context_.operations.call("Workstation", {number(state_, *key)});
            for (Control* each : panel_.all("cmbWS")) {
                each->setEnabled(true);
            }
        };
    }
}

void PanelKeys::toggleConfiguration() {
    if (context_.link.m_OperatingPhase == Phase::NormalOperation) {
        context_.commands.send("Configuration", {true});
    } else if (context_.link.m_OperatingPhase == Phase::Configuration) {
        context_.commands.send("Configuration", {false});
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
    context_.operations.call("calibration", {!leaving, false});
}

void PanelKeys::toggleFocus() {
    if (!context_.link.Handshaking) {
        context_.operations.call("ToggleFocus");
    } else if (state_.m_SmallFocus == 1) {
        context_.operations.call("SetFocalSpot", {1});
    } else if (state_.m_LargeFocus == 1) {
        context_.operations.call("SetFocalSpot", {0});
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
        context_.operations.call("CalibrationSetFocus");
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
        context_.operations.call("ReadExposureCounter", {comboReadExposureCounter.listIndex()});
    };
    panel_["cmbResetExposureCounter"].on.release = [this] { resetExposureCounter(); };
    Control& sldCalValue = panel_["sldCalValue"];
    sldCalValue.on.change = [&sldCalValue] { sldCalValue.setToolTip(decimalText(sldCalValue.value())); };
}

void PanelKeys::resetExposureCounter() {
    const std::int32_t counter = panel_["comboResetExposureCounter"].listIndex();
    state_.m_ExposureCounterResetPending = true;
    context_.operations.call("ResetExposureCounter", {counter});
    // The report that answers ends the flashing of the key.
    context_.operations.call("ReadExposureCounter", {counter});
}

void PanelKeys::wireStatusStrip() {
    Control& cmbResetError = panel_["cmbResetError"];
    cmbResetError.on.release = [this, &cmbResetError] {
        cmbResetError.setCaption("Reset Error");
        cmbResetError.setBackColour(kNormalColour);
        context_.operations.call("ResetError");
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
