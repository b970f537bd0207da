#pragma once

#include "ReportPage.h"
#include "ReportTexts.h"
#include "Visit.h"

namespace quillon {

/// The whole report of a visit.
[[nodiscard]] ReportPage pageOf(const Visit& visit, const ReportTexts& texts);

} // namespace quillon
