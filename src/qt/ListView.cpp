#include "qt/ListView.h"

#include <algorithm>
#include <functional>

#include <QKeyEvent>
#include <QScreen>

#include "qt/AccessibilityNotifier.h"
#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

namespace {

constexpr int kEntryHeight = 40;

/// The open entries. Closes itself when one is taken, on Escape, and when a finger falls elsewhere.
class ListPopup final : public QWidget {
public:
    using Taken = std::function<void(int)>;

    ListPopup(const Control& control, QWidget* parent, Taken taken)
        : QWidget(parent, Qt::Popup), entries_(control.items()), font_(consoleFont(control.fontSize())),
          marked_(control.listIndex()), taken_(std::move(taken)) {
        setAttribute(Qt::WA_DeleteOnClose);
        for (std::string& entry : entries_) {
            entry = control.onScreen(entry);
        }
    }

    [[nodiscard]] QSize sizeHint() const override {
        int width = parentWidget()->width();
        for (const std::string& entry : entries_) {
            width = std::max(width, QFontMetrics(font_).horizontalAdvance(toQt(entry)) + 40);
        }
        return {width, static_cast<int>(entries_.size()) * kEntryHeight + 2};
    }

protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QPainter painter(this);
        painter.fillRect(rect(), QColor::fromRgb(kStrongEdge));
        for (int i = 0; i < static_cast<int>(entries_.size()); ++i) {
            const QRect place(1, 1 + i * kEntryHeight, width() - 2, kEntryHeight);
            const bool marked = i == marked_;
            painter.fillRect(place, QColor::fromRgb(marked ? kPressedFace : kField));
            if (marked) {
                painter.fillRect(QRect(place.left(), place.top(), 5, place.height()),
                                 QColor::fromRgb(kStrongEdge));
            }
            painter.setPen(QColor::fromRgb(kInk));
            paintText(painter, place.adjusted(14, 0, -6, 0), toQt(entries_[static_cast<std::size_t>(i)]),
                      font_, Qt::AlignVCenter | Qt::AlignLeft);
        }
    }

    void mousePressEvent(QMouseEvent* event) override {
        if (rect().contains(event->pos())) {
            mark(entryAt(event->pos()));
        } else {
            close();
        }
    }

    void mouseMoveEvent(QMouseEvent* event) override {
        if (event->buttons() != Qt::NoButton && rect().contains(event->pos())) {
            mark(entryAt(event->pos()));
        }
    }

    void mouseReleaseEvent(QMouseEvent* event) override {
        if (rect().contains(event->pos())) {
            take(entryAt(event->pos()));
        }
    }

    void keyPressEvent(QKeyEvent* event) override {
        const int last = static_cast<int>(entries_.size()) - 1;
        switch (event->key()) {
        case Qt::Key_Up:
            return mark(std::max(0, marked_ - 1));
        case Qt::Key_Down:
            return mark(std::min(last, marked_ + 1));
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_Space:
            return take(marked_);
        default:
            close();
        }
    }

private:
    [[nodiscard]] int entryAt(QPoint place) const {
        return std::clamp((place.y() - 1) / kEntryHeight, 0, static_cast<int>(entries_.size()) - 1);
    }

    void mark(int entry) {
        marked_ = entry;
        update();
    }

    void take(int entry) {
        // Closed first: the handler may open a message box or take the list off the screen.
        const Taken taken = taken_;
        close();
        if (entry >= 0) {
            taken(entry);
        }
    }

    std::vector<std::string> entries_;
    QFont font_;
    int marked_;
    Taken taken_;
};

} // namespace

void ListView::open() {
    if (control().items().empty() || !input_.reachable(control()) || popup_ != nullptr) {
        return;
    }
    popup_ = new ListPopup(control(), this, [this](int entry) {
        if (entry < static_cast<int>(control().items().size())) {
            const std::string text = control().items()[static_cast<std::size_t>(entry)];
            input_.select(control(), text);
        }
    });
    QRect place(mapToGlobal(QPoint(0, height())), popup_->sizeHint());
    const QRect room = screen()->geometry();
    if (place.bottom() > room.bottom()) {
        place.moveBottom(mapToGlobal(QPoint(0, 0)).y() - 1);
    }
    place.moveTop(std::max(place.top(), room.top()));
    place.moveLeft(std::max(room.left(), std::min(place.left(), room.right() - place.width())));
    popup_->setGeometry(place);
    popup_->show();
    if (AccessibilityNotifier* news = AccessibilityNotifier::of(*this)) {
        connect(popup_, &QObject::destroyed, news, [news] { news->look(); });
        news->look();
    }
}

void ListView::hideEvent(QHideEvent* /*event*/) {
    if (popup_ != nullptr) {
        popup_->close();
    }
}

QColor ListView::background() const {
    if (!isEnabled()) {
        return backgroundColour(control());
    }
    return pressed() ? QColor::fromRgb(kPressedFace) : screenColour(control().backColour());
}

double ListView::arrowArm() const {
    return std::min(6.0, height() / 5.0);
}

std::optional<Words> ListView::words() const {
    return Words{rect().adjusted(7, 1, static_cast<int>(-14 - 2 * arrowArm()), -1),
                 toQt(control().onScreen(control().text())),
                 consoleFont(control().fontSize()),
                 QColor::fromRgb(isEnabled() ? kInk : kMutedInk),
                 background(),
                 Qt::AlignVCenter | Qt::AlignLeft};
}

void ListView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const Words text = *words();
    paintPlate(painter, facePlace(), background(), QColor::fromRgb(isEnabled() ? kEdge : kFaintEdge), 1, 3);
    const double arm = arrowArm();
    const QPointF tip(width() - 8 - arm, height() / 2.0 + arm / 2);
    painter.setPen(QPen(text.ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({tip - QPointF(arm, arm), tip, tip + QPointF(arm, -arm)}));
    paintWords(painter, text);
    paintFocusMark(painter);
}

} // namespace quillon
