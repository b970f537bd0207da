#pragma once

#include <array>
#include <string_view>

namespace quillon {

/// A timer of the link control. An interval of 0 says that whoever starts it sets one first.
struct PanelTimer {
    std::string_view name;
    int interval;
};

inline constexpr auto kPanelTimers = std::to_array<PanelTimer>({
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
