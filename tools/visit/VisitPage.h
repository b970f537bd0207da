#pragma once

#include "ReportPage.h"
#include "ReportTexts.h"
#include "Visit.h"

namespace quillon {

/// The whole report of a visit; with an earlier one it tells what has changed since.
[[nodiscard]] ReportPage pageOf(const Visit& visit, const ReportTexts& texts, const Visit* before = nullptr);

} // namespace quillon
