#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <QPointer>
#include <QSocketNotifier>

#include "qt/RecordingState.h"
#include "runtime/Platform.h"

namespace quillon {

/// Where a session's recording goes.
struct RecordingPlace {
    std::string folder; ///< of numbered recordings; they share the bound
    std::string spare;  ///< the same in memory, where the first cannot be written; empty without one
    std::string file;   ///< one file instead, as it is; empty for the folders
    std::int64_t bound = 0;
};

/// The writer of a session's recording: a process of its own, so that no disk, however slow, full or frozen
/// it is, ever holds up the one that drives the generator, and what that has said outlives it. It takes what
/// comes through a pipe, and ends with the pipe.
class BlackBox {
public:
    /// Makes the process. There must be one thread only, and nothing open that a copy of this process would
    /// keep.
    BlackBox();
    /// Waits for the writer's end, a second at most.
    ~BlackBox();
    BlackBox(const BlackBox&) = delete;
    BlackBox& operator=(const BlackBox&) = delete;

    /// Where a recording begins, once. What its writer says from then on is told on standard error. Nothing
    /// when there can be none, and why in `problem`.
    [[nodiscard]] std::unique_ptr<TextSink> record(const RecordingPlace& place, std::string& problem);

    /// As the writer has told it last.
    [[nodiscard]] const RecordingState& state() const { return state_; }
    /// It is another one.
    std::function<void()> onState;

private:
    class Sink;
    void listen();
    void told(std::string_view line);
    void become(RecordingState state);

    int toWriter_ = -1;
    int fromWriter_ = -1;
    int writer_ = -1;
    std::string words_; ///< of the writer, not a whole line yet
    RecordingPlace place_;
    RecordingState state_;
    RecordingState beforeFull_;          ///< what it was before its disk took nothing
    QPointer<QSocketNotifier> notifier_; ///< the application may go first
};

} // namespace quillon
