#pragma once

#include <string>
#include <vector>

#include <QColor>

#include "qt/Screen.h"

namespace quillon {

/// What is wrong with the picture on a screen as it stands: text that does not fit or cannot be read,
/// controls that leave their container or lie half over another, captions that are drawn over. Empty when all
/// is well.
[[nodiscard]] std::vector<std::string> inspect(Screen& screen, const Control& form);

/// The same for the status bar alone.
[[nodiscard]] std::vector<std::string> inspectBar(Screen& screen);

/// Keys, lists, sliders and boxes on show that are smaller than a finger.
[[nodiscard]] std::vector<std::string> smallTargets(Screen& screen, const Control& form, int finger);

/// A text on the screen, or one that a screen reader is told, and whose it is; the form's where it is no
/// control's.
struct ShownText {
    std::string path;
    std::string text;
};
[[nodiscard]] std::vector<ShownText> textsOn(Screen& screen, const Control& form);
/// The same in one piece.
[[nodiscard]] std::string textOn(Screen& screen, const Control& form);

/// A control's name with those around it, such as "Quillon/fraRemote/cmdUPSid".
[[nodiscard]] std::string pathOf(const Control& control);

/// 1 for a colour on itself, 21 for black on white.
[[nodiscard]] double contrast(const QColor& a, const QColor& b);
inline constexpr double kReadable = 4.5; ///< below this, text is hard to read

} // namespace quillon
