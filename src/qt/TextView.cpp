#include "qt/TextView.h"

#include <algorithm>

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

TextView::TextView(Control& control, Input& input, QWidget* parent)
    : ControlView(control, parent), input_(input) {
    makeEditor();
}

QWidget* TextView::editor() const {
    return line_ != nullptr ? static_cast<QWidget*>(line_) : lines_;
}

void TextView::makeEditor() {
    delete editor();
    line_ = nullptr;
    lines_ = nullptr;
    if (control().multiLine()) {
        lines_ = new QPlainTextEdit(this);
        lines_->setFrameShape(QFrame::NoFrame);
        lines_->setUndoRedoEnabled(false);
        lines_->setTabChangesFocus(true);
        connect(lines_, &QPlainTextEdit::textChanged, this, [this] { typed(lines_->toPlainText()); });
    } else {
        line_ = new QLineEdit(this);
        line_->setFrame(false);
        connect(line_, &QLineEdit::textEdited, this, [this](const QString& text) { typed(text); });
    }
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
    box.setGeometry(rect().adjusted(4, 2, -4, -2));
    box.setFont(consoleFont(control().fontSize()));
    QPalette colours = box.palette();
    if (control().backColour() != kWindowColour) {
        colours.setColor(QPalette::Base, screenColour(control().backColour()));
    } else {
        colours = consolePalette();
    }
    box.setPalette(colours);
    const QString text = toQtLines(control().text());
    if (lines_ != nullptr) {
        lines_->setReadOnly(control().readOnly());
        if (lines_->toPlainText() != text) {
            lines_->setPlainText(text);
        }
    } else {
        line_->setReadOnly(control().readOnly());
        if (line_->text() != text) {
            const int cursor = line_->cursorPosition();
            line_->setText(text);
            line_->setCursorPosition(std::min(cursor, static_cast<int>(text.size())));
        }
    }
}

void TextView::resizeEvent(QResizeEvent* /*event*/) {
    editor()->setGeometry(rect().adjusted(4, 2, -4, -2));
}

void TextView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const bool marked = control().backColour() == kRefusedColour;
    QColor fill = screenColour(control().backColour());
    if (!isEnabled()) {
        fill = groundColour(control());
    }
    paintPlate(painter, rect(), fill,
               QColor::fromRgb(marked        ? kAlarmInk
                               : isEnabled() ? kEdge
                                             : kFaintEdge),
               marked ? 3 : 1, 2);
    paintFocusMark(painter);
}

} // namespace quillon
