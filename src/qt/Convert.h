#pragma once

#include <string>
#include <string_view>

#include <QRect>
#include <QSize>
#include <QString>

#include "ui/Control.h"

namespace quillon {

/// Pixels of 1/96 inch; the window never follows the resolution a screen claims to have.
inline constexpr Twips kTwipsPerPixel = 15;

/// One byte a character, Windows-1252, as the generator's wire and all text of the model is.
[[nodiscard]] QString toQt(std::string_view text);
/// The reverse; a character that the code page lacks becomes a question mark.
[[nodiscard]] std::string fromQt(const QString& text);

/// Line ends of the model (CR LF, or a lone CR or LF) as Qt's.
[[nodiscard]] QString toQtLines(std::string_view text);
/// Qt's line ends as CR LF.
[[nodiscard]] std::string fromQtLines(const QString& text);

/// Edges are rounded one by one, so that what touches in the model touches on the screen.
[[nodiscard]] QRect toPixels(const Place& place);
[[nodiscard]] constexpr Twips toTwips(int pixels) {
    return pixels * kTwipsPerPixel;
}

/// A length on the panel of ten inches whose screen the window fills but for its margin, in pixels.
[[nodiscard]] double panelPixels(double millimetres, QSize window);

} // namespace quillon
