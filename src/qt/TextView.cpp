#include "qt/TextView.h"

#include <algorithm>

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

TextView::TextView(Control& control, Input& input, QWidget* parent, const Indicators* indicators)
    : ControlView(control, parent, indicators), input_(input) {
    makeEditor();
}

QWidget* TextView::editor() const {
    return line_ != nullptr ? static_cast<QWidget*>(line_) : lines_;
}

void TextView::makeEditor() {
    delete editor();
    line_ = nullptr;
    lines_ = nullptr;
    dressed_.reset();
    // It becomes a child once it is known as the editor, for the same reason as a view.
    if (control().multiLine()) {
        lines_ = new QPlainTextEdit;
        lines_->setFrameShape(QFrame::NoFrame);
        lines_->setUndoRedoEnabled(false);
        lines_->setTabChangesFocus(true);
        connect(lines_, &QPlainTextEdit::textChanged, this, [this] { typed(lines_->toPlainText()); });
    } else {
        line_ = new QLineEdit;
        line_->setFrame(false);
        connect(line_, &QLineEdit::textEdited, this, [this](const QString& text) { typed(text); });
    }
    editor()->setParent(this);
    editor()->setFocusPolicy(Qt::ClickFocus); // the Tab key is the router's
    editor()->setContextMenuPolicy(Qt::NoContextMenu);
    editor()->show();
}

void TextView::typed(const QString& text) {
    if (!input_.type(control(), fromQtLines(text))) {
        sync();
    }
}

void TextView::sync() {
    if (control().multiLine() != (lines_ != nullptr)) {
        makeEditor();
    }
    ControlView::sync();
    QWidget& box = *editor();
    const QSignalBlocker quiet(box);
    box.setGeometry(rect().adjusted(7, 3, -7, -4));
    const bool reading = control().readOnly();
    QFont font = consoleFont(control().fontSize(), reading && line_ != nullptr);
    font.setItalic(looksOld());
    box.setFont(font);
    const std::pair dress(control().backColour(), looksOld());
    if (dressed_ != dress) {
        dressed_ = dress;
        QPalette colours = consolePalette();
        if (dress.second) {
            colours.setColor(QPalette::Base, Qt::transparent); // the hatching shows through
            colours.setColor(QPalette::Text, ink());
        } else if (dress.first != kWindowColour) {
            colours.setColor(QPalette::Base, screenColour(dress.first));
        }
        box.setPalette(colours);
    }
    const QString text = toQtLines(control().text());
    if (lines_ != nullptr) {
        lines_->setReadOnly(reading);
        if (lines_->toPlainText() != text) {
            lines_->setPlainText(text);
        }
    } else {
        // A reading looks like every other value; what can be typed starts at the left, above a line.
        line_->setReadOnly(reading);
        line_->setAlignment(Qt::AlignVCenter | (reading ? Qt::AlignHCenter : Qt::AlignLeft));
        if (line_->text() != text) {
            const int cursor = line_->cursorPosition();
            line_->setText(text);
            line_->setCursorPosition(std::min(cursor, static_cast<int>(text.size())));
        }
    }
}

bool TextView::looksOld() const {
    return control().readOnly() && !control().text().empty() && holdsOld();
}

QColor TextView::ink() const {
    return QColor::fromRgb(isEnabled() && !looksOld() ? kInk : kMutedInk);
}

QColor TextView::background() const {
    return isEnabled() ? screenColour(control().backColour()) : backgroundColour(control());
}

std::optional<Words> TextView::words() const {
    if (line_ == nullptr) {
        return std::nullopt; // many lines scroll
    }
    constexpr int kEditorMargin = 2; // Qt's own, left and right of the text
    return Words{line_->geometry().adjusted(kEditorMargin, 0, -kEditorMargin, 0),
                 line_->text(),
                 line_->font(),
                 ink(),
                 background(),
                 line_->alignment()};
}

void TextView::resizeEvent(QResizeEvent* /*event*/) {
    editor()->setGeometry(rect().adjusted(7, 3, -7, -4));
}

void TextView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool marked = control().backColour() == kRefusedColour;
    paintPlate(painter, facePlace(), background(),
               QColor::fromRgb(marked        ? kAlarmInk
                               : isEnabled() ? kEdge
                                             : kFaintEdge),
               marked ? 3 : 1, 2);
    if (looksOld()) {
        paintOld(painter, facePlace().adjusted(2, 2, -2, -2));
    }
    if (isEnabled() && !marked && !control().readOnly()) {
        painter.fillRect(QRectF(2, height() - 4, width() - 4, 3), QColor::fromRgb(kStrongEdge));
    }
    paintFocusMark(painter);
}

} // namespace quillon
