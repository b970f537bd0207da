#include "console/ErrorReactions.h"

#include "base/Numbers.h"
#include "link/GeneratorLost.h"
#include "model/ErrorsAndWarnings.h"

namespace quillon {

namespace {

using namespace keys;

constexpr Effects kLost{.on = U, .off = modes};

constexpr int kFlashInterval = 500; // ms

} // namespace

ErrorReactions::ErrorReactions(ConsoleContext& context, ServiceSession& session)
    : context_(context), session_(session), screen_(context), state_(context.state),
      lblErrorDescription_(context.console["lblErrorDescription"]),
      cmbResetError_(context.console["cmbResetError"]), tmrError_(context.console.timer("tmrError")) {
    LinkEvents& events = context_.link.events();
    events.GeneratorERROR.connect([this](std::int16_t code, const std::string& description, std::int16_t) {
        generatorError(code, description);
    });
    events.GeneratorAECError.connect([this](std::int32_t code) { aecError(code); });
    events.GeneratorERRORResetAck.connect([this] { resetAcknowledged(); });
    events.MessageProtocolError.connect([this] { state_.m_ProtocolError = true; });
    tmrError_.setTick([this] { flash(); });
    cmbResetError_.on.click = [this] { resetKey(); };
}

void ErrorReactions::describe(Role rank, std::string_view words) {
    lblErrorDescription_.setRole(rank);
    lblErrorDescription_.setCaption(words);
    lblErrorDescription_.setVisible(!words.empty());
}

void ErrorReactions::describeNothing() {
    lblErrorDescription_.setCaption("");
    lblErrorDescription_.setVisible(false);
}

void ErrorReactions::generatorError(std::int16_t code, std::string_view description) {
    if (code == kGeneratorLost) {
        generatorLost();
    } else if (code != 0) {
        screen_.setError(decimalText(code));
        session_.apply(effects::kErrorReported);
        tmrError_.start(kFlashInterval);
        describe(Role::Alarm, description);
    }
}

void ErrorReactions::generatorLost() {
    if (session_.lastPhase() == Phase::Initialization) {
        return;
    }
    session_.lost();
    session_.apply(kLost);
    screen_.hide({"fraActualExposureParameters"});
    session_.standNow();
}

void ErrorReactions::flash() {
    const bool lit = cmbResetError_.backColour() == state_.ButtonOnColor;
    cmbResetError_.setBackColour(lit ? state_.ButtonOffColor : state_.ButtonOnColor);
}

void ErrorReactions::resetKey() {
    if (screen_.errorOnShow()) {
        tmrError_.stop();
        describeNothing();
    }
    screen_.setError("");
    screen_.off({"cmbResetError"});
    if (session_.lastPhase() != Phase::Configuration) {
        context_.link.errors().ResetError();
        if (session_.lent()) {
            session_.apply(effects::kXRaysAllowed);
        }
    }
    screen_.hide({"fraActualExposureParameters"});
}

void ErrorReactions::aecError(std::int32_t code) {
    if (code == 0) {
        describeNothing();
        tmrError_.stop();
    } else if (code == 1) {
        describe(Role::Warning, context_.texts.sAECBackUpTime);
        tmrError_.start(kFlashInterval);
    } else if (code == 2) {
        describe(Role::Warning, context_.texts.sAECCompensationError);
    }
}

void ErrorReactions::resetAcknowledged() {
    tmrError_.stop();
    screen_.off({"cmbResetError"});
    screen_.setError("");
    describeNothing();
}

} // namespace quillon
