#pragma once

namespace quillon {

/// The program's event loop, for the one handler that runs it itself.
class EventLoop {
public:
    virtual ~EventLoop() = default;
    /// Serves the timers and the port bytes that wait now, once.
    virtual void processEvents() = 0;
};

} // namespace quillon
