#pragma once

#include "qt/ControlView.h"

namespace quillon {

/// A label, which looks as its role wants it. All are opaque.
class LabelView final : public ControlView {
public:
    using ControlView::ControlView;

    [[nodiscard]] std::optional<Words> words() const override;
    /// What may stand in the box beside it.
    [[nodiscard]] std::vector<Words> notes() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// The look of what is lit for the operator; empty where nothing is.
    [[nodiscard]] const RankLook* rank() const;
    /// It stands on a plate: a value, or what is lit.
    [[nodiscard]] bool hasPlate() const;
    /// Where its rank's sign goes.
    [[nodiscard]] QRect signPlace() const;
    [[nodiscard]] bool hasSmallNote() const;
    [[nodiscard]] QRect smallNotePlace() const;
    [[nodiscard]] bool looksDisabled() const { return !control().lamp() && !isEnabled(); }
    /// A value from before the generator fell silent.
    [[nodiscard]] bool looksOld() const;
    [[nodiscard]] QColor background() const;
};

} // namespace quillon
