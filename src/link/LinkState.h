#pragma once

#include <cstdint>

namespace quillon {

/// What the transport and the rest of the link control share about the link and the phase. Members carry the
/// property names that hosts and scenarios use.
struct LinkState {
    std::int32_t m_Phase = -1;          ///< phase last reported; the poll writes 7 when the generator is lost
    std::int32_t m_PhaseMask = 0;       ///< the bit of the present phase; 0 before the first report
    std::int32_t m_OperatingPhase = -1; ///< the last of the phases 1, 2, 6, 8, 9 that was entered
    std::int16_t m_NoAnswerCount = 0;   ///< poll ticks since the last inbound text, 31 at most
    bool m_StatusUpdateActive = false;  ///< second switch of the poll
    bool EventEnabled = false;          ///< gate of most events
    bool Handshaking = false;           ///< whether commands ask for an acknowledgement by themselves
    std::int16_t numretries = 4;        ///< transmissions a message gets
    std::int16_t RetriesInterval = 200; ///< ms, base of the long time-outs
    bool StatusRequestinFluoro = true;  ///< the poll goes on during a fluoro exposure
};

} // namespace quillon
