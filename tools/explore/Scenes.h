#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "console/Runs.h"

namespace quillon {

/// The console in the middle of a run, before a simulated generator that began in Ready.
struct Scene {
    Run run;
    std::string_view name;
    bool closes;     ///< "Close" is in reach
    std::string how; ///< commands with ';' between; a name alone is clicked
    /// The same as scenario commands.
    [[nodiscard]] std::vector<std::string> lines() const;
};
/// One of every run at least.
[[nodiscard]] const std::vector<Scene>& scenes();

} // namespace quillon
