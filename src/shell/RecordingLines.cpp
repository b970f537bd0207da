#include "shell/RecordingLines.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace quillon {

namespace {

/// What is handed over at once: a pipe takes as much whole or not at all, and the line about a gap fits in
/// front.
constexpr std::size_t kPiece = 4000;

constexpr std::string_view kWait = "wait ";

/// The text up to the last line end within a piece, or its first line where that is longer.
std::string_view pieceOf(std::string_view text) {
    if (text.size() <= kPiece) {
        return text;
    }
    const auto last = text.rfind('\n', kPiece - 1);
    return text.substr(0, (last != std::string_view::npos ? last : text.find('\n')) + 1);
}

Milliseconds timeIn(std::string_view lines) {
    Milliseconds sum = 0;
    for (std::size_t at = 0; at < lines.size(); at = lines.find('\n', at) + 1) {
        if (lines.substr(at).starts_with(kWait)) {
            Milliseconds ms = 0;
            std::from_chars(lines.data() + at + kWait.size(), lines.data() + lines.size(), ms);
            sum += ms;
        }
    }
    return sum;
}

} // namespace

void RecordingLines::command(Milliseconds now, std::string_view line) {
    std::string text;
    if (moved_) {
        text = std::string(kWait) + std::to_string(now - toldTo_) + "\n";
        toldTo_ = now;
        moved_ = false;
    }
    if (!line.empty()) {
        text.append(line).append("\n");
    }
    keep(now, text);
}

void RecordingLines::remark(Milliseconds now, std::string_view text) {
    keep(now, "# " + std::to_string(now) + " " + std::string(text) + "\n");
}

void RecordingLines::put(std::string_view text) {
    keep(fileTo_, text);
}

void RecordingLines::ahead(std::string_view line) {
    hand(fileTo_, std::string(line) + "\n");
}

void RecordingLines::flush() {
    holding_ = false;
    hand(fileTo_, std::exchange(held_, {}));
}

void RecordingLines::keep(Milliseconds now, std::string_view text) {
    if (holding_) {
        held_ += text;
    } else {
        hand(now, text);
    }
}

void RecordingLines::hand(Milliseconds now, std::string_view text) {
    while (!text.empty()) {
        const std::string_view piece = pieceOf(text);
        text.remove_prefix(piece.size());
        if (file_->write(gap() + std::string(piece))) {
            fileTo_ += lostTime_ + timeIn(piece);
            lostTime_ = 0;
            lostLines_ = 0;
        } else {
            lostFrom_ = lostLines_ == 0 ? now : lostFrom_;
            lostTime_ += timeIn(piece);
            lostLines_ += static_cast<std::size_t>(std::ranges::count(piece, '\n'));
        }
    }
}

std::string RecordingLines::gap() const {
    if (lostLines_ == 0) {
        return {};
    }
    // Up to the first line that is lost the time went by as told.
    const Milliseconds whole = std::min(lostFrom_ - fileTo_, lostTime_);
    return (whole > 0 ? std::string(kWait) + std::to_string(whole) + "\n" : std::string()) + "gap " +
           std::to_string(lostTime_ - whole) + " " + std::to_string(lostLines_) + "\n";
}

} // namespace quillon
