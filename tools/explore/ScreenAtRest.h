#pragma once

#include <string>

#include "Facts.h"

namespace quillon {

// What is wrong with the screen while nothing is under way; empty where nothing is.

/// It is not what the place where the generator stands asks for.
[[nodiscard]] std::string otherThanItStands(const Facts& facts);
/// The prompt tells of a run.
[[nodiscard]] std::string wordsOfNoRun(const Facts& facts);
/// The prompt names keys for an answer.
[[nodiscard]] std::string questionWithoutKeys(const Facts& facts);
[[nodiscard]] std::string blinksAtRest(const Facts& facts);

} // namespace quillon
