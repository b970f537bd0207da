#pragma once

#include <string_view>

#include "model/ModelContext.h"

namespace quillon {

/// Small facts that the generator is asked for: dose, exposure counters, software version, the receive enable
/// flag, and its wish for a beep.
class Records {
public:
    explicit Records(ModelContext& context);

    [[nodiscard]] bool RXEnable() const { return context_.state.RXEnable; }
    /// Keeps the flag and tells the generator ("RX").
    void setRXEnable(bool enable);

private:
    void fmessDose(std::string_view value, Signal<std::string> LinkEvents::*event);
    void fmessExposureCounter(std::string_view value);

    ModelContext& context_;
    Control& txtDose_;
    Control& txtExposureCounter_;
    Control& cmbResetExposureCounter_;
};

} // namespace quillon
