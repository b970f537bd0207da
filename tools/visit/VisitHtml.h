#pragma once

#include <string>

#include "ReportTexts.h"
#include "Visit.h"

namespace quillon {

/// The report as one page that needs nothing else: no script, no other file. It prints on A4.
[[nodiscard]] std::string htmlOf(const Visit& visit, const ReportTexts& texts, const Visit* before = nullptr);

/// The characters of a text that mean something else in HTML, escaped.
[[nodiscard]] std::string escaped(std::string_view text);

} // namespace quillon
