#include "link/StatusPoll.h"

#include "link/GeneratorLost.h"
#include "link/OutboundTable.h"
#include "panel/layout/PanelTimers.h"

namespace quillon {

namespace {

constexpr int kHeldInterval = 10000; // ms
constexpr std::int16_t kLostErrorType = 2;

} // namespace

StatusPoll::StatusPoll(LinkState& state, LinkEvents& events, SendPath& send, SerialPort& port,
                       LinkSilence& silence, Timer& timerStatusUpdate)
    : state_(state), events_(events), send_(send), port_(port), silence_(silence), timer_(timerStatusUpdate) {
    timer_.setInterval(kPollInterval);
    timer_.setTick([this] { tick(); });
}

void StatusPoll::setStatusUpdateEnable(bool enable) {
    StatusUpdateEnable_ = enable;
    state_.m_StatusUpdateActive = enable;
}

void StatusPoll::begin() {
    silence_.forget();
    heatNext_ = true;
    timer_.run();
}

void StatusPoll::end() {
    timer_.stop();
    silence_.forget();
}

void StatusPoll::resume() {
    timer_.start(kPollInterval);
}

void StatusPoll::holdBack() {
    timer_.start(kHeldInterval);
}

void StatusPoll::GeneratorPhaseRequest() {
    send_.SendMessage("ST", kAllPhases);
}

void StatusPoll::HURequest() {
    send_.SendMessage("HU", kAllPhases);
}

void StatusPoll::heard() {
    state_.m_NoAnswerCount = 0;
    silence_.heard();
}

void StatusPoll::tick() {
    if (!port_.isOpen()) {
        // Nothing can answer, and a generator that was not asked is not lost.
        end();
        return;
    }
    if (state_.m_Phase == Phase::FluoroExposure && !state_.StatusRequestinFluoro) {
        return;
    }
    if (StatusUpdateEnable_ && state_.m_StatusUpdateActive) {
        if (heatNext_) {
            HURequest();
        } else {
            GeneratorPhaseRequest();
        }
        heatNext_ = !heatNext_;
        if (state_.m_NoAnswerCount < kPollsUntilLost) {
            ++state_.m_NoAnswerCount;
        } else if (state_.m_NoAnswerCount == kPollsUntilLost) {
            state_.m_Phase = Phase::Error;
            // Counted past the limit first, so that the error is raised once however it is received.
            ++state_.m_NoAnswerCount;
            events_.GeneratorERROR.raise(kGeneratorLost, {}, kLostErrorType);
        }
        silence_.polled(state_.m_NoAnswerCount);
    }
    timer_.setInterval(kPollInterval);
}

} // namespace quillon
