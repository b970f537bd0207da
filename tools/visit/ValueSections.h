#pragma once

#include "ReportPage.h"
#include "ReportWords.h"

namespace quillon {

// The parts of a report that tell values of the generator as they were found and as they were left.

[[nodiscard]] Section configurationSection(const Visit& visit, const ReportWords& words);
[[nodiscard]] Section calibrationSection(const Visit& visit, const ReportWords& words);
[[nodiscard]] Section counterSection(const Visit& visit, const ReportWords& words);
[[nodiscard]] Section readySection(const Visit& visit, const ReportWords& words);

/// Names of the workstations of whose configuration nothing is known.
[[nodiscard]] std::vector<std::string> unseenWorkstations(const Visit& visit);

} // namespace quillon
