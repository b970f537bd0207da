#include "Handshake.h"

#include "Listing.h"

namespace quillon {

namespace {

constexpr int kTries = 4; // transmissions of a message that nobody acknowledges

} // namespace

Handshake::Sent Handshake::sent(std::size_t frame, std::string_view text) {
    if (open() && asks_ && text_ == text) {
        last_ = frame;
        return {std::nullopt, first_, ++tries_};
    }
    const Sent sent{over()};
    text_ = text;
    first_ = last_ = frame;
    tries_ = 1;
    opened_ = true;
    answered_ = false;
    asks_ = asks(text);
    return sent;
}

std::optional<std::size_t> Handshake::acknowledged() {
    if (!open()) {
        return std::nullopt;
    }
    answered_ = true;
    return last_;
}

std::optional<Handshake::Unanswered> Handshake::over() {
    const bool unanswered = open() && asks_;
    answered_ = true;
    return unanswered ? std::optional(Unanswered{last_, tries_ >= kTries}) : std::nullopt;
}

std::optional<std::size_t> Handshake::waiting() const {
    return open() && asks_ ? std::optional(last_) : std::nullopt;
}

bool Handshake::asks(std::string_view text) {
    const auto [known, isNew] = asksByText_.try_emplace(std::string(text));
    if (isNew) {
        known->second = !text.empty() && mayAsk(text);
    }
    return known->second;
}

} // namespace quillon
