#include "model/CalibrationSlider.h"

#include "base/Numbers.h"

namespace quillon {

namespace {

void setValue(Control& slider, std::int32_t value) {
    slider.setValue(value);
    slider.setToolTip(decimalText(slider.value()));
}

} // namespace

void setCalibrationRange(const GeneratorState& state, Control& slider, std::int32_t maximum) {
    const bool cut = slider.value() == slider.maximum() && state.m_CalibrationValue > slider.maximum();
    if (slider.maximum() == maximum) {
        return;
    }
    slider.setMaximum(maximum);
    setValue(slider, cut ? state.m_CalibrationValue : slider.value());
    slider.setSelectionStart(cut ? state.m_CalibrationValue : slider.selectionStart());
}

void showCalibrationValue(GeneratorState& state, Control& slider, std::int32_t value) {
    state.m_CalibrationValue = value;
    setValue(slider, value);
    slider.setSelectionStart(value);
}

} // namespace quillon
