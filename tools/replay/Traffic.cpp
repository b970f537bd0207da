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

std::string fateText(const Fate& fate) {
    const std::string other = std::to_string(fate.other);
    const std::string number = fate.number ? std::to_string(*fate.number) : std::string();
    switch (fate.kind) {
    case Fate::Kind::Repeats:
        return "repeats " + other + ", transmission " + number;
    case Fate::Kind::Acknowledged:
        return "acknowledged " + (fate.number ? "after " + number + " ms " : std::string()) + "by " + other;
    case Fate::Kind::Unanswered:
        return "no acknowledgement";
    case Fate::Kind::GivenUp:
        return "no acknowledgement: given up, refused or not heard";
    case Fate::Kind::NotSent:
        return "not sent: the device did not take it";
    case Fate::Kind::Acknowledgement:
        return "for " + other;
    case Fate::Kind::Stray:
        break;
    }
    return "late or twice: nothing waits for it";
}

} // namespace

bool TrafficRow::isWrong() const {
    const auto bad = [](const Fate& fate) {
        return fate.kind == Fate::Kind::Unanswered || fate.kind == Fate::Kind::GivenUp ||
               fate.kind == Fate::Kind::NotSent || fate.kind == Fate::Kind::Stray;
    };
    const auto begins = [this](std::string_view word) { return text.starts_with(word); };
    switch (kind) {
    case Entry::Kind::Received: {
        // An acknowledged reset of errors is told as the error 0.
        const bool error =
            (begins("ER") && text.substr(2, 1) != "?") || (begins("AR") && text.substr(2) != "0");
        return error || std::ranges::any_of(fates, bad);
    }
    case Entry::Kind::Note:
        return begins("fault ") || begins("gap ");
    case Entry::Kind::Operator:
        return false;
    case Entry::Kind::Sent:
    case Entry::Kind::Lost:
        break;
    }
    return std::ranges::any_of(fates, bad);
}

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
        row.fates.push_back({Fate::Kind::NotSent});
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
        tell(number, {Fate::Kind::Repeats, *sent.repeats, sent.transmission}, changed);
    }
    giveUp(sent.before, changed);
}

void Traffic::acknowledged(std::size_t number, std::vector<std::size_t>& changed) {
    const auto frame = handshake_.acknowledged();
    if (!frame) {
        tell(number, {Fate::Kind::Stray}, changed);
        return;
    }
    tell(number, {Fate::Kind::Acknowledgement, *frame}, changed);
    Fate fate{Fate::Kind::Acknowledged, number};
    if (*frame > forgotten_ && row(*frame).time && row(number).time) {
        fate.number = *row(number).time - *row(*frame).time;
    }
    tell(*frame, fate, changed);
}

void Traffic::giveUp(const std::optional<Handshake::Unanswered>& frame, std::vector<std::size_t>& changed) {
    if (frame) {
        tell(frame->frame, {frame->givenUp ? Fate::Kind::GivenUp : Fate::Kind::Unanswered}, changed);
    }
}

void Traffic::tell(std::size_t number, const Fate& fate, std::vector<std::size_t>& changed) {
    if (number > forgotten_) {
        rows_.at(number - 1 - forgotten_).fates.push_back(fate);
        changed.push_back(number);
    }
}

std::string printable(std::string_view text) {
    std::string plain;
    for (const char c : text) {
        plain += c >= 0x20 && c <= 0x7E ? c : '?';
    }
    return plain;
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
                padded(printable(row.meaning), kMeaningWidth) + "  ";
        for (const Fate& fate : row.fates) {
            line += (&fate == &row.fates.front() ? "" : ", ") + fateText(fate);
        }
    }
    return line.substr(0, line.find_last_not_of(' ') + 1);
}

} // namespace quillon
