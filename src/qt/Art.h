#pragma once

#include <string_view>

#include <QPainter>

namespace quillon {

/// Draws one of the console's pictures into a place: "up", "down", "preparation", "exposure", "rest" (and
/// "rest-radiation"), "frame", and the signs "alarm", "warning", "good", "radiation" and "lock". An unknown
/// name draws nothing. `ink` is the colour of lines and signs.
void paintArt(QPainter& painter, std::string_view name, const QRectF& place, const QColor& ink);

/// The edge of a lamp's sign in pixels for an index of its image list; 0 where the place decides.
[[nodiscard]] int artPixels(int size);

} // namespace quillon
