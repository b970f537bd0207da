#pragma once

#include <string>

#include "ReportPage.h"
#include "ReportTexts.h"
#include "Visit.h"

namespace quillon {

/// A page as plain text of 100 columns, in UTF-8.
[[nodiscard]] std::string plainText(const ReportPage& page);

/// The report as such a text. The course is told by its modes.
[[nodiscard]] std::string textOf(const Visit& visit, const ReportTexts& texts, const Visit* before = nullptr);

} // namespace quillon
