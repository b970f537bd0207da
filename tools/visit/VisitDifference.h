#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "ReportPage.h"
#include "ReportTexts.h"
#include "Visit.h"

namespace quillon {

/// As found or as left.
using Side = std::optional<std::string> ValueFact::*;

/// What two visits know of the same values. What only one of them knows is no change.
struct Difference {
    struct Row {
        ValueName name;
        std::string first;
        std::string second;
    };
    std::vector<Row> changed;
    std::int64_t same = 0;
    std::vector<ValueName> onlyFirst;
    std::vector<ValueName> onlySecond;
};

[[nodiscard]] Difference differenceOf(const Visit& first, Side firstSide, const Visit& second,
                                      Side secondSide);

/// What has changed between the visits, and what over both.
[[nodiscard]] ReportPage comparisonOf(const Visit& first, const Visit& second, const ReportTexts& texts);

/// What has changed since an earlier visit, as a part of the later one's report.
[[nodiscard]] Section sinceSection(const Visit& before, const Visit& visit, const ReportTexts& texts);

} // namespace quillon
