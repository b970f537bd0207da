#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "base/Fault.h"
#include "base/Temporarily.h"
#include "runtime/Signal.h"

namespace quillon {

/// What a handler is called for.
struct Cause {
    enum class Kind : std::uint8_t { Key, Timer, Message };
    Kind kind;
    std::string_view name;         ///< the control, the timer, or the whole message
    std::string_view handler = {}; ///< of a message, whose handler it is
};

/// For a developer's eye: "timer tmrBlink", "message "HE5" (fmessHU)".
[[nodiscard]] std::string textOf(const Cause& cause);

/// The edge between what happens and what the program does about it: calls the handlers, knows which one
/// runs, and tells of each that a fault has ended.
class Handlers {
public:
    template <typename Work> void run(const Cause& cause, Work&& work) {
        const Temporarily<const Cause*> running(running_, &cause);
        try {
            std::forward<Work>(work)();
        } catch (Fault& fault) {
            fault.setTold();
            faulted.raise(cause, fault.number());
            throw;
        }
    }

    /// What the innermost handler was called for; empty where none runs.
    [[nodiscard]] const Cause* running() const { return running_; }

    /// A fault of this number has ended the handler.
    Signal<Cause, int> faulted;

private:
    const Cause* running_ = nullptr;
};

} // namespace quillon
