#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace simulator {

using Phases = std::uint16_t;

/// The set of the phases named.
template <class... Numbers> [[nodiscard]] constexpr Phases in(Numbers... phases) {
    return static_cast<Phases>((0U | ... | (1U << phases)));
}

inline constexpr Phases kEveryPhase = 0xFFFE;

/// What may stand behind a mnemonic.
enum class Takes { Nothing, Number, NumberOrNothing, Text };

/// One command of the console, as a subject gets it.
struct Request {
    std::string_view argument;
    std::optional<double> number;
    int amount = 0; ///< from the row: the size and direction of a step, or which item is meant
};

/// One row of a subject's table. A handler says whether it could use the argument. The same mnemonic may
/// stand in several rows with different phases.
template <class Subject> struct Row {
    std::string_view mnemonic;
    Phases phases;
    Takes takes;
    bool (Subject::*handler)(const Request&);
    int amount = 0;
};

enum class Verdict { Taken, WrongPhase, BadArgument, Unknown };

/// Finds the command for a text: the longest mnemonic it begins with.
class CommandTable {
public:
    template <class Subject> void enroll(Subject& subject, std::span<const Row<Subject>> rows) {
        for (const Row<Subject>& row : rows) {
            entries_.push_back({row.mnemonic, row.phases, row.takes, row.amount,
                                [&subject, handler = row.handler](const Request& request) {
                                    return (subject.*handler)(request);
                                }});
        }
    }

    [[nodiscard]] Verdict run(std::string_view text, int phase) const;

private:
    struct Entry {
        std::string_view mnemonic;
        Phases phases;
        Takes takes;
        int amount;
        std::function<bool(const Request&)> handler;
    };

    std::vector<Entry> entries_;
};

} // namespace simulator
