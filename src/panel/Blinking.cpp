#include "panel/Blinking.h"

#include "base/Colours.h"
#include "base/Numbers.h"
#include "model/WarnedFields.h"

namespace quillon {

Blinking::Blinking(GeneratorState& state, PanelHost& panel)
    : state_(state), panel_(panel), cmbResetError_(panel["cmbResetError"]),
      cmbResetExposureCounter_(panel["cmbResetExposureCounter"]),
      cmbTM3_(panel.at("cmbTM", kWarnedTechniqueMode)), tmrBlinking_(panel.timer("tmrBlinking")),
      tmrBlinkingOff_(panel.timer("tmrBlinkingOff")) {
    panel.timer("tmrBlink").setTick([this] { blinkTick(); });
    tmrBlinking_.setTick([this] { blinkingTick(); });
    tmrBlinkingOff_.setTick([this] { blinkingOffTick(); });
}

void Blinking::blinkTick() {
    // Each key tells by its own colour which half of the cycle comes next.
    if (state_.m_ExposureCounterResetPending) {
        const bool lit = cmbResetExposureCounter_.backColour() == kActiveColour;
        cmbResetExposureCounter_.setBackColour(lit ? kNormalColour : kActiveColour);
    }
    if (state_.m_LastError != 0) {
        const bool lit = cmbResetError_.backColour() == kErrorFlashColour;
        cmbResetError_.setBackColour(lit ? kNormalColour : kErrorFlashColour);
        cmbResetError_.setCaption(lit ? "Reset Error" : "ERROR " + decimalText(state_.m_LastError));
    }
}

void Blinking::blinkingTick() {
    const bool dark = !state_.m_BlinkOff;
    for (const WarnedField& warned : kWarnedFields) {
        if (state_.*warned.flag) {
            panel_[warned.field].setCaption(dark ? std::string_view{} : state_.*warned.text);
        }
    }
    if (state_.m_WarnTM) {
        paintWarnedKey(dark);
    }
    state_.m_BlinkOff = dark;
}

void Blinking::blinkingOffTick() {
    tmrBlinking_.stop();
    tmrBlinkingOff_.stop();
    for (const WarnedField& warned : kWarnedFields) {
        panel_[warned.field].setCaption(state_.*warned.text);
        state_.*warned.flag = false;
    }
    state_.m_WarnTM = false;
    paintWarnedKey(false);
}

void Blinking::paintWarnedKey(bool dark) {
    if (state_.m_TechniqueMode != kWarnedTechniqueMode) {
        return;
    }
    if (dark) {
        cmbTM3_.darken(kNormalColour);
    } else {
        cmbTM3_.setBackColour(kActiveColour);
    }
}

} // namespace quillon
