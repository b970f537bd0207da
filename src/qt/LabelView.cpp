#include "qt/LabelView.h"

#include <QFontMetrics>

#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

namespace {

Qt::Alignment alignmentOf(TextSide side) {
    switch (side) {
    case TextSide::Middle:
        break;
    case TextSide::PhraseStart:
        return Qt::AlignRight;
    case TextSide::Left:
    case TextSide::PhraseEnd:
        return Qt::AlignLeft;
    }
    return Qt::AlignHCenter;
}

} // namespace

bool LabelView::hasPlate() const {
    return control().role() == Role::Field || (control().lamp() && !control().caption().empty());
}

QColor LabelView::ground() const {
    const bool own = control().backColour() != kNormalColour;
    if (!hasPlate()) {
        return own ? screenColour(control().backColour()) : groundColour(control());
    }
    if (own && control().backColour() != kWindowColour) {
        return screenColour(control().backColour());
    }
    if (looksDisabled()) {
        return groundColour(control());
    }
    return QColor::fromRgb(control().lamp() ? kLampFace : kField);
}

std::optional<Words> LabelView::words() const {
    Words words{rect(),
                toQtLines(control().caption()).trimmed(),
                consoleFont(control().fontSize(), control().role() != Role::Plain),
                QColor::fromRgb(looksDisabled()                   ? kMutedInk
                                : control().role() == Role::Alarm ? kAlarmInk
                                                                  : kInk),
                ground(),
                Qt::AlignVCenter | alignmentOf(control().textSide())};
    if (hasPlate()) {
        words.place.adjust(4, 1, -4, -1);
    } else if (control().role() == Role::Prompt) {
        words.place.setLeft(10);
    } else {
        // Half a blank of space where a phrase is parted.
        const int gap = QFontMetrics(words.font).horizontalAdvance(QLatin1Char(' ')) / 2;
        words.place.adjust(control().textSide() == TextSide::PhraseEnd ? gap : 0, 0,
                           control().textSide() == TextSide::PhraseStart ? -gap : 0, 0);
    }
    return words;
}

void LabelView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (hasPlate()) {
        const bool lamp = control().lamp();
        paintPlate(painter, facePlace(), ground(),
                   QColor::fromRgb(lamp          ? kInk
                                   : isEnabled() ? kEdge
                                                 : kFaintEdge),
                   lamp && height() >= 20 ? 2 : 1, lamp ? 3 : 2);
    } else {
        painter.fillRect(rect(), ground());
        if (control().role() == Role::Prompt && !control().caption().empty()) {
            painter.fillRect(QRect(0, 0, 4, height()), QColor::fromRgb(kStrongEdge));
        }
    }
    paintWords(painter, *words());
}

} // namespace quillon
