#pragma once

#include "console/panels/ModalPanel.h"

namespace quillon {

/// Asks what to autocalibrate: the mA stations of a focal spot, or an extended memory location. Events "OK"
/// and "Cancel".
class ctrASelFocusOrParam final : public ModalPanel {
public:
    explicit ctrASelFocusOrParam(Schedule& schedule);

    /// What the operator agreed to.
    struct Choice {
        bool station; ///< the mA stations of a focal spot, not a parameter
        bool smallFocus;
        bool largeFocus;
        std::int16_t parameter;
    };
    [[nodiscard]] Choice choice() const {
        return {SelAutocalmA_, SmallFocus_, LargeFocus_, AutocalParameter_};
    }

private:
    /// Chooses one focal spot, or with `chosen` false the other one.
    void select(bool small, bool chosen);

    bool SmallFocus_ = false;
    bool LargeFocus_ = false;
    bool Cancel_ = false;
    bool SelAutocalmA_ = false;
    bool SelAutocalParameter_ = false;
    std::int16_t AutocalParameter_ = 1;
};

} // namespace quillon
