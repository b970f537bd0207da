#pragma once

#include <string_view>

#include "model/ModelContext.h"

namespace quillon {

/// The item of the calibration list at which the generator stands, an mA station or an extended parameter:
/// the range of its value, and the keys that the calibration page has for it.
class CalibrationItem {
public:
    explicit CalibrationItem(ModelContext& context);

    /// It stands at a station.
    void selectStation();
    /// It stands at the parameter of this number. Fault 9 for one that the list of ranges does not have.
    void selectParameter(std::string_view number);

private:
    void showFocusKeys(bool show);

    GeneratorState& state_;
    LinkEvents& events_;
    Control& txtKVPCal_;
    Control& txtFocusCal_;
    Control& sldCalValue_;
    Control& lblFocusCal_;
    Control& cmbToggleFocusCal_;
    Control& cmbCalFocusSet_;
    Control& lstExtendedPosition_;
};

} // namespace quillon
