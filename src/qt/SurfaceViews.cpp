#include "qt/SurfaceViews.h"

#include <algorithm>

#include "qt/Art.h"
#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

void SurfaceView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool own = control().backColour() != kNormalColour;
    painter.fillRect(rect(), own ? screenColour(control().backColour()) : groundColour(control()));
}

void FrameView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool own = control().backColour() != kNormalColour;
    const QColor ground = own ? screenColour(control().backColour()) : groundColour(control());
    painter.fillRect(rect(), ground);
    const QString caption = toQtLines(control().caption()).trimmed();
    QFont font = consoleFont(control().fontSize(), true);
    const QFontMetrics metrics(font);
    QRectF outline = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    if (!caption.isEmpty()) {
        outline.setTop(metrics.height() / 2.0);
    }
    if (control().border()) {
        paintPlate(painter, outline, Qt::transparent, QColor::fromRgb(kFaintEdge), 1, 5);
    }
    if (!caption.isEmpty()) {
        const int room = std::max(0, width() - 20);
        const QRect place(10, 0, std::min(room, metrics.horizontalAdvance(caption) + 8), metrics.height());
        painter.fillRect(place, ground);
        painter.setPen(QColor::fromRgb(isEnabled() ? kInk : kMutedInk));
        paintText(painter, place, caption, font, Qt::AlignCenter);
    }
}

void PictureView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (control().backColour() != kNormalColour) {
        painter.fillRect(rect(), screenColour(control().backColour()));
    }
    paintArt(painter, control().art(), rect(), QColor::fromRgb(isEnabled() ? kInk : kMutedInk));
}

} // namespace quillon
