#pragma once

#include <optional>
#include <utility>

#include "qt/ControlView.h"

class QLineEdit;
class QPlainTextEdit;

namespace quillon {

/// A text box of one line or of many. What is typed goes to the control at once; what the control holds is
/// written back without telling it.
class TextView final : public ControlView {
public:
    TextView(Control& control, Input& input, QWidget* parent, const Indicators* indicators = nullptr);

    void sync() override;
    [[nodiscard]] std::optional<Words> words() const override;
    [[nodiscard]] QWidget* editor() const override;

protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void makeEditor();
    /// A reading whose value is old.
    [[nodiscard]] bool looksOld() const;
    [[nodiscard]] QColor background() const;
    [[nodiscard]] QColor ink() const;
    void typed(const QString& text);

    Input& input_;
    QLineEdit* line_ = nullptr;
    QPlainTextEdit* lines_ = nullptr;
    std::optional<std::pair<Colour, bool>>
        dressed_; ///< the background that the editor's palette is for, and its age
};

} // namespace quillon
