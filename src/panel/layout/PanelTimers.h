#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

inline constexpr auto kPanelTimers = std::to_array<TimerRow>({
    {"timerStatusUpdate", 1000},
    {"tmrProtocolHandshaking", 0},
    {"tmrWaitAfterRx", 400},
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
