#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "Session.h"

namespace quillon {

/// Where a search begins, and what the generator may do there.
struct Ground {
    std::string name;
    Plan start;
    std::vector<std::string> generator; ///< scenario commands
    bool varies = false; ///< a walk may begin with another simulated generator and other switches
};
/// "told", "remote", "orla", "simulated": in Ready.
[[nodiscard]] const std::vector<Ground>& grounds();
/// The middle of every run, before a simulated generator.
[[nodiscard]] const std::vector<Ground>& groundsOfScenes();
/// Every phase that a generator may be found in, one that says nothing, and a port that does not open.
[[nodiscard]] const std::vector<Ground>& groundsOfStarts();
/// All of these.
[[nodiscard]] std::vector<Ground> allGrounds();

/// A key that leads from one state to another.
[[nodiscard]] bool leadsOn(std::string_view name);

/// The few moves that make a difference: the keys of modes and panels that are in reach, the generator's, and
/// the waits.
[[nodiscard]] std::vector<std::string> movesFrom(Session& session, const Ground& ground);
/// What need not be tried in every state: all other keys, a second finger, faults of values, the end.
[[nodiscard]] std::vector<std::string> rareMovesFrom(Session& session);

} // namespace quillon
