#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace simulator {

/// What the machine will do and when. Actions due at the same moment run in the order they were entered.
class Agenda {
public:
    using Ticket = std::uint64_t;
    static constexpr Ticket kNone = 0;

    Ticket enter(std::int64_t dueMs, std::function<void()> action) {
        const Ticket ticket = ++lastTicket_;
        entries_.emplace(std::pair(dueMs, ticket), std::move(action));
        return ticket;
    }

    /// Removes an entry and clears the ticket; nothing happens to one that has run already.
    void cancel(Ticket& ticket) {
        std::erase_if(entries_, [&](const auto& entry) { return entry.first.second == ticket; });
        ticket = kNone;
    }

    void clear() { entries_.clear(); }

    [[nodiscard]] std::optional<std::int64_t> nextDue() const {
        return entries_.empty() ? std::nullopt : std::optional(entries_.begin()->first.first);
    }

    /// Takes the next action off the agenda.
    [[nodiscard]] std::function<void()> takeNext() {
        return std::move(entries_.extract(entries_.begin()).mapped());
    }

private:
    std::map<std::pair<std::int64_t, Ticket>, std::function<void()>> entries_;
    Ticket lastTicket_ = kNone;
};

} // namespace simulator
