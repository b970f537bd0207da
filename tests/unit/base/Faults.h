#pragma once

#include "base/Fault.h"

namespace quillon {

/// The number of the fault that an action ends with; 0 when it ends well.
template <typename Action> int faultOf(Action&& action) {
    try {
        action();
    } catch (const Fault& fault) {
        return fault.number();
    }
    return 0;
}

} // namespace quillon
