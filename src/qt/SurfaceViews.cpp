#include "qt/SurfaceViews.h"

#include <algorithm>
#include <utility>

#include "console/ConsoleTexts.h"
#include "console/StatusLine.h"
#include "console/UnsavedValue.h"
#include "qt/Art.h"
#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

namespace {

constexpr int kCaptionInset = 8;

} // namespace

void SurfaceView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool own = control().backColour() != kNormalColour;
    painter.fillRect(rect(), own ? screenColour(control().backColour()) : backgroundColour(control()));
}

QColor FrameView::background() const {
    const bool own = control().backColour() != kNormalColour;
    return own ? screenColour(control().backColour()) : backgroundColour(control());
}

bool FrameView::unsaved() const {
    return indicators() != nullptr && control().name() == "fraCalValue" && indicators()->unsaved.stands();
}

void FrameView::reconsider() {
    if (std::exchange(shownUnsaved_, unsaved()) != unsaved()) {
        update();
    }
}

std::optional<Words> FrameView::words() const {
    QString caption = toQtLines(control().onScreen(control().caption())).trimmed();
    if (caption.isEmpty()) {
        return std::nullopt;
    }
    if (unsaved()) {
        caption += QStringLiteral(": ") + toQt(indicators()->texts.sNotStored);
    }
    const int room = std::max(0, width() - 2 * kCaptionInset);
    QFont font = consoleFont(control().fontSize(), true);
    if (QFontMetrics(font).horizontalAdvance(caption) > room) {
        font.setBold(false); // narrower, and larger than what would be left of the bold one
    }
    const QFontMetrics metrics(font);
    const int wide = std::min(room, metrics.horizontalAdvance(caption) + 8);
    const int high =
        metrics.boundingRect(rect(), Qt::AlignCenter, caption).height(); // more than that of a font
    return Words{QRect(kCaptionInset, 0, wide, high), caption, font,
                 QColor::fromRgb(isEnabled() ? kInk : kMutedInk),
                 unsaved() ? QColor::fromRgb(kLampFace) : background()};
}

std::vector<Words> FrameView::notes() const {
    std::vector<Words> all;
    for (const Control* value : control().stack()) {
        if (value->kind() != Kind::Label || value->role() != Role::Field || value->note().empty()) {
            continue;
        }
        const QRect place = toPixels(value->place());
        const QRect before(0, place.top(), place.left() - kCaptionInset, place.height());
        const std::vector<Control*>& others = control().stack();
        const bool first = std::none_of(others.begin(), others.end(), [&before](const Control* other) {
            return other->visible() && toPixels(other->place()).intersects(before);
        });
        if (first && before.width() > 0) {
            all.push_back({before.adjusted(kCaptionInset, 0, 0, 0), toQtLines(value->note()),
                           consoleFont(value->fontSize() * 2 / 3),
                           QColor::fromRgb(isEnabled() ? kInk : kMutedInk), background(),
                           Qt::AlignVCenter | Qt::AlignRight});
        }
    }
    return all;
}

void FrameView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.fillRect(rect(), background());
    const auto caption = words();
    QRectF outline(rect());
    if (caption) {
        const int middle = caption->place.height() / 2; // whole pixels
        outline.setTop(middle);
    }
    // Around a single thing there is nothing to group.
    if (control().border() && (caption || control().stack().size() > 1)) {
        paintPlate(painter, outline, background(), QColor::fromRgb(kFaintEdge), 1, 5);
    }
    if (caption) {
        painter.fillRect(caption->place, caption->background);
        paintWords(painter, *caption);
    }
    for (const Words& note : notes()) {
        paintWords(painter, note);
    }
}

std::string PictureView::artNow() const {
    const bool beam = indicators() != nullptr && control().art() == "rest" &&
                      indicators()->status.rays().tone == Tone::Radiation;
    return control().art() + (beam ? "-radiation" : "");
}

void PictureView::reconsider() {
    if (!drawn_.isNull() && std::get<0>(shown_) != artNow()) {
        update();
    }
}

std::optional<Words> PictureView::words() const {
    if (control().note().empty()) {
        return std::nullopt;
    }
    // As high as the free area above what lies in a dialog's frame.
    const int high = height() / 14;
    QFont font = consoleFont(1, true);
    font.setPixelSize(std::max(1, high * 6 / 10));
    return Words{QRect(kCaptionInset, 3, width() - 2 * kCaptionInset, high - 3), toQtLines(control().note()),
                 font, QColor::fromRgb(kInk), backgroundColour(control())};
}

void PictureView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (control().backColour() != kNormalColour) {
        painter.fillRect(rect(), screenColour(control().backColour()));
    }
    // It hardly ever changes, and drawing takes long.
    const QColor ink = QColor::fromRgb(isEnabled() ? kInk : kMutedInk);
    const std::tuple shown(artNow(), size(), ink.rgb());
    if (drawn_.isNull() || shown != shown_) {
        shown_ = shown;
        drawn_ = QPixmap(size() * devicePixelRatioF());
        drawn_.setDevicePixelRatio(devicePixelRatioF());
        drawn_.fill(Qt::transparent);
        QPainter onto(&drawn_);
        paintArt(onto, artNow(), rect(), ink);
    }
    painter.drawPixmap(0, 0, drawn_);
    if (const auto note = words()) {
        paintWords(painter, *note);
    }
}

} // namespace quillon
