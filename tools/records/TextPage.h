#pragma once

#include <functional>
#include <utility>
#include <vector>

#include <QHBoxLayout>
#include <QPlainTextEdit>

#include "Page.h"

namespace quillon {

/// A text to be read, with keys above it.
class TextPage final : public QWidget {
public:
    explicit TextPage(const PageContext& context);

    using Key = std::pair<QString, std::function<void()>>;
    void show(const QString& title, const QString& text, const std::vector<Key>& keys);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    const int letter_; ///< pixels, where there is room
    QHBoxLayout* keys_;
    QPlainTextEdit* text_;
};

} // namespace quillon
