#pragma once

#include "console/panels/ModalPanel.h"

namespace quillon {

/// Warns of what an autocalibration wipes out. Events "OK" and "Cancel".
class ctrAWarning final : public ModalPanel {
public:
    explicit ctrAWarning(Schedule& schedule);

private:
    bool StartAutocal_ = false;
};

} // namespace quillon
