#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "Session.h"

namespace quillon {

/// Where a search begins, and what the generator may do there.
struct Ground {
    std::string_view name;
    Plan start;
    std::vector<std::string> generator; ///< scenario commands
};
[[nodiscard]] const std::vector<Ground>& grounds();
/// The middle of every run, before a simulated generator.
[[nodiscard]] std::vector<Ground> groundsOfScenes();

/// The few moves that make a difference: the keys of modes and panels that are in reach, the generator's, and
/// the waits.
[[nodiscard]] std::vector<std::string> movesFrom(Session& session, const Ground& ground);

/// Random actions of an operator and faults of a generator, from one seed, with all that a hand can do;
/// everything follows from the seed.
class Chance {
public:
    Chance(const Ground& ground, std::uint32_t seed) : ground_(ground), engine_(seed) {}

    /// A simulated generator of some kind; for a ground without one, its own start.
    [[nodiscard]] Plan plan();
    /// The next command: a key among those in reach, a wait, something that befalls the generator.
    [[nodiscard]] std::string next(Session& session);
    [[nodiscard]] std::size_t below(std::size_t limit) { return engine_() % limit; }

private:
    template <typename List> [[nodiscard]] auto& oneOf(const List& list) {
        return list[below(std::size(list))];
    }
    [[nodiscard]] std::string hand(Session& session);
    [[nodiscard]] std::string touch(Session& session, const std::string& name);
    [[nodiscard]] std::string mishap();
    [[nodiscard]] std::string report();

    const Ground& ground_;
    std::mt19937 engine_; // no standard distributions: they differ between libraries
};

} // namespace quillon
