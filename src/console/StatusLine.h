#pragma once

#include <optional>
#include <string>

#include "console/ServiceSession.h"
#include "runtime/Signal.h"

namespace quillon {

/// How far the console is with what it is doing.
struct Progress {
    std::string what; ///< empty when it waits for nothing
    Count count;
    std::optional<Milliseconds> ends; ///< on the schedule's clock, where it ends at a fixed time
};

/// What stands at the foot of the window, in the operator's language: whether the generator answers, and how
/// far the console is. All of it is derived from the session, its timers and the link when it is asked for.
class StatusLine {
public:
    StatusLine(ConsoleContext& context, ServiceSession& session);

    [[nodiscard]] Progress progress() const;
    /// "No answer for 4 s"; empty while it answers.
    [[nodiscard]] std::string silence() const;
    /// What is being done, where no prompt says it already.
    [[nodiscard]] std::string doing() const;
    /// "2 of 4", "12 s left"; empty when there is nothing to count.
    [[nodiscard]] std::string howFar() const;
    /// Time goes by in it: ask again in a second.
    [[nodiscard]] bool counting() const;

    Signal<> changed;

private:
    [[nodiscard]] std::optional<Milliseconds> endOf(std::string_view timer) const;

    ConsoleContext& context_;
    const ServiceSession& session_;
};

} // namespace quillon
