#pragma once

#include <string_view>

#include <QColor>
#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QString>

#include "ui/Control.h"

namespace quillon {

// The window's own colours. Text on every background it stands on reaches a contrast of at least 4.5 to 1.
inline constexpr QRgb kInk = 0xFF14202B;        ///< text and pictures
inline constexpr QRgb kMutedInk = 0xFF525C66;   ///< text of what cannot be used now
inline constexpr QRgb kSurface = 0xFFD5DBE0;    ///< the console's background
inline constexpr QRgb kFace = 0xFFF5F7F9;       ///< a key at rest
inline constexpr QRgb kQuietFace = 0xFFE6EBEF;  ///< background of less important things
inline constexpr QRgb kField = 0xFFFFFFFF;      ///< where values and typed text stand
inline constexpr QRgb kEdge = 0xFF6C7985;       ///< outlines
inline constexpr QRgb kFaintEdge = 0xFFA3ADB6;  ///< outlines of what cannot be used, of frames
inline constexpr QRgb kStrongEdge = 0xFF1F3B57; ///< outline of what is pressed or stands out
inline constexpr QRgb kPressedFace = 0xFFB9CDDF;
inline constexpr QRgb kActiveMark = 0xFF8A5A00; ///< bar and outline of a key that is on
inline constexpr QRgb kOldHatch = 0xFFC3CBD3;   ///< behind a value that may not hold any more
inline constexpr QRgb kFocusRing = 0xFF0B57D0;
inline constexpr QRgb kAlarmInk = 0xFF8E0F0F;  ///< outline of an alarm, and of what was refused
inline constexpr QRgb kAlarmFace = 0xFFB3161B; ///< an alarm or an interlock that stands
inline constexpr QRgb kLampFace = 0xFFFFD54A;  ///< a warning that stands
inline constexpr QRgb kGoodFace = 0xFFDCF1DE;  ///< what has gone well
inline constexpr QRgb kGoodMark = 0xFF17652D;
inline constexpr QRgb kRadiation = 0xFFFFD500; ///< background of the sign for radiation

/// The palette of the application, for the few widgets that Qt draws.
[[nodiscard]] QPalette consolePalette();

/// A colour of the model on the screen; system colours and the console's background come from the palette.
[[nodiscard]] QColor screenColour(Colour colour);

/// The colour of the background on which a control lies: of the nearest container that has one of its own.
[[nodiscard]] QColor backgroundColour(const Control& control);

/// The console's family, or what the system has in its place, in the given size at 96 dots an inch.
[[nodiscard]] QFont consoleFont(double points, bool bold = false);

/// A text as it stands on a widget.
struct Words {
    QRect place;
    QString text;
    QFont font;
    QColor ink;
    QColor background; ///< what it is painted on
    Qt::Alignment alignment = Qt::AlignCenter;
    bool oneLine = false; ///< as high as its place allows, and narrowed where it is too long
};

/// How a text goes into its place: in its font, in a smaller one where it would be clipped, and narrowed
/// where that is not enough.
struct Fit {
    QFont font;
    bool whole;       ///< false when even the smallest is too large, so that words are broken
    double width = 1; ///< of its letters, as a part of their own
};
[[nodiscard]] Fit fitText(const QRect& place, const QString& text, QFont font, Qt::Alignment alignment);
[[nodiscard]] Fit fitWords(const Words& words);

/// Draws a text within a place, wrapped, with the painter's pen.
void paintText(QPainter& painter, const QRect& place, const QString& text, const QFont& font,
               Qt::Alignment alignment);
void paintWords(QPainter& painter, const Words& words);

/// A flat plate with round corners. The outline lies inside the place.
void paintPlate(QPainter& painter, const QRectF& place, const QColor& fill, const QColor& edge, double width,
                double radius = 4);

/// How something that is lit looks, by its rank: never by its colour alone.
struct RankLook {
    QRgb face;
    QRgb edge;
    QRgb ink;
    std::string_view sign; ///< one of Art's
};
/// Empty for a role that is no rank.
[[nodiscard]] const RankLook* rankLook(Role role);

} // namespace quillon
