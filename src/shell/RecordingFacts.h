#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/WallTime.h"

namespace quillon {

/// What can be told of a recorded session without playing it.
struct RecordingFacts {
    std::optional<WallTime> begun; ///< by the PC's clock
    std::optional<WallTime> ended;
    Milliseconds length = 0;
    bool spoke = false; ///< the generator did
    int presses = 0;
    int gaps = 0;
    std::string device; ///< of the port that was opened last
};

[[nodiscard]] RecordingFacts factsOf(std::string_view recording);

using FactsOfSession = std::function<const RecordingFacts&(std::size_t)>;

/// The first of the sessions that make one visit with the last before `end`; that one itself where the
/// generator did not speak in it.
[[nodiscard]] std::size_t visitBegin(std::size_t end, const FactsOfSession& facts);

/// The sessions of a visit, oldest first: one in which the generator spoke, and those that ended at the same
/// device less than a quarter of an hour before its start. Visits are counted from the newest, which is 1;
/// sessions by their order.
[[nodiscard]] std::vector<std::size_t> visitAmong(std::size_t sessions, const FactsOfSession& facts,
                                                  int visit);

} // namespace quillon
