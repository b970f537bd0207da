#pragma once

#include <array>

#include "ui/ControlTable.h"

namespace quillon {

inline constexpr auto kConsoleTimers = std::to_array<TimerRow>({
    {"tmrDelayShow", 3000},
    {"tmrWaitStartGenerator", 5000},
    {"tmrWaitRefresh", 10000},
    {"tmrError", 500},
    {"tmrDelay", 500},
    {"tmrConfigON", 3000},
    {"tmrConfigOFF", 3000},
    {"tmrCalON", 0},
    {"tmrCalOFF", 0},
    {"tmrAutocalON", 0},
    {"tmrAutocalOFF", 0},
    {"tmrDelayAutocal", 4500},
    {"tmrIniAutocal", 500},
    {"tmrReadExposureCounters", 2000},
    {"tmrResetTubeCounter", 10000},
    {"tmrFlRefresh", 5000},
    {"tmrGotoUserMode", 9000},
    {"tmrGoodbye", 1000},
    {"tmrShutdown", 4000},
    {"tmrRequestADC", 1500},
});

} // namespace quillon
