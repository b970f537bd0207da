#pragma once

#include <string>

#include "ReportWords.h"

namespace quillon {

/// The course of a visit as a drawing: modes as bands, the tube heat as a line, exposures, errors and
/// silences; and a line of words for the bands. As part of an HTML page.
[[nodiscard]] std::string courseDrawing(const Visit& visit, const ReportWords& words);

} // namespace quillon
