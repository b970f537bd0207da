#pragma once

#include <QPointer>

#include "qt/ControlView.h"

namespace quillon {

/// A list that shows its selected entry and opens into entries as high as a finger.
class ListView final : public ControlView {
public:
    ListView(Control& control, Input& input, QWidget* parent) : ControlView(control, parent), input_(input) {}

    /// Shows the entries until one is taken or the operator turns away.
    void open();
    [[nodiscard]] std::optional<Words> words() const override;
    [[nodiscard]] QWidget* popup() const { return popup_; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] QColor background() const;
    [[nodiscard]] double arrowArm() const;

    Input& input_;
    QPointer<QWidget> popup_;
};

} // namespace quillon
