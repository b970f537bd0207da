#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "console/SessionErrors.h"
#include "runtime/Signal.h"

namespace quillon {

/// A subject and how it stands, for a line of a table.
struct SummaryLine {
    std::string subject;
    std::string state;
    bool alarm = false; ///< the operator should see this one first; it is the last but one
    bool old = false;   ///< from before the generator fell silent
    int percent = -1;   ///< of a bar beside it; below 0 for none
};

/// The summary of the generator: its state, how hot its tube is, what prevents an exposure, and the errors
/// since the program was started.
class GeneratorSummary {
public:
    static constexpr std::size_t kErrorsKept = 5;

    GeneratorSummary(ConsoleContext& context, const ServiceSession& session, SessionErrors& errors);

    /// In the operator's language. A line whose subject is not known yet is left out; the last one counts the
    /// errors.
    [[nodiscard]] std::vector<SummaryLine> lines() const;
    /// The last of them, the newest first. An error that goes on, or is reported again, counts once.
    [[nodiscard]] const std::deque<SessionError>& errors() const { return errors_; }
    [[nodiscard]] int errorCount() const { return count_; }
    /// Where the generator stands.
    [[nodiscard]] std::string state() const;
    /// What prevents an exposure; empty for nothing.
    [[nodiscard]] std::string warnings() const;

    Signal<> changed;

private:
    void listen(SessionErrors& errors);

    ConsoleContext& context_;
    const ServiceSession& session_;
    std::deque<SessionError> errors_;
    int count_ = 0;
    std::int16_t heat_ = -1;
};

} // namespace quillon
