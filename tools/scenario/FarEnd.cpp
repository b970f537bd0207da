#include "FarEnd.h"

#include <algorithm>

#include "base/Temporarily.h"

namespace quillon {

namespace {

constexpr std::string_view kFrameEnd = "\r\n\x03";
constexpr std::string_view kMessageEnd = "\r\n";

} // namespace

bool FarEnd::Reply::answers(std::string_view text) const {
    const std::string_view pattern = frame;
    return pattern.ends_with('*') ? text.starts_with(pattern.substr(0, pattern.size() - 1)) : text == pattern;
}

void FarEnd::written(std::string_view bytes) {
    const Temporarily writing(writing_, true);
    partial_ += bytes;
    for (auto end = partial_.find(kFrameEnd); end != std::string::npos; end = partial_.find(kFrameEnd)) {
        const std::string text = partial_.substr(0, end);
        partial_.erase(0, end + kFrameEnd.size());
        frameWritten(text);
    }
    if (generator_) {
        generator_->receive(toGenerator ? toGenerator(bytes) : std::string(bytes), schedule_.now());
        wakeGenerator();
    }
}

void FarEnd::frameWritten(std::string_view text) {
    if (onFrame) {
        onFrame(text);
    }
    if (acknowledgement_ && !text.empty()) {
        send("AK", *acknowledgement_);
    }
    for (const Reply& reply : replies_) {
        if (reply.answers(text)) {
            send(reply.message, reply.delay);
        }
    }
}

void FarEnd::setReply(std::string_view frame, std::string_view message, Milliseconds delay) {
    const auto same = std::find_if(replies_.begin(), replies_.end(),
                                   [frame](const Reply& reply) { return reply.frame == frame; });
    if (same == replies_.end()) {
        replies_.push_back({std::string(frame), std::string(message), delay});
    } else {
        *same = {std::string(frame), std::string(message), delay};
    }
}

void FarEnd::removeReply(std::string_view frame) {
    std::erase_if(replies_, [frame](const Reply& reply) { return reply.frame == frame; });
}

void FarEnd::send(std::string_view message, Milliseconds delay) {
    schedule_.post(delay,
                   [this, bytes = std::string(message) + std::string(kMessageEnd)] { deliver(bytes); });
}

void FarEnd::deliver(std::string_view bytes) {
    // The port hands nothing over while it is being written to.
    if (writing_) {
        schedule_.post(0, [this, later = std::string(bytes)] { deliver(later); });
    } else {
        port_.receive(toConsole ? toConsole(bytes) : std::string(bytes));
    }
}

void FarEnd::simulate(const simulator::Options& options) {
    acknowledgement_.reset();
    replies_.clear();
    wake_.reset();
    ++generators_;
    generator_.emplace(
        options, [this](std::string_view bytes) { deliver(bytes); }, schedule_.now());
    wakeGenerator();
}

void FarEnd::teach(const simulator::Lesson& lesson, std::function<void(const std::string& line)> told) {
    simulate({});
    generator_->told = std::move(told);
    generator_->begin(lesson, schedule_.now());
    wakeGenerator();
}

std::string FarEnd::command(std::string_view text) {
    std::string answer = generator_->command(text, schedule_.now());
    wakeGenerator();
    return answer;
}

void FarEnd::wakeGenerator() {
    const auto due = generator_->nextDue();
    if (!due || (wake_ && *wake_ <= *due)) {
        return;
    }
    wake_ = due;
    schedule_.post(*due - schedule_.now(), [this, at = *due, generator = generators_] {
        if (generator != generators_ || wake_ != at) {
            return;
        }
        wake_.reset();
        generator_->advance(schedule_.now());
        wakeGenerator();
    });
}

} // namespace quillon
