#include "console/Holdings.h"

#include <utility>

namespace quillon {

namespace {

/// The generator can be told whether it may make X-rays, and no exposure is under way.
constexpr Phases kTakesXRays = Phases{Phase::NormalOperation} | kServiceModes;
constexpr Keys kDeadInExposure = kModeKeys | Key::GoToUserMode | Key::Close;

} // namespace

Holdings::Holdings(ConsoleContext& context, const GeneratorReports& generator, RestScreen& restScreen,
                   std::function<bool()> holdsPoll)
    : context_(context), generator_(generator), restScreen_(restScreen), screen_(context),
      poll_(context, std::move(holdsPoll)) {}

void Holdings::apply(const Effects& effects) {
    take(effects.off);
    restScreen_.paint(effects.atRest, context_.state.ButtonOffColor);
    restScreen_.paint(effects.active, context_.state.ButtonOnColor);
    give(effects.on);
    if (effects.prompt == Prompt::Cleared) {
        screen_.clearPrompt();
    }
    restScreen_.caption(effects.caption);
    if (effects.rx != Rx::Stays) {
        context_.link.setRXEnable(effects.rx != Rx::Off);
        xRaysOwed_ = effects.rx == Rx::GivenBack && !context_.link.allows("RX");
    }
    poll_.move(effects.poll, isExposure(generator_.lastPhase()));
    poll_.notice();
    if (effects.busy == Busy::Taken) {
        busy_ = true;
        context_.events.Busy.raise(1);
    } else if (effects.busy == Busy::Given || (effects.busy == Busy::Settled && busy_)) {
        busy_ = false;
        context_.events.Busy.raise(0);
    }
}

void Holdings::give(Keys keys) {
    keys.each([&](Key key) {
        if (isExposure(generator_.lastPhase()) && kDeadInExposure.has(key)) {
            afterExposure_ = afterExposure_ | key;
        } else {
            context_.console[nameOf(key)].setEnabled(true);
        }
    });
}

void Holdings::giveDelayed() {
    give(std::exchange(afterExposure_, {}));
}

void Holdings::take(Keys keys) {
    afterExposure_ = afterExposure_.without(keys);
    keys.each([&](Key key) { context_.console[nameOf(key)].setEnabled(false); });
}

void Holdings::freePoll() {
    poll_.move(Poll::Free, isExposure(generator_.lastPhase()));
}

void Holdings::phaseReported(Phase phase) {
    if (xRaysOwed_ && kTakesXRays.has(phase)) {
        xRaysOwed_ = false;
        context_.link.setRXEnable(true);
    }
}

} // namespace quillon
