#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "runtime/Clock.h"
#include "runtime/Platform.h"

namespace quillon {

/// The lines of a recording on their way to its file. What the file does not take is lost by whole lines, and
/// the first line that it takes again is "gap MS LINES": the time and the number of lines that are missing.
class RecordingLines {
public:
    explicit RecordingLines(std::unique_ptr<TextSink> file) : file_(std::move(file)) {}

    /// The head, without which the other lines are useless; handed over as a whole.
    void head(std::string_view text) { file_->write(text); }
    /// A command, behind the time that has gone by since the last one; the time alone when it is empty.
    void command(Milliseconds now, std::string_view line);
    void remark(Milliseconds now, std::string_view text);
    /// A line that is no command and has no time.
    void put(std::string_view text);
    /// A command that has to stand in front of what is held.
    void ahead(std::string_view line);

    /// From here on lines wait for something that has to stand in front of them.
    void hold() { holding_ = true; }
    /// They need wait no longer.
    void flush();

    /// Time went on, or something fell due.
    void moved() { moved_ = true; }
    /// The time up to which the lines tell.
    [[nodiscard]] Milliseconds toldTo() const { return toldTo_; }

private:
    void keep(Milliseconds now, std::string_view text);
    void hand(Milliseconds now, std::string_view text);
    [[nodiscard]] std::string gap() const;

    std::unique_ptr<TextSink> file_;
    std::string held_;
    bool holding_ = false;
    bool moved_ = false;
    Milliseconds toldTo_ = 0;
    Milliseconds fileTo_ = 0;   ///< the same, of those that the file has taken
    Milliseconds lostFrom_ = 0; ///< up to which nothing is missing
    Milliseconds lostTime_ = 0; ///< that the lost lines would have told of
    std::size_t lostLines_ = 0;
};

} // namespace quillon
