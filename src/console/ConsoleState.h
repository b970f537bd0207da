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

/// The console's properties, and what its workflows have chosen and read. Members carry the property names
/// that hosts and scenarios use. Where the generator stands and what the console is doing is the session's.
struct ConsoleState {
    bool m_PowerUpSeen = false;
    std::int32_t m_SelectedWorkstation = 0;
    bool m_AutocalSmallFocus = false;
    bool m_AutocalLargeFocus = false;
    std::int16_t m_AutocalParameter = 0;
    bool m_SelAutocalmA = false;
    std::string m_CounterTube1;
    std::string m_CounterTube2;
    std::string m_CounterTube3;
    std::string m_CounterFluoro;
    std::int32_t m_CounterToReset = 0;
    std::string m_LastKVPDisplay;
    bool m_ProtocolError = false;

    Colour ButtonOnColor = 0;
    Colour ButtonOffColor = 0;
    Colour ConsoleBackColor = 0;
    bool fromGUI = false;
    bool GeneratorVisible = false;
    bool ResetCounterEnable = true;
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
