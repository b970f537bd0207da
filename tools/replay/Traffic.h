#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "Handshake.h"
#include "Journal.h"

namespace quillon {

/// What became of a message.
struct Fate {
    enum class Kind {
        Repeats,         ///< the row `other`, as its transmission `number`
        Acknowledged,    ///< by the row `other`, after `number` ms where that is known
        Unanswered,      ///< so far
        GivenUp,         ///< after as many transmissions as there are
        NotSent,         ///< the device did not take it
        Acknowledgement, ///< for the row `other`
        Stray,           ///< an acknowledgement for which nothing waits
    };
    Kind kind;
    std::size_t other = 0;
    std::optional<Milliseconds> number = std::nullopt;
};

/// One message, or something beside the messages, with what it is and what became of it.
struct TrafficRow {
    Entry::Kind kind;
    std::string text;
    std::optional<Milliseconds> time;
    std::string meaning;
    std::vector<Fate> fates;

    /// Something went wrong on the line, the generator tells of an error, or the console notes one.
    [[nodiscard]] bool isWrong() const;
};

/// The rows of a session as it goes on. What became of a message comes later than the message.
class Traffic {
public:
    /// The numbers, from 1, of the rows that are new or tell more than before.
    std::vector<std::size_t> add(const Entry& entry);
    /// The same at the end, when nothing more can come.
    std::vector<std::size_t> end();

    /// From 1; none that was forgotten.
    [[nodiscard]] const TrafficRow& row(std::size_t number) const {
        return rows_.at(number - 1 - forgotten_);
    }
    [[nodiscard]] std::size_t size() const { return forgotten_ + rows_.size(); }
    /// The rows up to this one are not needed any more.
    void forget(std::size_t number);
    /// Nothing more can come for the rows up to this one.
    [[nodiscard]] std::size_t settled() const;

private:
    void addMessage(const Entry& entry, std::string_view text, std::vector<std::size_t>& changed);
    void sent(std::size_t number, std::vector<std::size_t>& changed);
    void acknowledged(std::size_t number, std::vector<std::size_t>& changed);
    void giveUp(const std::optional<Handshake::Unanswered>& frame, std::vector<std::size_t>& changed);
    void tell(std::size_t number, const Fate& fate, std::vector<std::size_t>& changed);

    std::deque<TrafficRow> rows_;
    std::size_t forgotten_ = 0;
    Handshake handshake_;
};

/// What can be read of a text: what cannot be shown is a question mark.
[[nodiscard]] std::string printable(std::string_view text);

/// A line for a reader, without its end. Times are told where there are any.
[[nodiscard]] std::string rowText(const Traffic& traffic, std::size_t number, bool withTime);

} // namespace quillon
