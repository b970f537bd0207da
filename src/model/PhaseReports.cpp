#include "model/PhaseReports.h"

#include <array>
#include <cmath>

#include "base/Fault.h"
#include "base/Numbers.h"
#include "base/Text.h"
#include "link/GeneratorLost.h"
#include "link/OutboundTable.h"
#include "model/CalibrationSlider.h"
#include "model/Commands.h"
#include "model/Service.h"
#include "model/WarningLamps.h"

namespace quillon {

namespace {

struct SignalRow {
    std::string_view handler;
    Signal<bool> LinkEvents::*event;
};
// clang-format off
constexpr std::array kSignals{
    SignalRow{"fmessPrepSignalStatus",         &LinkEvents::PrepSignalStatusChange},
    SignalRow{"fmessPrepSpotFilmSignalStatus", &LinkEvents::PrepSpotFilmSignalStatusChange},
    SignalRow{"fmessReadyStatus",              &LinkEvents::ReadyStatusChange},
    SignalRow{"fmessXRaySignalStatus",         &LinkEvents::XRaySignalStatusChange},
    SignalRow{"fmessXRayStatus",               &LinkEvents::XRayStatusChange},
    SignalRow{"fmessFlExposureStatus",         &LinkEvents::FlExposureStatusChange},
};
// clang-format on

// Texts that a restart of the generator empties, besides the values on the pages. The tube's heat stays.
constexpr std::array<PanelControl, 3> kReportedTexts{"lblWarning", "txtInfo", "txtWorkingMode"};

constexpr std::int16_t kNoDescriptionType = 2;

/// Every report of such a phase counts as new, so that the operator is told of the error again.
bool isError(Phase phase) {
    return phase == Phase::Error || phase == Phase::AutocalError;
}

/// Ready for use, or on the way there.
bool endsService(Phase phase) {
    return phase == Phase::Initialization || phase == Phase::NormalOperation;
}

} // namespace

PhaseReports::PhaseReports(ModelContext& context, Service& service)
    : context_(context), service_(service), link_(context.link), state_(context.state), panel_(context.panel),
      softwareSync_(containsNoCase(context.commandLine, "-swsync")) {
    context_.decoder.bind("fmessGeneratorPhase",
                          [this](std::string_view value) { fmessGeneratorPhase(value); });
    context_.decoder.bind("fmessHU", [this](std::string_view value) { fmessHU(value); });
    bindSignals();
    context_.operations.addMember("HURemaining", state_.HURemaining);
    context_.operations.addReadOnly("Phase", [this] { return link_.m_Phase; });
}

void PhaseReports::bindSignals() {
    for (const SignalRow& row : kSignals) {
        context_.decoder.bind(row.handler, [this, event = row.event](std::string_view value) {
            if (isNumeric(value) && link_.EventEnabled) {
                (context_.events.*event).raise(toBoolean(value));
            }
        });
    }
    context_.decoder.bind("fmessExposureEnd", [this](std::string_view value) {
        if (isNumeric(value) && link_.EventEnabled) {
            context_.events.ExposureEnd.raise(toInt16(value));
        }
    });
}

void PhaseReports::fmessGeneratorPhase(std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    const Phase phase{toInt32(std::floor(toDouble(value)))};
    const Phase old = link_.m_Phase;
    if (phase == old && !isError(phase)) {
        if (isKnown(phase)) {
            link_.m_NoAnswerCount = 0;
            Control& shown = panel_["txtPHASE"];
            shown.setCaption(std::string(shown.caption())); // written again, so that it no longer looks old
            repeated.raise();
        }
    } else {
        if (isKnown(phase)) {
            enter(phase, old);
        }
        link_.m_Phase = phase;
        link_.m_PhaseMask = maskOf(phase);
        if (phase == Phase::NormalOperation && old == Phase::Initialization) {
            // Only now, as the request is not allowed in the phase that ends here.
            context_.commands.send(command("MaxDensityRequest"));
        }
        if (link_.EventEnabled) {
            context_.events.GeneratorPhaseChange.raise(phase);
        }
    }
    if (link_.m_NoAnswerCount >= kPollsUntilLost) {
        context_.events.GeneratorERROR.raise(0, {}, kNoDescriptionType);
    }
    updateSoftwareExposureKey();
}

void PhaseReports::enter(Phase phase, Phase old) {
    link_.m_NoAnswerCount = 0;
    const bool refused = phase == Phase::Calibration || phase == Phase::Configuration;
    if (endsService(phase) || (refused && service_.confirming())) {
        service_.abandonAnswer(); // sent again in calibration, it would begin another autocalibration
    } else if (phase != Phase::ConfirmDismiss) {
        service_.withdrawQuestion();
    }
    if (endsService(phase) || phase == Phase::Configuration) {
        // The place in the calibration list is another one when calibration is entered again.
        state_.m_CalibrationType = -1;
        state_.m_CalibrationParameter = 0;
        setCalibrationRange(state_, panel_["sldCalValue"], state_.m_CalibrationRange);
    }
    switch (phase) {
    case Phase::Initialization:
        enterInitialization();
        break;
    case Phase::NormalOperation:
        enterNormalOperation(old);
        break;
    case Phase::Calibration:
        enterCalibration(old);
        break;
    case Phase::Error:
        context_.poll.run();
        context_.send.SendMessage("ER?", kAllPhases);
        break;
    case Phase::Configuration:
        enterConfiguration();
        break;
    case Phase::Autocalibration:
        link_.m_OperatingPhase = Phase::Autocalibration;
        context_.routines.setServicePage(1);
        context_.routines.ShowServiceMenu();
        context_.poll.run();
        if (state_.m_CalSliderInAutocal) {
            panel_["sldCalValue"].setVisible(true);
        }
        break;
    case Phase::ConfirmDismiss:
        enterConfirmDismiss();
        break;
    case Phase::AutocalError:
    case Phase::AutocalOk:
        panel_["txtInfo"].setCaption("");
        break;
    case Phase::Unheard:
    case Phase::None:
    case Phase::Preparation:
    case Phase::RadExposure:
    case Phase::FluoroExposure:
    case Phase::TubeTooHot:
        break;
    }
    panel_["txtPHASE"].setCaption(rowOf(phase).caption);
}

void PhaseReports::enterInitialization() {
    state_.startAnew();
    link_.m_Phase = Phase::Unheard;
    link_.m_OperatingPhase = Phase::Unheard;
    for (const WarningLamp& lamp : kWarningLamps) {
        panel_[lamp.label].setVisible(false);
    }
    for (const PanelControl label : kReportedTexts) {
        panel_[label].setCaption("");
    }
    panel_["cmbResetError"].setCaption("Reset Error");
    panel_["cmbConfiguration"].setCaption("ON");
    context_.routines.resetPages();
    context_.routines.ResetPanelKeys();
    context_.poll.stop();
    context_.routines.ShowMainMenu();
    for (const auto& control : panel_.controls()) {
        control->forgetReport();
    }
    link_.m_OperatingPhase = Phase::Initialization;
}

void PhaseReports::enterNormalOperation(Phase old) {
    link_.m_OperatingPhase = Phase::NormalOperation;
    context_.poll.run();
    if (old == Phase::Calibration) {
        panel_["cmbCalibration"].setBackColour(kNormalColour);
        for (std::string* shown :
             {&state_.m_KVPDisplay, &state_.m_MADisplay, &state_.m_MSDisplay, &state_.m_MASDisplay}) {
            shown->clear();
        }
        state_.m_SmallFocus = -1;
        state_.m_LargeFocus = -1;
        context_.routines.EnableRADKeys(true);
    } else if (old == Phase::Configuration) {
        panel_["cmbConfiguration"].setBackColour(kNormalColour);
        context_.routines.clearConfigurationPage();
    }
}

void PhaseReports::enterCalibration(Phase old) {
    link_.m_OperatingPhase = Phase::Calibration;
    panel_["cmbCalibration"].setBackColour(kActiveColour);
    context_.routines.setServicePage(1);
    context_.routines.ShowServiceMenu();
    if (old != Phase::Preparation && old != Phase::ConfirmDismiss) {
        context_.routines.EnableCalibrationKeys(true);
        context_.routines.EnableRADKeys(true);
    }
    panel_["txtInfo"].setCaption("");
    if (state_.m_CalSliderInAutocal && old == Phase::Autocalibration) {
        state_.m_CalSliderInAutocal = false;
        panel_["sldCalValue"].setVisible(false);
    }
}

void PhaseReports::enterConfiguration() {
    link_.m_OperatingPhase = Phase::Configuration;
    context_.routines.PrepareConfigurationPage();
    panel_["cmbConfiguration"].setBackColour(kActiveColour);
    panel_["cmbConfiguration"].setCaption("OFF");
    context_.routines.ShowServiceMenu();
    context_.routines.SelectServicePage(0);
    // Before anything else, so that what the page sends next is allowed.
    link_.m_PhaseMask = maskOf(Phase::Configuration);
}

void PhaseReports::enterConfirmDismiss() {
    panel_["cmbToggleFocusConfirm"].setVisible(false);
    panel_["cmbToggleFocusDismiss"].setVisible(false);
    context_.events.AutocalConfirmDismiss.raise();
    for (const PanelControl key : {PanelControl("cmbAutocalConfirm"), PanelControl("cmbAutocalDismiss")}) {
        panel_[key].setBackColour(kActiveColour);
        panel_[key].setVisible(true);
    }
    if (!context_.fromGUI) {
        panel_["fraResetExposureCounter"].setVisible(false);
    }
}

void PhaseReports::repeatQuestion() {
    if (link_.m_Phase == Phase::ConfirmDismiss) {
        service_.abandonAnswer();
        enterConfirmDismiss();
    }
}

void PhaseReports::updateSoftwareExposureKey() {
    if (softwareSync_) {
        panel_["cmdSWExposure"].setVisible(link_.m_Phase == Phase::Preparation &&
                                           (state_.m_WorkingMode == 1 || state_.m_WorkingMode == 2) &&
                                           !state_.m_HardwareSync);
    }
}

void PhaseReports::fmessHU(std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    const std::int16_t heat = toInt16(value);
    state_.m_HU = state_.HURemaining ? toInt16(100.0 - heat) : heat;
    panel_["txtHU"].setCaption("HU " + decimalText(state_.m_HU) + "%");
    if (link_.EventEnabled) {
        context_.events.HUUpdate.raise(state_.m_HU);
    }
}

} // namespace quillon
