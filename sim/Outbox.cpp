#include "sim/Outbox.h"

#include <algorithm>

namespace simulator {

void Outbox::acknowledge(std::int64_t nowMs) {
    if (!options_.acknowledges) {
        return;
    }
    ++acknowledgements_;
    const bool everyNth = options_.dropEvery > 0 && acknowledgements_ % options_.dropEvery == 0;
    if (dropNext_ > 0 || everyNth) {
        dropNext_ = std::max(0, dropNext_ - 1);
        ++acknowledgementsDropped_;
        tell("AK", Fate::Dropped);
        return;
    }
    ++acknowledgementsSent_;
    queue_.push_back({nowMs + options_.ackMs, ended("AK")});
}

void Outbox::release(std::int64_t nowMs) {
    for (const std::string& text : collected_) {
        const std::string told = asTold(text);
        queue_.push_back({nowMs + options_.answerMs, ended(told)});
        if (options_.twicePercent != 0 && random_.below(100) < options_.twicePercent) {
            queue_.push_back({nowMs + options_.answerMs, ended(told)});
        }
    }
    collected_.clear();
}

void Outbox::clear() {
    collected_.clear();
    queue_.clear();
}

std::optional<std::int64_t> Outbox::nextDue() const {
    return queue_.empty() ? std::nullopt : std::optional(queue_.front().dueMs);
}

std::string Outbox::takeNext() {
    std::string bytes = std::move(queue_.front().bytes);
    queue_.pop_front();
    if (options_.silent) {
        tell(bytes, Fate::Silent);
        return {};
    }
    ++messagesSent_;
    std::string sent = withNoise(bytes);
    tell(bytes, sent == bytes ? Fate::Sent : Fate::Garbled);
    return sent;
}

void Outbox::stick(std::string_view mnemonic, std::string_view value) {
    if (value.empty()) {
        fixed_.erase(std::string(mnemonic));
    } else {
        fixed_[std::string(mnemonic)] = value;
    }
}

void Outbox::tell(std::string_view bytes, Fate fate) const {
    if (onMessage) {
        onMessage(bytes.substr(0, bytes.find('\r')), fate);
    }
}

// A fault of what measures a value, not of the machine: its phase is told as it is.
std::string Outbox::asTold(const std::string& text) {
    const auto value = std::min(text.find_first_of("0123456789"), text.size());
    if (value == text.size() || text.starts_with("ST")) {
        return text;
    }
    std::string told = text;
    if (const auto fixed = fixed_.find(text.substr(0, value)); fixed != fixed_.end()) {
        return fixed->first + fixed->second;
    }
    if (options_.stuck) {
        told = stuck_.try_emplace(text.substr(0, value), text).first->second;
    } else {
        stuck_.clear();
    }
    if (options_.wrongPercent != 0 && random_.below(100) < options_.wrongPercent) {
        char& digit = told[told.find_last_of("0123456789")];
        digit = static_cast<char>('0' + (digit - '0' + 1 + random_.below(9)) % 10);
    }
    return told;
}

std::string Outbox::ended(std::string_view text) const {
    std::string message(text);
    switch (options_.end) {
    case MessageEnd::Lf:
        return message + "\r\n";
    case MessageEnd::Etx:
        return message + "\r\x03";
    case MessageEnd::LfEtx:
        return message + "\r\n\x03";
    }
    return message;
}

std::string Outbox::withNoise(std::string bytes) {
    if (options_.noisePercent == 0 || random_.below(100) >= options_.noisePercent) {
        return bytes;
    }
    switch (random_.below(3)) {
    case 0:
        return garbage() + bytes;
    case 1:
        return bytes + garbage();
    default:
        return ended(garbage()) + bytes;
    }
}

std::string Outbox::garbage() {
    std::string bytes;
    for (int left = 1 + random_.below(6); left > 0; --left) {
        bytes += static_cast<char>(random_.below(256));
    }
    return bytes;
}

} // namespace simulator
