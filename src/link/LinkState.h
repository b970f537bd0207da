#pragma once

#include <cstdint>

#include "base/Phase.h"

namespace quillon {

/// What the transport and the rest of the link control share about the link and the phase. Members carry the
/// property names that hosts and scenarios use.
struct LinkState {
    Phase m_Phase = Phase::Unheard; ///< last reported; the poll writes Error when the generator is lost
    /// The bit of the phase that commands are let out as: the one last reported, which a loss does not
    /// change, or the one that is entered now. 0 before the first report.
    std::int32_t m_PhaseMask = 0;
    Phase m_OperatingPhase = Phase::Unheard; ///< the last one entered that lasts
    std::int16_t m_NoAnswerCount = 0;        ///< poll ticks since the last inbound text, 31 at most
    bool m_StatusUpdateActive = false;       ///< second switch of the poll
    bool EventEnabled = false;               ///< gate of most events
    bool Handshaking = false;                ///< whether commands ask for an acknowledgement by themselves
    std::int16_t numretries = 4;             ///< transmissions a message gets
    std::int16_t RetriesInterval = 200;      ///< ms, base of the long time-outs
    bool StatusRequestinFluoro = true;       ///< the poll goes on during a fluoro exposure
};

} // namespace quillon
