#pragma once

#include "qt/ControlView.h"

namespace quillon {

/// A label: plain text, a field that shows a value, a warning lamp, a prompt. Which it is goes by its name;
/// all are opaque.
class LabelView final : public ControlView {
public:
    LabelView(Control& control, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    enum class Role { Text, Title, Prompt, Alarm, Value, Lamp };
    [[nodiscard]] static Role roleOf(const Control& control);

    void paintField(QPainter& painter, const QString& text) const;

    Role role_;
};

} // namespace quillon
