#pragma once

#include "qt/ControlView.h"

namespace quillon {

/// A label, which looks as its role wants it. All are opaque.
class LabelView final : public ControlView {
public:
    using ControlView::ControlView;

    [[nodiscard]] std::optional<Words> words() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// It stands on a plate: a value, or a lamp that is lit.
    [[nodiscard]] bool hasPlate() const;
    [[nodiscard]] bool looksDisabled() const { return !control().lamp() && !isEnabled(); }
    [[nodiscard]] QColor ground() const;
};

} // namespace quillon
