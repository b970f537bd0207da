#include "console/SessionErrors.h"

#include <algorithm>

#include "link/GeneratorLost.h"

namespace quillon {

namespace {

// Errors without a code of their own.
constexpr std::int16_t kBackUpTimer = -1;
constexpr std::int16_t kWrongSelection = -2;

} // namespace

SessionErrors::SessionErrors(ConsoleContext& context, const ServiceSession& session) : context_(context) {
    LinkEvents& events = context_.link.events();
    events.GeneratorPhaseChange.connect([this](Phase phase) {
        if (phase != Phase::Error && phase != Phase::AutocalError) {
            end(ErrorEnd::AnotherPhase);
        }
    });
    events.GeneratorERROR.connect(
        [this, &session](std::int16_t code, const std::string& words, std::int16_t) {
            if (code != kGeneratorLost) {
                note(code, words);
            } else if (session.generator().isLost()) { // silence is no loss while it starts
                note(code, context_.texts.sCommError);
            }
        });
    events.GeneratorAECError.connect([this](std::int32_t code) {
        if (code == 1) {
            note(kBackUpTimer, context_.texts.sAECBackUpTime);
        } else if (code == 2) {
            note(kWrongSelection, context_.texts.sAECCompensationError);
        }
    });
    events.GeneratorERRORResetAck.connect([this] { end(ErrorEnd::ResetAcknowledged); });
}

void SessionErrors::note(std::int16_t code, std::string_view words) {
    if (code == 0 || standing_ == code) {
        return;
    }
    end(ErrorEnd::AnotherError);
    standing_ = code;
    began.raise({context_.console.schedule().now(), std::max(code, std::int16_t{0}), std::string(words)});
}

void SessionErrors::end(ErrorEnd end) {
    if (standing_ != 0) {
        standing_ = 0;
        over.raise(end);
    }
}

} // namespace quillon
