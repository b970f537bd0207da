#include "qt/LabelView.h"

#include <algorithm>

#include <QFontMetrics>

#include "console/ConsoleTexts.h"
#include "qt/Art.h"
#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

namespace {

constexpr int kSmallPlate = 24; ///< pixels of height, below which a plate has a thin edge or none

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

/// What is lit for the operator fills its place, up to twice the letters that it was laid out with.
void enlarge(Words& words) {
    const int laidOut = words.font.pixelSize();
    for (int size = 2 * laidOut; size > laidOut; --size) {
        words.font.setPixelSize(size);
        const int flags = static_cast<int>(words.alignment) | Qt::TextWordWrap;
        const QRect needed = QFontMetrics(words.font).boundingRect(words.place, flags, words.text);
        if (needed.width() <= words.place.width() && needed.height() <= words.place.height()) {
            return;
        }
    }
    words.font.setPixelSize(laidOut);
}

} // namespace

const RankLook* LabelView::rank() const {
    return control().caption().empty() ? nullptr : rankLook(control().role());
}

bool LabelView::hasPlate() const {
    return control().role() == Role::Field || rank() != nullptr;
}

QRect LabelView::signPlace() const {
    if (control().role() == Role::Interlock) {
        const int edge = height() - 3;
        return {2, 1, edge, edge};
    }
    // Beside the words in a low label, above them in a high one.
    const bool low = width() > 2.5 * height();
    const int edge = low ? std::min(height() - 8, width() / 6) : std::clamp(height() / 4, 12, 40);
    return {8, low ? (height() - edge) / 2 : 6, edge, edge};
}

bool LabelView::looksOld() const {
    return control().role() == Role::Field && !control().caption().empty() && holdsOld();
}

QColor LabelView::background() const {
    const bool own = control().backColour() != kNormalColour;
    if (!hasPlate()) {
        return own ? screenColour(control().backColour()) : backgroundColour(control());
    }
    if (own && control().backColour() != kWindowColour) {
        return screenColour(control().backColour());
    }
    if (const RankLook* look = rank()) {
        return QColor::fromRgb(look->face);
    }
    return looksDisabled() ? backgroundColour(control()) : QColor::fromRgb(kField);
}

std::optional<Words> LabelView::words() const {
    const RankLook* look = rank();
    // The note of an alarm corrects its words, so it comes first.
    const bool noted = !control().note().empty() && look != nullptr;
    const std::string note = noted ? control().note() + "\n" : "";
    Words words{rect(),
                toQtLines(note + std::string(control().onScreen(control().caption()))).trimmed(),
                consoleFont(control().fontSize(), control().role() != Role::Plain),
                QColor::fromRgb(look != nullptr                 ? look->ink
                                : looksDisabled() || looksOld() ? kMutedInk
                                                                : kInk),
                background(),
                Qt::AlignVCenter | alignmentOf(control().textSide())};
    if (indicators() != nullptr && control().saysOff()) {
        words.text = toQt(indicators()->texts.sOff);
        words.ink = QColor::fromRgb(kMutedInk);
    }
    words.font.setItalic(looksOld());
    if (control().role() == Role::Interlock) {
        words.place.adjust(signPlace().right() + 6, 0, -4, 0);
        words.font.setBold(false); // the text has to be narrowed already
        words.oneLine = true;
    } else if (look != nullptr) {
        const QRect sign = signPlace();
        const bool beside = sign.bottom() > height() / 2;
        words.place.adjust(beside ? sign.right() + 6 : 8, beside ? 2 : sign.bottom() + 2, -6, -4);
        enlarge(words);
    } else if (hasPlate()) {
        words.place.adjust(4, 1, -4, -1);
    } else if (control().role() == Role::Prompt) {
        words.place.setLeft(10);
    } else if (hasSmallNote()) {
        words.place.setBottom(smallNotePlace().top() - 1);
    } else {
        // Half a blank of space where two labels make one phrase.
        const int gap = QFontMetrics(words.font).horizontalAdvance(QLatin1Char(' ')) / 2;
        words.place.adjust(control().textSide() == TextSide::PhraseEnd ? gap : 0, 0,
                           control().textSide() == TextSide::PhraseStart ? -gap : 0, 0);
    }
    return words;
}

bool LabelView::hasSmallNote() const {
    return control().role() == Role::Plain && !control().note().empty();
}

QRect LabelView::smallNotePlace() const {
    return rect().adjusted(2, height() * 62 / 100, -2, -1);
}

std::vector<Words> LabelView::notes() const {
    if (!hasSmallNote()) {
        return {};
    }
    QFont font = consoleFont(1);
    font.setPixelSize(std::max(8, smallNotePlace().height() * 7 / 10));
    return {
        Words{smallNotePlace(), toQtLines(control().note()), font, QColor::fromRgb(kMutedInk), background()}};
}

void LabelView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (const RankLook* look = rank()) {
        painter.fillRect(rect(), backgroundColour(control()));
        const bool small = height() < kSmallPlate;
        paintPlate(painter, small ? QRectF(rect()) : facePlace(), background(), QColor::fromRgb(look->edge),
                   small ? 0 : 3, small ? 2 : 4);
        paintArt(painter, look->sign, signPlace(), words()->ink);
    } else if (hasPlate()) {
        paintPlate(painter, facePlace(), background(), QColor::fromRgb(isEnabled() ? kEdge : kFaintEdge), 1,
                   2);
        if (looksOld()) {
            paintOld(painter, facePlace().adjusted(2, 2, -2, -2));
        }
    } else {
        painter.fillRect(rect(), background());
        if (control().role() == Role::Prompt && !control().caption().empty()) {
            painter.fillRect(QRect(0, 0, 4, height()), QColor::fromRgb(kStrongEdge));
        }
    }
    paintWords(painter, *words());
    for (const Words& note : notes()) {
        paintWords(painter, note);
    }
}

} // namespace quillon
