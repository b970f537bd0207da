#pragma once

#include "ReportPage.h"
#include "ReportWords.h"

namespace quillon {

// The parts of a report that tell what happened, and when.

[[nodiscard]] Section courseSection(const Visit& visit, const ReportWords& words);
[[nodiscard]] Section exposureSection(const Visit& visit, const ReportWords& words);
[[nodiscard]] Section errorSection(const Visit& visit, const ReportWords& words);
[[nodiscard]] Section warningSection(const Visit& visit, const ReportWords& words);
[[nodiscard]] Section lineSection(const Visit& visit, const ReportWords& words);
[[nodiscard]] Section workSection(const Visit& visit, const ReportWords& words);

} // namespace quillon
