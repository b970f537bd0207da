#include "Listing.h"

#include <array>
#include <cstdio>

#include "tools/words/Meanings.h"

namespace quillon {

namespace {

constexpr std::string_view kAcknowledgement = "AK";
constexpr int kTries = 4; // transmissions of a message that nobody acknowledges

/// Whether a message may ask for an acknowledgement at all.
bool mayAsk(const Meaning* meaning) {
    if (meaning == nullptr) {
        return true;
    }
    bool listed = false;
    for (const CommandRow& row : kCommands) {
        if (equalsNoCase(row.mnemonic, meaning->mnemonic)) {
            listed = true;
            if (row.acknowledge != AckRule::Never) {
                return true;
            }
        }
    }
    return (meaning->hasOtherSenders() || !listed) && meaning->acknowledge != AckRule::Never;
}

/// One message of a frame.
struct Item {
    Entry::Kind kind;
    std::string text;
    std::optional<Milliseconds> time;
    std::string meaning;
    std::string note;
};

/// Finds out what became of each message that was sent.
class Annotator {
public:
    explicit Annotator(const Journal& journal) {
        for (const Entry& entry : journal.entries) {
            if (entry.kind == Entry::Kind::Received) {
                for (const std::string_view piece : split(entry.text, "\r")) {
                    add(entry, piece);
                }
            } else {
                add(entry, entry.text);
            }
        }
        giveUp();
    }

    std::vector<Item> items;

private:
    void add(const Entry& entry, std::string_view text) {
        if (entry.kind == Entry::Kind::Received && text.empty()) {
            return;
        }
        items.push_back({entry.kind, std::string(text), entry.time, {}, {}});
        Item& item = items.back();
        if (entry.kind == Entry::Kind::Sent) {
            item.meaning = explained(Direction::Out, text);
            sent(item);
        } else if (entry.kind == Entry::Kind::Lost) {
            item.meaning = explained(Direction::Out, text);
            item.note = "not sent: the device did not take it";
        } else if (entry.kind == Entry::Kind::Received) {
            item.meaning = explained(Direction::In, text);
            if (equalsNoCase(text, kAcknowledgement)) {
                acknowledged(item);
            }
        }
    }

    void sent(Item& item) {
        const std::size_t number = items.size();
        if (open() && asks_ && items[last_ - 1].text == item.text) {
            ++tries_;
            item.note = "repeats " + std::to_string(first_) + ", transmission " + std::to_string(tries_);
            last_ = number;
            return;
        }
        giveUp();
        first_ = last_ = number;
        tries_ = 1;
        answered_ = false;
        asks_ = !item.text.empty() && mayAsk(meaningOf(Direction::Out, item.text));
    }

    void acknowledged(Item& item) {
        if (!open()) {
            item.note = "late or twice: nothing waits for it";
            return;
        }
        item.note = "for " + std::to_string(last_);
        std::string& note = items[last_ - 1].note;
        note.append(note.empty() ? "" : ", ").append("acknowledged by " + std::to_string(items.size()));
        answered_ = true;
    }

    /// Nothing more can come for what was sent last.
    void giveUp() {
        if (open() && asks_) {
            std::string& note = items[last_ - 1].note;
            note.append(note.empty() ? "" : ", ").append("no acknowledgement");
            if (tries_ >= kTries) {
                note.append(": given up, refused or not heard");
            }
        }
        answered_ = true;
    }

    [[nodiscard]] bool open() const { return last_ > 0 && !answered_; }

    // Messages by their number in the listing, from 1; 0 for none.
    std::size_t first_ = 0;
    std::size_t last_ = 0;
    int tries_ = 0;
    bool asks_ = false;
    bool answered_ = true;
};

std::string padded(std::string text, std::size_t width) {
    text.resize(std::max(text.size(), width), ' ');
    return text;
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

std::string listing(const Journal& journal) {
    constexpr std::size_t kTextWidth = 14;
    constexpr std::size_t kMeaningWidth = 46;
    std::string text = journal.recorded ? "A recording; times in ms are exact.\n"
                                        : "A log; it tells the order of the messages and no times.\n";
    text +=
        "Commands that the console held back for the present phase were never sent and are not in it.\n\n";
    std::size_t number = 0;
    for (const Item& item : Annotator(journal).items) {
        std::string line = std::to_string(++number);
        line.insert(0, line.size() < 6 ? 6 - line.size() : 0, ' ');
        if (journal.recorded) {
            std::string time = std::to_string(item.time.value_or(0));
            line += "  " + time.insert(0, time.size() < 9 ? 9 - time.size() : 0, ' ');
        }
        line += "  " + std::string(arrowOf(item.kind)) + "  ";
        if (item.kind == Entry::Kind::Operator || item.kind == Entry::Kind::Note) {
            line += printable(item.text);
        } else {
            line += padded(printable(item.text), kTextWidth) + "  " +
                    padded(printable(item.meaning), kMeaningWidth) + "  " + item.note;
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    return text;
}

} // namespace quillon
