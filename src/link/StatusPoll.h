#pragma once

#include "link/LinkEvents.h"
#include "link/LinkSilence.h"
#include "link/LinkState.h"
#include "link/SendPath.h"
#include "runtime/Schedule.h"

namespace quillon {

/// Asks for phase and tube heat in turn while the port is open, and declares the generator lost when nothing
/// comes for too long. Whatever starts it, it goes on only while the port is open.
class StatusPoll {
public:
    StatusPoll(LinkState& state, LinkEvents& events, SendPath& send, SerialPort& port, LinkSilence& silence,
               Timer& timerStatusUpdate);

    [[nodiscard]] bool StatusUpdateEnable() const { return StatusUpdateEnable_; }
    /// The main switch; writing it writes the second one as well.
    void setStatusUpdateEnable(bool enable);
    /// It runs, and none of the two switches keeps it from asking.
    [[nodiscard]] bool polls() const {
        return StatusUpdateEnable_ && state_.m_StatusUpdateActive && timer_.running();
    }
    /// The port was opened: the heat is asked for first, one interval from now.
    void begin();
    void run() { timer_.run(); }
    /// Stops asking, and keeps what is known of a silence.
    void stop() { timer_.stop(); }
    /// The port was closed.
    void end();
    /// Pauses the poll until the next tick, which comes later than usual.
    void holdBack();
    /// Ends that at once: the next poll is one ordinary interval away.
    void resume();

    /// Ask for the phase ("ST") and for the tube heat ("HU", answered by "HE").
    void GeneratorPhaseRequest();
    void HURequest();
    /// Something came from the generator.
    void heard();
    /// The host sets the count of missed answers to 0; nothing was heard.
    void ResetNoAnswerFromGeneratorError() { state_.m_NoAnswerCount = 0; }

private:
    void tick();

    LinkState& state_;
    LinkEvents& events_;
    SendPath& send_;
    SerialPort& port_;
    LinkSilence& silence_;
    Timer& timer_;
    bool StatusUpdateEnable_ = false;
    bool heatNext_ = false; // which of the two requests is next
};

} // namespace quillon
