#include "qt/AccessibleText.h"

#include <algorithm>

#include <QLineEdit>

#include "qt/AccessibilityNotifier.h"
#include "qt/Convert.h"

namespace quillon {

QString TextAccess::whole() const {
    return view_.isVisible() ? toQtLines(view_.control().text()) : QString();
}

int TextAccess::characterCount() const {
    return static_cast<int>(whole().size());
}

QString TextAccess::text(int start, int end) const {
    const int last = end < 0 ? characterCount() : end;
    return whole().mid(start, std::max(0, last - start));
}

int TextAccess::cursorPosition() const {
    return view_.editor()->inputMethodQuery(Qt::ImCursorPosition).toInt();
}

void TextAccess::setCursorPosition(int position) {
    if (auto* line = qobject_cast<QLineEdit*>(view_.editor())) {
        line->setCursorPosition(position);
    }
}

void TextAccess::replaceText(int start, int end, const QString& text) {
    if (AccessibilityNotifier* news = AccessibilityNotifier::of(view_)) {
        news->type(view_, start, std::max(0, (end < 0 ? characterCount() : end) - start), text);
    }
}

void TextAccess::selection(int /*index*/, int* start, int* end) const {
    *start = *end = 0;
}

QRect TextAccess::characterRect(int /*offset*/) const {
    return {view_.mapToGlobal(QPoint(0, 0)), view_.size()};
}

QString TextAccess::attributes(int /*offset*/, int* start, int* end) const {
    *start = 0;
    *end = characterCount();
    return {};
}

} // namespace quillon
