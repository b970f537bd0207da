#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

/// ms from one poll to the next, and from the last transmission to a poll.
inline constexpr int kPollInterval = 1000;
/// ms of silence in front of a transmission.
inline constexpr int kWaitAfterRx = 400;

inline constexpr auto kPanelTimers = std::to_array<TimerRow>({
    {"timerStatusUpdate", kPollInterval},
    {"tmrProtocolHandshaking", 0},
    {"tmrWaitAfterRx", kWaitAfterRx},
    {"tmrAutoRepeat", 0},
    {"tmrAutorepFlKVP", 750},
    {"tmrConfirm", 0},
    {"tmrDismiss", 0},
    {"tmrWarning", 3000},
    {"tmrBlink", 500},
    {"tmrBlinking", 500},
    {"tmrBlinkingOff", 3000},
});

} // namespace quillon
