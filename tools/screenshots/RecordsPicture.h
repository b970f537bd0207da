#pragma once

#include <string_view>

#include <QImage>
#include <QSize>

namespace quillon {

/// The window of the records on a screen of that size, when a visit has just been saved.
[[nodiscard]] QImage recordsPicture(QSize screen, std::string_view texts);

} // namespace quillon
