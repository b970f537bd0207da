#include "TextPage.h"

#include <QScrollBar>
#include <QScroller>
#include <QVBoxLayout>

namespace quillon {

TextPage::TextPage(const PageContext& context)
    : letter_(context.sizes.text), keys_(new QHBoxLayout), text_(new QPlainTextEdit(this)) {
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    page->addLayout(keys_);
    page->addWidget(text_, 1);
    text_->setReadOnly(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text_->setTabChangesFocus(true);
    text_->setLineWrapMode(QPlainTextEdit::NoWrap);
    QScroller::grabGesture(text_->viewport(), QScroller::TouchGesture);
}

/// Its lines are to be seen whole, as long as they can be read.
void TextPage::resizeEvent(QResizeEvent* /*event*/) {
    constexpr int kColumns = 101;
    constexpr int kSmallest = 9;
    QFont font(QStringLiteral("DejaVu Sans Mono"));
    font.setStyleHint(QFont::Monospace);
    const int room = width() - text_->verticalScrollBar()->sizeHint().width() - 2 * letter_;
    int size = letter_ + 1;
    do {
        font.setPixelSize(--size);
    } while (size > kSmallest &&
             QFontMetrics(font).horizontalAdvance(QString(kColumns, QLatin1Char('m'))) > room);
    text_->setFont(font);
}

void TextPage::show(const QString& title, const QString& text, const std::vector<Key>& keys) {
    while (QLayoutItem* old = keys_->takeAt(0)) {
        old->widget()->hide();
        old->widget()->deleteLater();
        delete old;
    }
    QWidget* last = nullptr;
    for (const auto& [words, press] : keys) {
        QPushButton* key = makeKey(words, this, press);
        keys_->addWidget(key, 1);
        setTabOrder(last == nullptr ? this : last, key);
        last = key;
    }
    setTabOrder(last, text_);
    text_->setPlainText(text);
    text_->setAccessibleName(title);
    keys_->itemAt(0)->widget()->setFocus();
}

} // namespace quillon
