#pragma once

#include <QAccessible>

#include "qt/ControlView.h"

namespace quillon {

/// The text of a text box. What is written to it is typed, so the rules of typing hold.
class TextAccess final : public QAccessibleTextInterface, public QAccessibleEditableTextInterface {
public:
    explicit TextAccess(ControlView& view) : view_(view) {}

    [[nodiscard]] int characterCount() const override;
    [[nodiscard]] QString text(int start, int end) const override;
    [[nodiscard]] int cursorPosition() const override;
    void setCursorPosition(int position) override;

    void deleteText(int start, int end) override { replaceText(start, end, {}); }
    void insertText(int offset, const QString& text) override { replaceText(offset, offset, text); }
    void replaceText(int start, int end, const QString& text) override;

    // All letters have the place of the whole text, and none is selected.
    void selection(int index, int* start, int* end) const override;
    [[nodiscard]] int selectionCount() const override { return 0; }
    void addSelection(int /*start*/, int /*end*/) override {}
    void removeSelection(int /*index*/) override {}
    void setSelection(int /*index*/, int /*start*/, int /*end*/) override {}
    [[nodiscard]] QRect characterRect(int offset) const override;
    [[nodiscard]] int offsetAtPoint(const QPoint& /*point*/) const override { return 0; }
    void scrollToSubstring(int /*start*/, int /*end*/) override {}
    QString attributes(int offset, int* start, int* end) const override;

private:
    [[nodiscard]] QString whole() const;

    ControlView& view_;
};

} // namespace quillon
