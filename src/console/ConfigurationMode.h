#pragma once

#include <string_view>

#include "console/ServiceSession.h"
#include "console/panels/ConsolePanels.h"

namespace quillon {

/// The way into the generator's configuration and out of it. The command is not waited for: the poll is
/// silent for a fixed time, and then the phase that was reported meanwhile decides.
class ConfigurationMode {
public:
    ConfigurationMode(ConsoleContext& context, ServiceSession& session, ConsolePanels& panels);

    /// Enters from normal operation, leaves when configuration runs, and does nothing in any other mode.
    void ToggleConfigurationMode();

private:
    void tell(bool enable, std::string_view prompt, Timer& wait);
    void entered();
    void left();

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsolePanels& panels_;
    ConsoleScreen screen_;
    Timer& tmrConfigON_;
    Timer& tmrConfigOFF_;
};

} // namespace quillon
