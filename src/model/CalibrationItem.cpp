#include "model/CalibrationItem.h"

#include "base/Fault.h"
#include "base/Numbers.h"
#include "model/CalibrationSlider.h"

namespace quillon {

CalibrationItem::CalibrationItem(ModelContext& context)
    : state_(context.state), events_(context.events), txtKVPCal_(context.panel["txtKVPCal"]),
      txtFocusCal_(context.panel["txtFocusCal"]), sldCalValue_(context.panel["sldCalValue"]),
      lblFocusCal_(context.panel["lblFocusCal"]), cmbToggleFocusCal_(context.panel["cmbToggleFocusCal"]),
      cmbCalFocusSet_(context.panel["cmbCalFocusSet"]),
      lstExtendedPosition_(context.panel["lstExtendedPosition"]) {}

void CalibrationItem::selectStation() {
    state_.m_CalibrationType = 0;
    setCalibrationRange(state_, sldCalValue_, state_.m_CalibrationRange);
    sldCalValue_.setVisible(true);
    showFocusKeys(true);
}

void CalibrationItem::selectParameter(std::string_view number) {
    const std::int16_t parameter = toInt16(number);
    const auto& ranges = lstExtendedPosition_.items();
    const auto entry = static_cast<std::size_t>(parameter);
    if (parameter < 0 || entry >= ranges.size()) {
        throw Fault(Fault::kSubscript);
    }
    // The list counts from 0 and its keys from 1: parameter n has the range that is kept under n + 1.
    const std::int32_t range = toInt32(leadingNumber(ranges[entry]));
    // A parameter without a range must not keep the one of the parameter before.
    setCalibrationRange(state_, sldCalValue_, range != 0 ? range : state_.m_CalibrationRange);
    sldCalValue_.setVisible(range != 0);
    if (number == "03" || number == "05" || number == "21") {
        state_.m_CalSliderInAutocal = true;
    }
    state_.m_CalibrationType = number == "06" ? 2 : 1;
    state_.m_CalibrationParameter = parameter;
    events_.CalibrationParameters.raise(parameter);
    txtKVPCal_.setCaption("");
    showFocusKeys(parameter == 1);
}

void CalibrationItem::showFocusKeys(bool show) {
    for (Control* control : {&lblFocusCal_, &txtFocusCal_, &cmbToggleFocusCal_, &cmbCalFocusSet_}) {
        control->setVisible(show);
    }
}

} // namespace quillon
