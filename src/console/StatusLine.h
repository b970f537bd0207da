#pragma once

#include <optional>
#include <string>

#include "console/PhaseTable.h"
#include "console/ServiceSession.h"
#include "runtime/Signal.h"

namespace quillon {

class Exposures;
class GeneratorSummary;
class PendingKeys;
class UnsavedValue;
struct Indicators;

/// How far the console is with what it is doing.
struct Progress {
    std::string what; ///< empty when it waits for nothing
    Count count;
    std::optional<Milliseconds> ends; ///< on the schedule's clock, where it ends at a fixed time
};

struct StatusField {
    std::string words; ///< empty for nothing to tell
    Tone tone = Tone::Plain;
    bool operator==(const StatusField&) const = default;
};

/// What the status bar shows, in the operator's language. All of it is derived from the session, its timers
/// and the link when it is asked for; it keeps nothing.
class StatusLine {
public:
    StatusLine(ConsoleContext& context, ServiceSession& session, const Indicators& indicators);

    /// Where the generator stands.
    [[nodiscard]] StatusField generator() const;
    /// The port, its device, and whether the generator answers.
    [[nodiscard]] StatusField line() const;
    /// Whether an exposure can be made, and what keeps it back.
    [[nodiscard]] StatusField rays() const;
    /// The error that stands, or the loss.
    [[nodiscard]] StatusField alarm() const;
    /// What is being waited for; otherwise how a positioner's screen is left.
    [[nodiscard]] StatusField doing() const;
    /// The key that closes the screen of its own that is open; empty while none is.
    [[nodiscard]] const Control* wayBack() const { return session_.restScreen().wayBack(); }
    /// "2 of 4", "12 s left"; empty when there is nothing to count.
    [[nodiscard]] std::string howFar() const;

    [[nodiscard]] Progress progress() const;
    /// It shows seconds: ask again in a second.
    [[nodiscard]] bool counting() const;

    Signal<> changed;

private:
    /// The port could not be opened, and is not open.
    [[nodiscard]] bool didNotOpen() const;
    [[nodiscard]] bool cannotTell() const;
    [[nodiscard]] std::optional<Milliseconds> endOf(ConsoleTimer timer) const;

    ConsoleContext& context_;
    const ServiceSession& session_;
    GeneratorSummary& summary_;
    Exposures& exposures_;
    PendingKeys& pending_;
    UnsavedValue& unsaved_;
};

} // namespace quillon
