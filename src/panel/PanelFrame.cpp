#include "panel/PanelFrame.h"

#include "base/Temporarily.h"

namespace quillon {

namespace {

constexpr Twips kParking = 75000; // controls this far to the left are parked, not placed
constexpr Twips kIconMargin = 50;
constexpr Twips kIconFrame = 25;

} // namespace

PanelFrame::PanelFrame(PanelHost& panel)
    : panel_(panel), iconized_(panel["Iconized"]), fraStatus_(panel["fraStatus"]),
      cmbMinimize_(panel["cmbMinimize"]), layout_({.parking = kParking, .keepsSize = "Iconized"}) {}

void PanelFrame::record() {
    layout_.record(panel_, panel_.width(), panel_.height());
    m_PanelEnabled = true;
}

void PanelFrame::UserControl_Show() {
    layOut();
}

void PanelFrame::UserControl_Resize() {
    if (m_PanelEnabled && panel_.width() != layout_.designWidth() &&
        panel_.height() != layout_.designHeight()) {
        layOut();
    }
}

void PanelFrame::layOut() {
    layout_.apply(panel_);
    const bool tooSmall = iconized_.width() + kIconMargin >= panel_.width() ||
                          iconized_.height() + kIconMargin >= panel_.height();
    if (tooSmall) {
        iconized_.setBackColour(kActiveColour);
        iconized_.setVisible(true);
        const Temporarily keptAsItIs(m_PanelEnabled, false);
        panel_.setWidth(iconized_.width() + kIconFrame);
        panel_.setHeight(iconized_.height() + kIconFrame);
    } else {
        iconized_.setVisible(false);
    }
}

void PanelFrame::minimize() {
    m_PanelEnabled = false;
    for (Control* key : panel_.all("cmbWS")) {
        key->setVisible(false);
    }
    savedStatus_ = fraStatus_.place();
    savedMinimize_ = cmbMinimize_.place();
    fraStatus_.setPlace({0, 0, savedStatus_.width, savedStatus_.height});
    fraStatus_.setVisible(true);
    cmbMinimize_.setPlace({0, 0, savedMinimize_.width, savedMinimize_.height});
    cmbMinimize_.setVisible(true);
    panel_["fraMainMenu"].setVisible(false);
    panel_["fraServiceMenu"].setVisible(false);
    m_Minimized = true;
    savedPanel_ = panel_.place();
    panel_.setBorder(false);
    panel_.setWidth(cmbMinimize_.width());
    panel_.setHeight(cmbMinimize_.height());
}

void PanelFrame::restore() {
    for (Control* key : panel_.all("cmbWS")) {
        key->setVisible(true);
    }
    m_Minimized = false;
    panel_.setWidth(savedPanel_.width);
    panel_.setHeight(savedPanel_.height);
    panel_.setBorder(true);
    fraStatus_.setPlace(savedStatus_);
    cmbMinimize_.setPlace(savedMinimize_);
    m_PanelEnabled = true;
}

} // namespace quillon
