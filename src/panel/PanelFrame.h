#pragma once

#include "panel/layout/Names.h"
#include "ui/ScalingLayout.h"

namespace quillon {

/// The panel as one thing in its host: scaled with its size, shrunk to one key when there is no room, and
/// folded away by the operator.
class PanelFrame {
public:
    explicit PanelFrame(PanelHost& panel);

    /// Takes the design places of all controls. Nothing is laid out before.
    void record();
    /// Lays out without any test.
    void UserControl_Show();
    /// Lays out unless one dimension equals the design's, or a size change of its own is going on.
    void UserControl_Resize();

    /// Shrinks the panel to the key cmbMinimize. restore() is the way back.
    void minimize();
    void restore();
    [[nodiscard]] bool minimized() const { return m_Minimized; }

private:
    void layOut();

    PanelHost& panel_;
    Control& iconized_;
    Control& fraStatus_;
    Control& cmbMinimize_;
    ScalingLayout layout_;
    bool m_PanelEnabled = false;
    bool m_Minimized = false;
    Place savedStatus_;
    Place savedMinimize_;
    Place savedPanel_;
};

} // namespace quillon
