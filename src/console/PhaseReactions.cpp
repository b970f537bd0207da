#include "console/PhaseReactions.h"

namespace quillon {

namespace {

using namespace keys;

constexpr Effects kPoweringUp{.off = modes | F};
constexpr Effects kReadyForTheUsers{.on = F, .active = U};
constexpr Effects kReadyBeforeTheUsersCame{.prompt = Prompt::Cleared};
constexpr Effects kModeIsOver{.off = F};
constexpr Effects kPreparation{.off = modes | U | X, .poll = Poll::Resumed};
constexpr Effects kInCalibration{.atRest = U, .caption = Caption::Exit};
constexpr Effects kCalibrationIsFree{.on = M | U | X | F, .off = R, .atRest = R | A | U, .active = M};
constexpr Effects kInConfiguration{.on = F | C | U,
                                   .off = M | A | R,
                                   .atRest = M | A | R | U,
                                   .active = C,
                                   .prompt = Prompt::Cleared,
                                   .caption = Caption::Exit};
constexpr Effects kInAutocalibration{.caption = Caption::Exit};
constexpr Effects kQuestionAsked{.on = F};

constexpr int kLinkControlDelay = 500; // ms from the report to the link control's panel

} // namespace

PhaseReactions::PhaseReactions(ConsoleContext& context, ServiceSession& session, StartOfService& start,
                               AutocalibrationMode& autocalibration)
    : context_(context), session_(session), screen_(context), state_(context.state),
      console_(context.console), start_(start), autocalibration_(autocalibration),
      cmdPrep_(context.console["cmdPrep"]), cmdExposure_(context.console["cmdExposure"]),
      tmrDelay_(context.console.timer("tmrDelay")) {
    tmrDelay_.setTick([this] { session_.restScreen().showLinkControl(); });
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
    events.MASChangeDisplay.connect([this](const std::string&) { session_.apply(effects::kPollFree); });
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
    const bool wasLost = session_.generator().isLost();
    session_.report(phase, [&] {
        if (phase > Phase::Initialization) {
            start_.heard();
        }
        if (autocalibration_.asks() && phase != Phase::ConfirmDismiss) {
            // It has taken its question back, and may go anywhere from here.
            screen_.clearPrompt();
            if (phase == Phase::Calibration || phase == Phase::Autocalibration) {
                session_.apply(effects::kPollFree);
            }
        }
        react(phase);
        if (phase == Phase::Initialization && prompted) {
            // The prompt of a run was shown: the words of the restart take its place.
            console_["lblHelp"].setVisible(true);
        }
        if (wasLost && phase == Phase::Autocalibration && session_.idle()) {
            session_.generator().setExposureRequest(ExposureRequest::Stands); // as before the loss
        }
    });
}

void PhaseReactions::react(Phase phase) {
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
        session_.apply(effects::kErrorReported);
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
            // Any other run has its own words; afterwards the screen at rest shows these.
            session_.restScreen().showPage(Page::Calibration);
            session_.restScreen().say(Says::Question);
        }
        autocalibration_.questionAsked();
        break;
    case Phase::AutocalError:
        result(Says::ResultError);
        break;
    case Phase::AutocalOk:
        result(Says::ResultOk);
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
    session_.apply(kPoweringUp);
    screen_.hide({"fraExposureCounters"});
    session_.standNow();
    state_.m_PowerUpSeen = true;
}

void PhaseReactions::normalOperation() {
    const bool lent = session_.lent();
    const bool movingToUserMode = session_.is(Run::Lending);
    const Phase before = session_.lastPhase();
    // The refresh changes the last phase, which is restored behind it: what follows needs it.
    if (before == Phase::Initialization || before == Phase::Error) {
        start_.refreshAfterPowerUp();
    } else {
        start_.refreshIfOwed();
    }
    session_.generator().setLastPhase(before);
    if (lent && session_.mode() == Phase::Calibration && !movingToUserMode) {
        session_.apply(kReadyForTheUsers);
        screen_.show({"fraActualExposureParameters"});
        screen_.clearActualExposure();
    }
    if (cmdPrep_.tag() == "ON") {
        lightPreparation(false);
    }
    if (cmdExposure_.tag() == "ON") {
        lightExposure(false);
    }
    if (kAsksOrTells.has(before) || isServiceMode(session_.mode())) {
        modeIsOver();
    }
    session_.generator().setMode(Phase::NormalOperation);
    session_.apply(movingToUserMode ? kReadyBeforeTheUsersCame : effects::kCloseOffered);
}

void PhaseReactions::modeIsOver() {
    if (session_.lent()) {
        session_.restScreen().showPictureBehind();
        return;
    }
    session_.apply(kModeIsOver);
    session_.restScreen().showPicture();
    screen_.hide(Key::GoToUserMode);
    screen_.show(kModeKeys);
    session_.restScreen().showPositionerKey(true);
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
    session_.apply(kPreparation);
}

void PhaseReactions::calibration() {
    const bool entering = session_.is(Run::EnteringAutocalibration);
    const bool leaving = session_.is(Run::LeavingAutocalibration);
    if (!entering) {
        lightPreparation(false);
        if (!leaving && !session_.is(Run::EnteringCalibration)) {
            session_.apply(kCalibrationIsFree);
            screen_.hide({"fraActualExposureParameters", "fraExposureCounters"});
        }
    }
    if (session_.mode() != Phase::Autocalibration || !console_["fraTorvaneSerial"].visible()) {
        session_.restScreen().hidePicture();
        bringLinkControl();
    }
    if (session_.mode() == Phase::NormalOperation) {
        screen_.hide({"fraActualExposureParameters"});
    }
    session_.generator().setMode(Phase::Calibration);
    session_.apply(kInCalibration);
}

void PhaseReactions::configuration() {
    start_.dismissGreeting();
    session_.apply(kInConfiguration);
    screen_.show(kModeKeys);
    screen_.hide(Key::GoToUserMode);
    screen_.hide({"lblErrorDescription", "fraActualExposureParameters"});
    session_.restScreen().hidePicture();
    bringLinkControl();
    session_.generator().setMode(Phase::Configuration);
}

void PhaseReactions::autocalibration() {
    const bool begins = session_.mode() == Phase::Calibration;
    if (begins) {
        autocalibration_.modeBegins();
    }
    if (begins || session_.lastPhase() == Phase::Initialization) {
        session_.restScreen().hidePicture();
        if (!console_["fraTorvaneSerial"].visible() && !tmrDelay_.running()) {
            bringLinkControl(); // a loss, or the end of an entry, came before it was shown
        }
    }
    session_.generator().setMode(Phase::Autocalibration);
    session_.apply(kInAutocalibration);
    autocalibration_.modeReported(false);
}

void PhaseReactions::result(Says words) {
    if (session_.mode() == Phase::Autocalibration) {
        autocalibration_.modeReported(true);
    }
    session_.restScreen().say(words);
}

void PhaseReactions::askToConfirm() {
    autocalibration_.questionRaised();
    session_.apply(kQuestionAsked);
}

void PhaseReactions::bringLinkControl() {
    tmrDelay_.start(kLinkControlDelay);
}

} // namespace quillon
