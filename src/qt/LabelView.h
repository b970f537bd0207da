#pragma once

#include "qt/ControlView.h"

namespace quillon {

/// A label: plain text, a field that shows a value, a warning lamp, a prompt. Which of the others it is goes
/// by its name; all are opaque.
class LabelView final : public ControlView {
public:
    LabelView(Control& control, QWidget* parent);

    [[nodiscard]] std::optional<Words> words() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    enum class Role { Text, Title, Prompt, Alarm, Value, Lamp };
    [[nodiscard]] static Role roleOf(const Control& control);

    /// It stands on a plate: a value, or a lamp that is lit.
    [[nodiscard]] bool hasPlate() const;
    [[nodiscard]] bool looksDisabled() const { return role_ != Role::Lamp && !isEnabled(); }
    [[nodiscard]] QColor ground() const;

    Role role_;
};

} // namespace quillon
