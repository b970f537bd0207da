#include "panel/PanelPages.h"

#include <array>

#include "base/Numbers.h"

namespace quillon {

namespace {

using Name = PanelControl;

// clang-format off
constexpr std::array<Name, 14> kRadKeys{
    "cmbKVPUp", "cmbKVPDown", "cmbMAUp", "cmbMADown", "cmbMASUp", "cmbMASDown", "cmbMSUp", "cmbMSDown",
    "cmbToggleFocus", "comboReadExposureCounter", "cmbReadExposureCounter",
    "cmbDoseReset", "cmbDoseLastExposure", "cmbDoseAccumulated"};
constexpr std::array<Name, 6> kRadFields{
    "txtKVp", "txtMA", "txtMAS", "txtMS", "txtFocus", "txtExposureCounter"};
constexpr std::array<Name, 13> kFluoroKeys{
    "cmbFlPPSUp", "cmbFlPPSDown", "cmbFlKVPUp", "cmbFlKVPDown", "cmbToggleABS", "cmbFlHighDose",
    "cmbFlMAUp", "cmbFlMADown", "cmbContrastUp", "cmbContrastDown",
    "cmbFlKVPTracking", "cmbKVPTrackingUp", "cmbKVPTrackingDown"};
constexpr std::array<Name, 6> kFluoroFields{
    "txtFlPPS", "txtFlKVP", "txtFlMA", "txtFlTime", "txtFlContrast", "txtFlKVPTracking"};
constexpr std::array<Name, 8> kStationKeys{
    "cmbKVPCalUp", "cmbKVPCalDown", "cmbMASCalUp", "cmbMASCalDown",
    "cmbMSCalUp", "cmbMSCalDown", "cmbMACalUp", "cmbMACalDown"};
constexpr std::array<Name, 6> kCalibrationKeys{
    "cmbToggleFocusCal", "cmbCalFocusSet", "cmbStoreCalValue", "cmbCalValueUp", "cmbCalValueDown",
    "cmbAutocalibration"};
constexpr std::array<Name, 6> kCalibrationFields{
    "txtKVPCal", "txtMACal", "txtMASCal", "txtMSCal", "txtCalValue", "txtFocusCal"};
constexpr std::array<Name, 4> kConfirmPairs{
    "cmbAutocalConfirm", "cmbAutocalDismiss", "cmbToggleFocusConfirm", "cmbToggleFocusDismiss"};
constexpr std::array<Name, 2> kCounterReset{"comboResetExposureCounter", "cmbResetExposureCounter"};
constexpr std::array<Name, 5> kConfigurationFields{
    "txtCfgTube", "txtCfgWorkingMode", "txtCfgAECIC", "txtCfgKVTracking", "txtRAD_RF"};
constexpr std::array<Name, 3> kFieldKeys{"cmbAECFieldLeft", "cmbAECFieldCenter", "cmbAECFieldRight"};
// clang-format on

constexpr std::int16_t kCalibrationPage = 1; // of the service menu

/// The element of a pair of keys that lies on the configuration page.
constexpr int kConfigurationElement = 1;

bool isValueField(const Control& control) {
    return control.kind() == Kind::Label && control.name().starts_with("txt") &&
           control.container() != nullptr && control.container()->name() != "fraStatus";
}

} // namespace

PanelPages::PanelPages(PanelHost& panel, GeneratorState& state, const bool& fromGUI)
    : panel_(panel), state_(state), fromGUI_(fromGUI) {}

void PanelPages::enable(Names names, bool enabled) {
    for (const Name name : names) {
        panel_[name].setEnabled(enabled);
    }
}

void PanelPages::enableAll(PanelControl name, bool enabled) {
    for (Control* control : panel_.all(name)) {
        control->setEnabled(enabled);
    }
}

void PanelPages::paintAll(PanelControl name, Colour colour) {
    for (Control* control : panel_.all(name)) {
        control->setBackColour(colour);
    }
}

void PanelPages::show(Names names, bool visible) {
    for (const Name name : names) {
        panel_[name].setVisible(visible);
    }
}

void PanelPages::clear(Names names) {
    for (const Name name : names) {
        panel_[name].setCaption("");
    }
}

void PanelPages::hidePages() {
    for (const Name pages : {Name("fraMainMenuItem"), Name("fraServiceMenuItem")}) {
        for (Control* page : panel_.all(pages)) {
            page->setVisible(false);
        }
    }
    paintAll("cmbMainMenu", kNormalColour);
    paintAll("cmbServiceMenu", kNormalColour);
}

void PanelPages::ShowMainMenu() {
    panel_["fraServiceMenu"].setVisible(false);
    hidePages();
    panel_.at("fraMainMenuItem", m_MainPage).setVisible(true);
    panel_.at("cmbMainMenu", m_MainPage).setBackColour(kActiveColour);
    panel_["fraMainMenu"].setVisible(true);
    m_MainMenuShown = true;
}

void PanelPages::ShowServiceMenu() {
    panel_["fraMainMenu"].setVisible(false);
    hidePages();
    panel_.at("fraServiceMenuItem", m_ServicePage).setVisible(true);
    panel_.at("cmbServiceMenu", m_ServicePage).setBackColour(kActiveColour);
    panel_["fraServiceMenu"].setVisible(true);
    m_MainMenuShown = false;
}

void PanelPages::keepServicePage(std::int16_t page) {
    if (m_MainMenuShown || m_ServicePage != page) {
        m_ServicePage = page;
        ShowServiceMenu();
    }
    lockNavigation();
    if (page == kCalibrationPage) {
        hideModeKeys();
    }
}

void PanelPages::hideModeKeys() {
    panel_["cmbCalibration"].setVisible(false);
    panel_["cmbAutocalibration"].setVisible(false);
}

void PanelPages::giveUpOwnWays() {
    lockNavigation();
    hideModeKeys();
    panel_["cmbConfiguration"].setVisible(false);
}

void PanelPages::lockNavigation() {
    panel_["fraServiceMenu"].setEnabled(false);
    enableAll("cmbServiceMenu", false);
    panel_["cmbGotoMainMenu"].setEnabled(false);
}

void PanelPages::SelectMainPage(std::int16_t page) {
    panel_.at("cmbMainMenu", m_MainPage).setBackColour(kNormalColour);
    panel_.at("fraMainMenuItem", m_MainPage).setVisible(false);
    m_MainPage = page;
    panel_.at("cmbMainMenu", m_MainPage).setBackColour(kActiveColour);
    panel_.at("fraMainMenuItem", m_MainPage).setVisible(true);
}

void PanelPages::SelectServicePage(std::int16_t page) {
    panel_.at("cmbServiceMenu", m_ServicePage).setBackColour(kNormalColour);
    panel_.at("fraServiceMenuItem", m_ServicePage).setVisible(false);
    m_ServicePage = page;
    panel_.at("cmbServiceMenu", m_ServicePage).setBackColour(kActiveColour);
    panel_.at("fraServiceMenuItem", m_ServicePage).setVisible(true);
}

void PanelPages::resetPages() {
    m_MainPage = 0;
    m_ServicePage = 0;
    ShowMainMenu();
}

void PanelPages::ResetPanelKeys() {
    for (const auto& control : panel_.controls()) {
        if (control->kind() == Kind::TextBox) {
            control->setText("");
        } else if (control->kind() == Kind::Button) {
            control->setBackColour(kNormalColour);
        } else if (isValueField(*control)) {
            // An old value would look like a present one.
            control->setCaption("");
        }
    }
    panel_.at("cmbMainMenu", m_MainPage).setBackColour(kActiveColour);
    panel_.at("cmbServiceMenu", m_ServicePage).setBackColour(kActiveColour);
    panel_["cmbMinimize"].setBackColour(kActiveColour);
    state_.m_AutocalState = 0;
    state_.m_AutocalAnswered = false;
    state_.m_ConfirmStep = 0;
    state_.m_DismissStep = 0;
    state_.m_ExposureCounterResetPending = false;
    EnableCalibrationKeys(false);
    panel_["comboReadExposureCounter"].setListIndex(0);
    panel_["comboResetExposureCounter"].setListIndex(0);
}

void PanelPages::EnableRADKeys(bool enabled) {
    enable(kRadKeys, enabled);
    clear(kRadFields);
}

void PanelPages::EnableFluoroKeys(bool enabled) {
    enable(kFluoroKeys, enabled);
    enableAll("cmbFlMag", enabled);
    if (!enabled) {
        clear(kFluoroFields);
    }
}

void PanelPages::EnableCalibrationKeys(bool enabled) {
    Control& slider = panel_["sldCalValue"];
    slider.setValue(0);
    slider.setToolTip(decimalText(slider.value()));
    enable(kStationKeys, enabled);
    enable(kCalibrationKeys, enabled);
    // The autocalibration of a parameter has hidden one of the two keys of the focus.
    panel_["cmbCalFocusSet"].setVisible(panel_["cmbToggleFocusCal"].visible());
    show(kConfirmPairs, false);
    if (!enabled) {
        clear(kCalibrationFields);
    }
    enable(kCounterReset, enabled);
    if (!fromGUI_) {
        panel_["fraResetExposureCounter"].setVisible(false);
        return;
    }
    handNavigationOver();
}

void PanelPages::handNavigationOver() {
    hideModeKeys();
    lockNavigation();
    panel_["fraCalValue"].setEnabled(true);
    panel_["fraResetExposureCounter"].setEnabled(true);
    enableAll("cmbWS", false);
    panel_["cmbMinimize"].setVisible(false);
    panel_["cmbResetError"].setVisible(false);
}

void PanelPages::PrepareConfigurationPage() {
    if (!fromGUI_) {
        return;
    }
    panel_["cmbConfiguration"].setVisible(false);
    enableAll("cmbWS", true);
    lockNavigation();
    panel_["cmbResetError"].setVisible(false);
}

void PanelPages::PrepareAutocalibrationPage() {
    panel_["fraResetExposureCounter"].setVisible(false);
    const bool station = state_.m_CalibrationType == 0;
    enable(kStationKeys, !station);
    panel_["cmbToggleFocusCal"].setEnabled(!station);
    panel_["txtFocusCal"].setVisible(station);
    panel_["lblFocusCal"].setVisible(station);
    if (station) {
        panel_["cmbCalFocusSet"].setEnabled(false);
        panel_["fraCalValue"].setEnabled(false);
        panel_["cmbToggleFocusConfirm"].setVisible(true);
        panel_["cmbToggleFocusDismiss"].setVisible(true);
    } else {
        panel_["cmbCalFocusSet"].setVisible(false);
    }
    panel_["fraResetExposureCounter"].setEnabled(false);
    enable(kCounterReset, false);
    panel_["txtInfo"].setCaption("");
    panel_["cmbGotoMainMenu"].setEnabled(false);
    enableAll("cmbServiceMenu", false);
    enableAll("cmbWS", false);
}

void PanelPages::ClearDigitalAECKeys() {
    state_.m_Photomultiplier = false;
    state_.m_DigitalAEC = false;
    panel_["cmbPhotomultiplier"].setBackColour(kNormalColour);
    panel_["cmbDigitalAEC"].setBackColour(kNormalColour);
    paintAll("cmbDAECDensity", kNormalColour);
}

void PanelPages::clearConfigurationPage() {
    clear(kConfigurationFields);
    for (const Name field : kConfigurationFields) {
        panel_[field].forgetReport();
    }
    for (const Name name : kFieldKeys) {
        Control& key = panel_.at(name, kConfigurationElement);
        key.setBackColour(kNormalColour);
        key.forgetReport();
    }
}

void PanelPages::showTechniqueKeys(bool shown) {
    for (Control* key : panel_.all("cmbTM")) {
        key->setVisible(shown);
    }
    panel_["lblWarning"].setVisible(shown);
}

void PanelPages::setUserMode(bool on) {
    if (on) {
        m_MainPage = 0;
        ShowMainMenu();
        showTechniqueKeys(false);
    } else {
        if (state_.m_TechniqueMode != 4) {
            showTechniqueKeys(true);
        }
        ShowServiceMenu();
    }
    panel_["fraReadExposureCounter"].setVisible(!on);
    panel_["fraDosemeter"].setVisible(!on);
    panel_["cmbGotoServiceMenu"].setEnabled(!on);
    panel_.at("cmbMainMenu", 2).setEnabled(!on);
}

} // namespace quillon
