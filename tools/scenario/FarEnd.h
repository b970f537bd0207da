#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/MemoryPlatform.h"
#include "sim/lesson/Classroom.h"

namespace quillon {

/// The generator's end of the line: scripted answers, or the simulated generator.
class FarEnd {
public:
    FarEnd(Schedule& schedule, MemorySerialPort& port) : schedule_(schedule), port_(port) {}
    FarEnd(const FarEnd&) = delete;
    FarEnd& operator=(const FarEnd&) = delete;

    /// The console has written these bytes.
    void written(std::string_view bytes);
    /// Told of each frame, without its end bytes, before anything answers it.
    std::function<void(std::string_view text)> onFrame;
    /// What becomes of bytes on the line to the simulated generator, and to the console; empty: they pass.
    std::function<std::string(std::string_view bytes)> toGenerator;
    std::function<std::string(std::string_view bytes)> toConsole;

    /// These bytes arrive at the console, or behind what it is just writing.
    void deliver(std::string_view bytes);
    /// Answers every non-empty frame with "AK"; empty ends it.
    void setAcknowledgement(std::optional<Milliseconds> delay) { acknowledgement_ = delay; }
    /// Answers a frame with a message. A `*` at the end of `frame` stands for any rest.
    void setReply(std::string_view frame, std::string_view message, Milliseconds delay);
    void removeReply(std::string_view frame);

    /// A simulated generator takes over from now on; scripted answers end.
    void simulate(const simulator::Options& options);
    [[nodiscard]] bool simulated() const { return generator_.has_value(); }
    /// The machine of a lesson takes over, and the lesson begins. Each line it tells goes to `told`.
    void teach(const simulator::Lesson& lesson, std::function<void(const std::string& line)> told);
    /// The lesson's next hint; there must be a simulated generator.
    void hint() { generator_->hint(); }
    /// One command of the simulated generator's console, and its answer.
    std::string command(std::string_view text);

private:
    struct Reply {
        std::string frame;
        std::string message;
        Milliseconds delay;
        [[nodiscard]] bool answers(std::string_view text) const;
    };

    void frameWritten(std::string_view text);
    void send(std::string_view message, Milliseconds delay);
    void wakeGenerator();

    Schedule& schedule_;
    MemorySerialPort& port_;
    std::string partial_; // bytes of a frame whose end is still to come
    std::optional<Milliseconds> acknowledgement_;
    std::vector<Reply> replies_;
    std::optional<simulator::Classroom> generator_;
    int generators_ = 0; // a wake-up that an earlier one asked for is not for its successor
    std::optional<Milliseconds> wake_;
    bool writing_ = false;
};

} // namespace quillon
