#pragma once

#include "console/panels/ModalPanel.h"

namespace quillon {

/// Asks for a workstation. Its event "OK" carries the number.
class ctrSelWS final : public ModalPanel {
public:
    explicit ctrSelWS(Schedule& schedule);

private:
    std::int16_t WorkstationSelected_ = 1;
};

} // namespace quillon
