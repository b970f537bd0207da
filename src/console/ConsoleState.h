#pragma once

#include <cstdint>
#include <string>

#include "base/Colours.h"
#include "runtime/Signal.h"

namespace quillon {

/// What the console tells its host.
struct ConsoleEvents {
    Signal<> Goodbye;          ///< the port is closed; the window may go
    Signal<std::int16_t> Busy; ///< 1 when a workflow takes the console, 0 when it gives it back
    Signal<> CannotOpenPort;
};

/// Preparation or an exposure: the generator takes no command of a service mode.
[[nodiscard]] constexpr bool isExposure(std::int32_t phase) {
    return phase >= 3 && phase <= 5;
}

/// The console's state: what its workflows know of each other and of the generator. Names are its own.
struct ConsoleState {
    std::int32_t m_LastPhase = 0;   ///< phase of the previous report
    std::int32_t m_ServiceMode = 0; ///< the last of 2, 6, 8, 9 that was reported; 1 at the start
    bool m_PowerUpSeen = false;
    bool loanCutOff = false; ///< the generator was lost on its way into user mode
    bool m_AutocalStarting = false;
    bool m_CalibrationStarting = false;
    std::int32_t m_SelectedWorkstation = 0;
    bool m_AutocalSmallFocus = false;
    bool m_AutocalLargeFocus = false;
    std::int16_t m_AutocalParameter = 0;
    bool m_SelAutocalmA = false;
    std::int32_t m_AutocalOnStep = 0;
    std::int32_t m_AutocalOffStep = 0;
    std::int16_t m_AutocalWaitCount = 0;
    std::int32_t m_CalOnStep = 0;
    std::int32_t m_CalOffStep = 0;
    std::int32_t m_ConfigOnStep = 0;
    std::int32_t m_ConfigOffStep = 0;
    std::int32_t m_ReadCountersStep = 0;
    bool m_CountersActive = false;
    bool m_CountersComplete = false;
    std::string m_CounterTube1;
    std::string m_CounterTube2;
    std::string m_CounterTube3;
    std::string m_CounterFluoro;
    std::int32_t m_CounterToReset = 0;
    std::string m_LastKVPDisplay;
    bool m_ProtocolError = false;
    bool m_SavedModeEnabled = false; ///< a positioner screen gives it back to the mode buttons

    Colour ButtonOnColor = 0;
    Colour ButtonOffColor = 0;
    Colour ConsoleBackColor = 0;
    bool fromGUI = false;
    bool GeneratorVisible = false;
    bool ResetCounterEnable = false;
    std::int16_t port = 0;
    std::int16_t DataBits = 0;
    std::int16_t StopBits = 0;
    std::int16_t baudrate = 0;
    std::string Parity;
    std::string ProjectName;
    std::string RegistryKey;
    std::int16_t IconSize = -1;
    std::string TouchPanelVersion;
    std::string m_QuillonConsoleVersion;
    std::string m_TorvaneSerialVersion;
};

} // namespace quillon
