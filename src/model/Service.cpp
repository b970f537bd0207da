#include "model/Service.h"

#include <array>
#include <utility>

#include "base/Numbers.h"
#include "link/OutboundTable.h"
#include "model/CalibrationSlider.h"
#include "model/Commands.h"
#include "model/ReportedSwitches.h"

namespace quillon {

namespace {

constexpr int kFirstStep = 20;
constexpr int kConfirmWait = 4000;
constexpr int kConfirmAgain = 2000;
constexpr std::int32_t kConfirmWaits = 5;
constexpr int kDismissWait = 1000;

// clang-format off
constexpr std::array<std::string_view, 8> kWorkingModes{
    "Direct",
    "Bucky 1",
    "Bucky 2",
    "STD Tomo",
    "STD RF",
    "DSI",
    "CINE",
    "DSA",
};
// clang-format on
constexpr std::int16_t kFirstFluoroMode = 3;

/// A number that a message reports and a label shows.
struct LabelRow {
    std::string_view handler;
    PanelControl label;
    bool configurationOnly;
};

// clang-format off
constexpr std::array kLabels{
    LabelRow{"fmessConfTube",             "txtCfgTube",        true},
    LabelRow{"fmessConfIC",               "txtCfgAECIC",       true},
    LabelRow{"fmessWorkstationInterlock", "txtCfgWSInterlock", false},
    LabelRow{"fmessWorkstationFailSafe",  "txtCfgFailSafe",    false},
};
// clang-format on

} // namespace

Service::Service(ModelContext& context)
    : context_(context), link_(context.link), state_(context.state), txtInfo_(context.panel["txtInfo"]),
      txtWorkingMode_(context.panel["txtWorkingMode"]),
      txtCfgWorkingMode_(context.panel["txtCfgWorkingMode"]),
      txtCfgSyncType_(context.panel["txtCfgSyncType"]), txtCalValue_(context.panel["txtCalValue"]),
      sldCalValue_(context.panel["sldCalValue"]), cmbAutocalibration_(context.panel["cmbAutocalibration"]),
      cmbAutocalConfirm_(context.panel["cmbAutocalConfirm"]),
      cmbAutocalDismiss_(context.panel["cmbAutocalDismiss"]), tmrConfirm_(context.panel.timer("tmrConfirm")),
      tmrDismiss_(context.panel.timer("tmrDismiss")) {
    struct Row {
        std::string_view handler;
        void (Service::*work)(std::string_view);
    };
    constexpr std::array kHandlers{
        Row{"fmessConfWM", &Service::fmessConfWM},
        Row{"fmessWorkstation", &Service::fmessWorkstation},
        Row{"fmessWorkstationDetectorSType", &Service::fmessWorkstationDetectorSType},
        Row{"fmessCalibrationValue", &Service::fmessCalibrationValue},
        Row{"fmessAutocalibration", &Service::fmessAutocalibration},
        Row{"fmessAutocalRetry", &Service::fmessAutocalRetry},
    };
    for (const Row& row : kHandlers) {
        bindNumber(row.handler, [this, work = row.work](std::string_view value) { (this->*work)(value); });
    }
    for (const LabelRow& row : kLabels) {
        Control& label = context_.panel[row.label];
        bindNumber(row.handler, [this, &row, &label](std::string_view value) {
            if (!row.configurationOnly || link_.m_OperatingPhase == Phase::Configuration) {
                label.setCaption(decimalText(toDouble(value)));
            }
        });
    }
    addOperations();
    tmrConfirm_.setTick([this] { confirmTick(); });
    tmrDismiss_.setTick([this] { dismissTick(); });
}

void Service::bindNumber(std::string_view handler, MessageDecoder::Handler work) {
    context_.decoder.bind(handler, [work = std::move(work)](std::string_view value) {
        if (isNumeric(value)) {
            work(value);
        }
    });
}

void Service::addOperations() {
    Operations& operations = context_.operations;
    operations.add("calibration", [this](bool Enable, bool WithACK) { calibration(Enable, WithACK); },
                   {false});
    operations.add("ToggleCalibrationFeature", [this] { ToggleCalibrationFeature(); });
    operations.add("ToggleAutocalibrationFeature", [this] { ToggleAutocalibrationFeature(); });
    operations.addWriteOnly("CalibrationDataSize",
                            [this](std::int16_t Bits) { setCalibrationDataSize(Bits); });
}

void Service::calibration(bool Enable, bool WithACK) {
    context_.commands.send(command("calibration"), Enable, WithACK);
    if (Enable) {
        context_.routines.ShowServiceMenu();
        context_.routines.SelectServicePage(1);
    }
}

void Service::ToggleCalibrationFeature() {
    const bool enable = link_.m_OperatingPhase == Phase::NormalOperation;
    if (enable || link_.m_OperatingPhase == Phase::Calibration) {
        calibration(enable);
        context_.routines.EnableCalibrationKeys(enable);
    }
}

void Service::ToggleAutocalibrationFeature() {
    txtInfo_.setCaption("");
    if (link_.m_OperatingPhase != Phase::Calibration && link_.m_OperatingPhase != Phase::Autocalibration) {
        return;
    }
    if (state_.m_AutocalState == 0) {
        state_.m_AutocalState = 1;
        context_.commands.send(command("Autocalibration"), true);
        cmbAutocalConfirm_.setEnabled(true);
        cmbAutocalDismiss_.setEnabled(true);
        if (context_.fromGUI) {
            context_.routines.PrepareAutocalibrationPage();
        }
    } else if (state_.m_AutocalState == 4) {
        context_.commands.send(command("Autocalibration"), false);
    }
}

void Service::sendCalibrationValue() {
    context_.send.SendMessageWithDefaults("CV" + fixedDigits(sldCalValue_.value(), 4), phasesOf("CV"));
}

void Service::confirm() {
    beginAnswer(context_.events.AutocalibrationConfirm, tmrConfirm_, 0, 3);
}

void Service::dismiss() {
    beginAnswer(context_.events.AutocalibrationDismiss, tmrDismiss_, 2, 1);
}

void Service::setCalibrationDataSize(std::int16_t Bits) {
    if (Bits == 8 || Bits == 10 || Bits == 12) {
        state_.m_CalibrationRange = (1 << Bits) - 1;
        setCalibrationRange(state_, sldCalValue_, state_.m_CalibrationRange);
    }
}

void Service::fmessConfWM(std::string_view value) {
    const std::int16_t mode = toInt16(value);
    if (link_.EventEnabled) {
        context_.events.WorkingModeChange.raise(mode);
    }
    const bool known = mode >= 0 && mode < static_cast<std::int16_t>(kWorkingModes.size());
    const std::string_view caption =
        known ? kWorkingModes[static_cast<std::size_t>(mode)] : std::string_view{};
    if (link_.m_OperatingPhase == Phase::Configuration) {
        txtWorkingMode_.setCaption("");
        if (known) {
            txtCfgWorkingMode_.setCaption(caption);
        }
    } else if (known) {
        txtWorkingMode_.setCaption(caption);
        context_.routines.EnableFluoroKeys(mode >= kFirstFluoroMode);
    }
    if (mode < kFirstDigitalMode && state_.m_WorkingMode >= kFirstDigitalMode) {
        context_.routines.ClearDigitalAECKeys();
    }
    state_.m_WorkingMode = mode;
}

void Service::fmessWorkstation(std::string_view value) {
    const std::int16_t workstation = toInt16(value);
    if (workstation == state_.m_Workstation) {
        if (Control* key = context_.panel.find("cmbWS", workstation - 1)) {
            confirmState(*key);
        }
        return;
    }
    paintWorkstation(state_.m_Workstation, kNormalColour);
    state_.m_Workstation = workstation;
    if (link_.EventEnabled) {
        context_.events.WorkstationChange.raise(workstation);
    }
    paintWorkstation(workstation, kActiveColour);
}

void Service::paintWorkstation(std::int32_t workstation, Colour colour) {
    // 0 says that none is selected, and a generator may know more of them than there are keys.
    if (Control* key = context_.panel.find("cmbWS", workstation - 1)) {
        key->setBackColour(colour);
    }
}

void Service::fmessWorkstationDetectorSType(std::string_view value) {
    state_.m_HardwareSync = !toBoolean(value);
    txtCfgSyncType_.setCaption(state_.m_HardwareSync ? "HW" : "SW");
}

void Service::fmessCalibrationValue(std::string_view value) {
    txtCalValue_.setCaption(value);
    showCalibrationValue(state_, sldCalValue_, toInt32(value));
}

void Service::fmessAutocalibration(std::string_view value) {
    const bool on = toBoolean(value);
    cmbAutocalibration_.setBackColour(on ? kActiveColour : kNormalColour);
    state_.m_AutocalState = on ? 4 : 0;
    for (Control* key : {&cmbAutocalConfirm_, &cmbAutocalDismiss_}) {
        key->setEnabled(true);
        key->setVisible(false);
    }
    state_.m_AutocalAnswered = true;
    context_.events.AutocalibrationACK.raise(on);
}

void Service::fmessAutocalRetry(std::string_view value) {
    context_.events.AutocalRetry.raise(toBoolean(value));
}

void Service::hideAnswerKeys() {
    cmbAutocalConfirm_.setVisible(false);
    cmbAutocalDismiss_.setVisible(false);
}

void Service::withdrawQuestion() {
    if (!answering()) {
        hideAnswerKeys();
    }
}

void Service::abandonAnswer() {
    if (answering()) {
        tmrConfirm_.stop();
        tmrDismiss_.stop();
        link_.m_StatusUpdateActive = context_.poll.StatusUpdateEnable();
    }
    hideAnswerKeys();
    cmbAutocalibration_.setBackColour(kNormalColour);
    state_.m_AutocalState = 0;
    state_.m_AutocalAnswered = false;
    state_.m_ConfirmStep = 0;
    state_.m_DismissStep = 0;
}

void Service::beginAnswer(Signal<>& event, Timer& timer, std::int32_t confirmStep, std::int32_t dismissStep) {
    // The poll keeps away until the generator has taken the answer; an earlier one has nothing to send any
    // more.
    context_.poll.stop();
    link_.m_StatusUpdateActive = false;
    tmrConfirm_.stop();
    tmrDismiss_.stop();
    hideAnswerKeys();
    state_.m_AutocalAnswered = false;
    event.raise();
    state_.m_ConfirmStep = confirmStep;
    state_.m_DismissStep = dismissStep;
    timer.start(kFirstStep);
}

void Service::confirmTick() {
    if (state_.m_ConfirmStep == 0) {
        context_.commands.send(command("Autocalibration"), true);
        state_.m_AutocalState = 2;
        forgetKVP();
        state_.m_ConfirmStep = 1;
        tmrConfirm_.start(kConfirmWait);
    } else if (state_.m_ConfirmStep == 1) {
        if (state_.m_AutocalAnswered) {
            tmrConfirm_.stop();
            link_.m_StatusUpdateActive = true;
            state_.m_ConfirmStep = 2;
            state_.m_AutocalAnswered = false;
        } else if (++confirmWaits_ == kConfirmWaits) {
            state_.m_ConfirmStep = 0;
            tmrConfirm_.start(kConfirmAgain);
        }
    }
}

void Service::dismissTick() {
    if (state_.m_DismissStep == 1) {
        context_.commands.send(command("Autocalibration"), false);
        state_.m_AutocalState = 0;
        forgetKVP();
        state_.m_DismissStep = 2;
        tmrDismiss_.start(kDismissWait);
    } else if (state_.m_DismissStep == 2) {
        if (state_.m_AutocalAnswered) {
            calibration(false);
            state_.m_DismissStep = 3;
        }
    } else if (state_.m_DismissStep == 3) {
        cmbAutocalibration_.setBackColour(kNormalColour);
        context_.poll.run();
        tmrDismiss_.stop();
        link_.m_StatusUpdateActive = true;
    }
}

void Service::forgetKVP() {
    state_.m_KVPDisplay.clear();
    state_.m_KVP = 0;
}

} // namespace quillon
