#pragma once

#include "sim/Assembly.h"

#include <string>
#include <string_view>

namespace simulator {

/// Carries out one command of the person in front of the machine. The answer may be empty; an error begins
/// with '?'.
[[nodiscard]] std::string carryOut(Assembly& generator, std::string_view line);

/// Whether the line begins with a command that there is.
[[nodiscard]] bool isCommand(std::string_view line);

/// The commands, one a line.
[[nodiscard]] std::string deskHelp();

} // namespace simulator
