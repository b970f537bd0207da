#include "console/PhaseReactions.h"

namespace quillon {

namespace {

constexpr int kLinkControlDelay = 500; // ms from the report to the link control's panel

/// Behind these normal operation finds a mode's working area on the screen.
constexpr Phases kOfAMode{Phase::Calibration,    Phase::Configuration, Phase::Autocalibration,
                          Phase::ConfirmDismiss, Phase::AutocalError,  Phase::AutocalOk};

} // namespace

PhaseReactions::PhaseReactions(ConsoleContext& context, ServiceSession& session, StartOfService& start,
                               AutocalibrationMode& autocalibration)
    : context_(context), session_(session), screen_(context), state_(context.state),
      console_(context.console), start_(start), autocalibration_(autocalibration),
      cmdPrep_(context.console["cmdPrep"]), cmdExposure_(context.console["cmdExposure"]),
      tmrDelay_(context.console.timer("tmrDelay")) {
    tmrDelay_.setTick([this] { session_.showLinkControl(); });
    connectSignals();
}

void PhaseReactions::connectSignals() {
    LinkEvents& events = context_.link.events();
    events.GeneratorPhaseChange.connect([this](Phase phase) { phaseChange(phase); });
    events.ReadyStatusChange.connect(
        [this](bool ready) { cmdPrep_.setBackColour(ready ? kPreparationColour : state_.ButtonOffColor); });
    events.XRayStatusChange.connect([this](bool lit) { lightExposure(lit); });
    events.FlExposureStatusChange.connect([this](bool lit) { lightExposure(lit); });
    events.AutocalConfirmDismiss.connect([this] { askToConfirm(); });
    events.Beep.connect([this](const std::string&) { context_.desktop.beep(); });
    events.KVPChangeValue.connect([this](const std::string& value) { state_.m_LastKVPDisplay = value; });
    events.MASChangeDisplay.connect([this](const std::string&) { session_.at(Moment::ValueReported); });
    events.PostDisplay.connect([this](const std::string& mA, const std::string& ms, const std::string& mAs) {
        if (session_.lent()) {
            screen_.show({"fraActualExposureParameters"});
            console_["lblActKVP"].setCaption(state_.m_LastKVPDisplay);
            console_["lblActMA"].setCaption(mA);
            console_["lblActMS"].setCaption(ms);
            console_["lblActMAS"].setCaption(mAs);
        }
    });
}

void PhaseReactions::phaseChange(Phase phase) {
    const bool prompted = console_["lblHelp"].visible();
    const bool wasLost = session_.isLost();
    session_.reported(phase);
    if (phase > Phase::Initialization) {
        start_.heard();
    }
    if (autocalibration_.asks() && phase != Phase::ConfirmDismiss) {
        // It has taken its question back, and may go anywhere from here.
        screen_.clearPrompt();
        if (phase == Phase::Calibration || phase == Phase::Autocalibration) {
            session_.at(Moment::QuestionWithdrawn);
        }
    }
    react(phase);
    if (phase == Phase::Initialization && prompted) {
        console_["lblHelp"].setVisible(true); // whoever was told what is under way is told what has become of it
    }
    if (wasLost && phase == Phase::Autocalibration && session_.idle()) {
        session_.setExposures(Exposures::Asked); // as before the loss
    }
    session_.settled(phase);
}

void PhaseReactions::react(Phase phase) {
    const ConsoleTexts& texts = context_.texts;
    switch (phase) {
    case Phase::Initialization:
        initialization();
        break;
    case Phase::NormalOperation:
        normalOperation();
        break;
    case Phase::Preparation:
        preparation();
        break;
    case Phase::RadExposure:
    case Phase::FluoroExposure:
        lightExposure(true);
        break;
    case Phase::Calibration:
        calibration();
        break;
    case Phase::Error:
        session_.at(Moment::ErrorReported);
        break;
    case Phase::Configuration:
        configuration();
        break;
    case Phase::Autocalibration:
        autocalibration();
        break;
    case Phase::ConfirmDismiss:
        if ((session_.is(Run::EnteringAutocalibration) || session_.is(Run::HandingOver)) &&
            (console_["fraTorvaneSerial"].visible() || tmrDelay_.running())) {
            promptToAnswer(); // any other run has words of its own, and what stands behind it says these
        }
        autocalibration_.questionAsked();
        break;
    case Phase::AutocalError:
        result(Role::Alarm, texts.sAutocalERROR);
        break;
    case Phase::AutocalOk:
        result(Role::Good, texts.sAutocalOK);
        break;
    case Phase::TubeTooHot:
    case Phase::None:
    case Phase::Unheard:
        break;
    }
}

void PhaseReactions::lightPreparation(bool lit) {
    cmdPrep_.setBackColour(lit ? kPreparationColour : state_.ButtonOffColor);
    cmdPrep_.setTag(lit ? "ON" : "OFF");
}

void PhaseReactions::lightExposure(bool lit) {
    cmdExposure_.setBackColour(lit ? kExposureColour : state_.ButtonOffColor);
    cmdExposure_.setTag(lit ? "ON" : "OFF");
}

void PhaseReactions::initialization() {
    const ConsoleTexts& texts = context_.texts;
    screen_.writePrompt(Role::Prompt, std::string(texts.sGenerator)
                                          .append(kLineBreak)
                                          .append(texts.sPoweringUp)
                                          .append(kLineBreak)
                                          .append(texts.sPleaseWait));
    lightPreparation(false);
    lightExposure(false);
    context_.link.setVisible(false);
    session_.at(Moment::PoweringUp);
    screen_.hide({"fraTorvaneSerial", "fraExposureCounters"});
    screen_.hide(Key::GoToUserMode);
    screen_.show({"imgQuillonConsole", "lblQuillonConsole"});
    screen_.show(kModeKeys.without(Key::ManualCalibration));
    state_.m_PowerUpSeen = true;
}

void PhaseReactions::normalOperation() {
    const bool lent = session_.lent();
    const bool movingToUserMode = session_.is(Run::Lending);
    const Phase before = session_.lastPhase();
    // The refresh writes the phase of before; what follows still needs to see it.
    if (before == Phase::Initialization || before == Phase::Error) {
        start_.refreshAfterPowerUp();
    } else {
        start_.refreshIfOwed();
        if (session_.isFree() && !start_.refreshing() && !lent) {
            session_.at(Moment::ReadyAndIdle);
        }
    }
    session_.setLastPhase(before);
    if (lent && session_.mode() != Phase::Calibration) {
        session_.at(Moment::ReadyAndIdle);
    } else if (lent && !movingToUserMode) {
        session_.at(Moment::ReadyForTheUsers);
        screen_.show({"fraActualExposureParameters"});
        screen_.clearActualExposure();
    }
    if (cmdPrep_.tag() == "ON") {
        lightPreparation(false);
    }
    if (cmdExposure_.tag() == "ON") {
        lightExposure(false);
    }
    if (kOfAMode.has(before) || isServiceMode(session_.mode())) {
        modeIsOver();
    }
    session_.setMode(Phase::NormalOperation);
    session_.at(movingToUserMode ? Moment::ReadyBeforeTheUsersCame : Moment::Ready);
}

void PhaseReactions::modeIsOver() {
    if (!session_.lent()) {
        context_.link.setVisible(false);
        session_.at(Moment::ModeIsOver);
        screen_.hide({"fraTorvaneSerial"});
        screen_.hide(Key::GoToUserMode);
        screen_.show(kModeKeys);
        session_.showPositionerKey(true);
    }
    screen_.show({"lblQuillonConsole"});
    if (state_.GeneratorVisible) {
        screen_.show({"imgQuillonConsole"});
    }
}

void PhaseReactions::preparation() {
    if (screen_.errorOnShow()) {
        console_.timer("tmrError").stop();
        screen_.setError("");
        screen_.off({"cmbResetError"});
    }
    if (session_.lastPhase() == Phase::NormalOperation) {
        screen_.hide({"fraActualExposureParameters"});
        if (session_.lent()) {
            screen_.clearActualExposure();
        }
    }
    lightPreparation(true);
    session_.at(Moment::Preparation);
}

void PhaseReactions::calibration() {
    const bool entering = session_.is(Run::EnteringAutocalibration);
    const bool leaving = session_.is(Run::LeavingAutocalibration);
    if (!entering) {
        lightPreparation(false);
        if (!leaving && !session_.is(Run::EnteringCalibration)) {
            session_.at(Moment::CalibrationIsFree);
            screen_.hide({"fraActualExposureParameters", "fraExposureCounters"});
        }
    }
    if (session_.mode() != Phase::Autocalibration || !console_["fraTorvaneSerial"].visible()) {
        hideRestPicture();
        bringLinkControl();
    }
    if (session_.mode() == Phase::NormalOperation) {
        screen_.hide({"fraActualExposureParameters"});
    }
    session_.setMode(Phase::Calibration);
    session_.at(Moment::InCalibration);
}

void PhaseReactions::configuration() {
    start_.greetNobody();
    session_.at(Moment::InConfiguration);
    screen_.show(kModeKeys);
    screen_.hide(Key::GoToUserMode);
    screen_.hide({"lblErrorDescription", "fraActualExposureParameters"});
    hideRestPicture();
    bringLinkControl();
    session_.setMode(Phase::Configuration);
}

void PhaseReactions::autocalibration() {
    const bool begins = session_.mode() == Phase::Calibration;
    if (begins) {
        autocalibration_.modeBegins();
    }
    if (begins || session_.lastPhase() == Phase::Initialization) {
        hideRestPicture();
        if (!console_["fraTorvaneSerial"].visible() && !tmrDelay_.running()) {
            bringLinkControl(); // the line was lost, or the entry given up, before it came
        }
    }
    session_.setMode(Phase::Autocalibration);
    session_.at(Moment::InAutocalibration);
    autocalibration_.modeReported(false);
}

void PhaseReactions::result(Role rank, const std::string& words) {
    if (session_.mode() == Phase::Autocalibration) {
        autocalibration_.modeReported(true);
    }
    screen_.prompt(rank, std::string(context_.texts.sAutocal).append(kLineBreak).append(words));
}

void PhaseReactions::askToConfirm() {
    autocalibration_.questionRaised();
    session_.at(Moment::QuestionAsked);
    if (!console_["fraTorvaneSerial"].visible() && session_.mode() == Phase::Calibration &&
        !tmrDelay_.running() && !session_.isLeaving()) {
        // The entry was given up before the generator asked; its question must be in reach all the same.
        promptToAnswer();
        session_.showLinkControl();
    }
}

void PhaseReactions::promptToAnswer() {
    const ConsoleTexts& texts = context_.texts;
    screen_.prompt(Role::Prompt,
                   std::string(texts.sPressConfirm).append(kLineBreak).append(texts.sPressDismiss));
}

void PhaseReactions::hideRestPicture() {
    screen_.hide({"lblQuillonConsole", "imgQuillonConsole"});
}

void PhaseReactions::bringLinkControl() {
    tmrDelay_.start(kLinkControlDelay);
}

} // namespace quillon
