#pragma once

#include <string_view>

#include "console/ServiceSession.h"

namespace quillon {

/// From the console's appearance to its working buttons: the greeting, the refresh after a power-up, the
/// software versions.
class StartOfService {
public:
    StartOfService(ConsoleContext& context, ServiceSession& session);

    /// The console is on show from now on.
    void UserControl_Show();
    /// Opens or closes the port. Opened, the generator is asked for its phase and the poll begins; a port
    /// that does not open raises CannotOpenPort.
    void PortOpen(bool newStatus);
    /// Asks the generator for all that the screen shows; the mode buttons work ten seconds later.
    void RefreshConsole();
    /// A generator that was just powered up is given five seconds before the refresh.
    void refreshAfterPowerUp();
    /// Normal operation is reported again: makes the refresh that was not possible at the end of its wait.
    void refreshIfOwed();
    /// The generator has reported a phase: the prompt to power it up goes.
    void heard();
    /// Cancels the greeting, which is for a generator that is not there.
    void dismissGreeting() { tmrDelayShow_.stop(); }

private:
    void opened();
    void showRestLayout();
    void delayShowTick();
    void waitRefreshTick();
    void showVersions(std::string_view generator);

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsoleScreen screen_;
    ConsoleState& state_;
    Timer& tmrDelayShow_;
    Timer& tmrWaitStartGenerator_;
    Timer& tmrWaitRefresh_;
    bool refreshOwed_ = false;
};

} // namespace quillon
