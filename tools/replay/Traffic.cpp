#include "Traffic.h"

#include <algorithm>
#include <string_view>

#include "base/Text.h"
#include "tools/words/Words.h"

namespace quillon {

namespace {

constexpr std::string_view kAcknowledgement = "AK";

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
}

std::string rightOf(std::size_t width, std::string text) {
    return text.insert(0, text.size() < width ? width - text.size() : 0, ' ');
}

std::string_view arrowOf(Entry::Kind kind) {
    switch (kind) {
    case Entry::Kind::Sent:
        return "->";
    case Entry::Kind::Lost:
        return "-x";
    case Entry::Kind::Received:
        return "<-";
    case Entry::Kind::Operator:
        return "**";
    case Entry::Kind::Note:
        break;
    }
    return "--";
}

std::string printable(std::string_view text) {
    std::string plain;
    for (const char c : text) {
        plain += c >= 0x20 && c <= 0x7E ? c : '?';
    }
    return plain;
}

} // namespace

std::vector<std::size_t> Traffic::add(const Entry& entry) {
    std::vector<std::size_t> changed;
    if (entry.kind == Entry::Kind::Received) {
        for (const std::string_view piece : split(entry.text, "\r")) {
            if (!piece.empty()) {
                addMessage(entry, piece, changed);
            }
        }
    } else {
        addMessage(entry, entry.text, changed);
    }
    std::ranges::sort(changed);
    changed.erase(std::unique(changed.begin(), changed.end()), changed.end());
    return changed;
}

std::vector<std::size_t> Traffic::end() {
    std::vector<std::size_t> changed;
    giveUp(handshake_.over(), changed);
    return changed;
}

std::size_t Traffic::settled() const {
    const auto waiting = handshake_.waiting();
    return waiting ? *waiting - 1 : size();
}

void Traffic::forget(std::size_t number) {
    for (; forgotten_ < number && !rows_.empty(); ++forgotten_) {
        rows_.pop_front();
    }
}

void Traffic::addMessage(const Entry& entry, std::string_view text, std::vector<std::size_t>& changed) {
    rows_.push_back({entry.kind, std::string(text), entry.time, {}, {}});
    TrafficRow& row = rows_.back();
    const std::size_t number = size();
    changed.push_back(number);
    if (entry.kind == Entry::Kind::Sent) {
        row.meaning = explained(Direction::Out, text);
        sent(number, changed);
    } else if (entry.kind == Entry::Kind::Lost) {
        row.meaning = explained(Direction::Out, text);
        row.fate = "not sent: the device did not take it";
    } else if (entry.kind == Entry::Kind::Received) {
        row.meaning = explained(Direction::In, text);
        if (equalsNoCase(text, kAcknowledgement)) {
            acknowledged(number, changed);
        }
    }
}

void Traffic::sent(std::size_t number, std::vector<std::size_t>& changed) {
    const Handshake::Sent sent = handshake_.sent(number, row(number).text);
    if (sent.repeats) {
        tell(number,
             "repeats " + std::to_string(*sent.repeats) + ", transmission " +
                 std::to_string(sent.transmission),
             changed);
    }
    giveUp(sent.before, changed);
}

void Traffic::acknowledged(std::size_t number, std::vector<std::size_t>& changed) {
    const auto frame = handshake_.acknowledged();
    if (!frame) {
        tell(number, "late or twice: nothing waits for it", changed);
        return;
    }
    tell(number, "for " + std::to_string(*frame), changed);
    std::string fate = "acknowledged ";
    if (*frame > forgotten_ && row(*frame).time && row(number).time) {
        fate += "after " + std::to_string(*row(number).time - *row(*frame).time) + " ms ";
    }
    tell(*frame, fate + "by " + std::to_string(number), changed);
}

void Traffic::giveUp(const std::optional<Handshake::Unanswered>& frame, std::vector<std::size_t>& changed) {
    if (frame) {
        tell(frame->frame,
             frame->givenUp ? "no acknowledgement: given up, refused or not heard" : "no acknowledgement",
             changed);
    }
}

void Traffic::tell(std::size_t number, std::string_view fate, std::vector<std::size_t>& changed) {
    if (number <= forgotten_) {
        return;
    }
    std::string& told = rows_.at(number - 1 - forgotten_).fate;
    told.append(told.empty() ? "" : ", ").append(fate);
    changed.push_back(number);
}

std::string rowText(const Traffic& traffic, std::size_t number, bool withTime) {
    constexpr std::size_t kTextWidth = 14;
    constexpr std::size_t kMeaningWidth = 46;
    const TrafficRow& row = traffic.row(number);
    std::string line = rightOf(6, std::to_string(number));
    if (withTime) {
        line += "  " + rightOf(9, std::to_string(row.time.value_or(0)));
    }
    line += "  " + std::string(arrowOf(row.kind)) + "  ";
    if (row.kind == Entry::Kind::Operator || row.kind == Entry::Kind::Note) {
        line += printable(row.text);
    } else {
        line += padded(printable(row.text), kTextWidth) + "  " +
                padded(printable(row.meaning), kMeaningWidth) + "  " + row.fate;
    }
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

} // namespace quillon
