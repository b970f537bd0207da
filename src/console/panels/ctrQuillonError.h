#pragma once

#include "console/panels/ModalPanel.h"

namespace quillon {

/// A message that the operator has to acknowledge. Event "OK".
class ctrQuillonError final : public ModalPanel {
public:
    explicit ctrQuillonError(Schedule& schedule);
};

} // namespace quillon
