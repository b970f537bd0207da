#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "runtime/Clock.h"

namespace quillon {

/// One thing that a log or a recording tells.
struct Entry {
    enum class Kind {
        Sent,     ///< a frame of the console, without its end bytes
        Lost,     ///< such a frame, but the device did not take it
        Received, ///< a frame of the generator; messages that it holds beside the first stand behind CRs
        Operator, ///< what the operator did, as a scenario tells it
        Note,     ///< what the console says of the port
    };
    Kind kind;
    std::string text;
    std::optional<Milliseconds> time = std::nullopt; ///< a log has none
};

/// A log or a recording, entry by entry.
struct Journal {
    std::vector<Entry> entries;
    bool recorded = false;             ///< a recording, and so a scenario already
    std::vector<std::string> problems; ///< what could not be read, by line
};

/// Reads a recording line by line, also while it is written.
class RecordingReader {
public:
    void line(std::string_view line);
    /// What came since this was asked last. A frame that turns out lost only then comes once more as such.
    std::vector<Entry> take() { return std::exchange(journal_.entries, {}); }
    [[nodiscard]] Journal& journal() { return journal_; }

private:
    void command(std::string_view line);
    void remark(std::string_view text);
    void lose(const std::string& frame);
    void receive(std::string_view bytes);
    Milliseconds number(std::string_view text);

    std::string frame_; // bytes whose end is still to come
    Milliseconds time_ = 0;
    std::size_t line_ = 0;
    bool inFile_ = false;
    Journal journal_{{}, true, {}};
};

/// Reads a communication log or a recording, whichever it is.
[[nodiscard]] Journal readJournal(std::string_view content);

} // namespace quillon
