#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/MemoryPlatform.h"
#include "runtime/Value.h"

namespace quillon {

class Control;

[[nodiscard]] std::string_view flagText(bool flag);
/// Numbers plain, texts in quotes, True and False.
[[nodiscard]] std::string valueText(const Value& value);
/// All that can be told of a control, name first.
[[nodiscard]] std::string stateText(const Control& control);

/// What happened, a line each, on a stream and in a memory that expectations look at.
class Report {
public:
    Report(std::ostream& out, const VirtualTime& time) : out_(out), time_(time) {}

    void print(std::string_view line);
    /// The same unless events are quiet.
    void printEvent(std::string_view line);
    /// An expectation that did not hold; expectations never see it.
    void printFailure(std::string_view line);
    void setEventsQuiet(bool quiet) { eventsQuiet_ = quiet; }
    /// Nothing is printed any more: the run is over, or nobody reads it.
    void close() { closed_ = true; }
    [[nodiscard]] bool hidesEvents() const { return closed_ || eventsQuiet_; }

    /// Expectations look at what comes from here on.
    void mark() { lines_.clear(); }
    /// How many lines since the mark hold the text.
    [[nodiscard]] std::size_t count(std::string_view text) const;

private:
    [[nodiscard]] std::string stamped(std::string_view line) const;

    std::ostream& out_;
    const VirtualTime& time_;
    std::vector<std::string> lines_;
    bool eventsQuiet_ = false;
    bool closed_ = false;
};

} // namespace quillon
