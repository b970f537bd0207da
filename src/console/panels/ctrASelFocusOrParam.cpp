#include "console/panels/ctrASelFocusOrParam.h"

#include <array>

namespace quillon {

namespace {

constexpr std::int16_t kExtendedParameters = 32;

constexpr std::array kSelectFocusTexts{
    // clang-format off
    ModalPanel::TextRow{"sSelectFocus",     "lblSelectFocus"},
    ModalPanel::TextRow{"sSelectExtMemory", "lblSelectExtMemory"},
    ModalPanel::TextRow{"sSmallFocus",      "cmbAutocalSmallFocus"},
    ModalPanel::TextRow{"sLargeFocus",      "cmbAutocalLargeFocus"},
    ModalPanel::TextRow{"sParameterUp",     "cmbParameterUp"},
    ModalPanel::TextRow{"sParameterDown",   "cmbParameterDown"},
    ModalPanel::TextRow{"sOK",              "cmbOKFocus cmbOKParameter"},
    ModalPanel::TextRow{"sCancel",          "cmbCancel"},
    // clang-format on
};

} // namespace

ctrASelFocusOrParam::ctrASelFocusOrParam(Schedule& schedule)
    : ModalPanel(schedule, kSelectFocusRows, kModalSize, "ConsoleBackColor", kSelectFocusTexts) {
    operations_.addProperty(
        "SmallFocus", [this] { return SmallFocus_; }, [this](bool chosen) { select(true, chosen); });
    operations_.addProperty(
        "LargeFocus", [this] { return LargeFocus_; }, [this](bool chosen) { select(false, chosen); });
    operations_.addReadOnly("Cancel", [this] { return Cancel_; });
    operations_.addReadOnly("SelAutocalmA", [this] { return SelAutocalmA_; });
    operations_.addReadOnly("SelAutocalParameter", [this] { return SelAutocalParameter_; });
    addStepper({"AutocalParameter", "lblAutocalParameter", "cmbParameterUp", "cmbParameterDown",
                kExtendedParameters},
               AutocalParameter_);
    at("cmbAutocalSmallFocus").on.click = [this] { select(true, true); };
    at("cmbAutocalLargeFocus").on.click = [this] { select(false, true); };
    const auto chosen = [this](bool& selection) {
        return [this, &selection] {
            Cancel_ = false;
            selection = true;
        };
    };
    closes({"cmbOKFocus", "OK", chosen(SelAutocalmA_)});
    // Until one of the focal spots is lit there is nothing to agree to.
    at("cmbOKFocus").setEnabled(false);
    closes({"cmbOKParameter", "OK", chosen(SelAutocalParameter_)});
    closes({"cmbCancel", "Cancel", [this] { Cancel_ = true; }});
}

void ctrASelFocusOrParam::select(bool small, bool chosen) {
    SmallFocus_ = small == chosen;
    LargeFocus_ = !SmallFocus_;
    // Only a choice is shown. The generator may have neither selected, and then no key may claim it has.
    if (chosen) {
        at("cmbOKFocus").setEnabled(true);
        at("cmbAutocalSmallFocus").setBackColour(SmallFocus_ ? buttonOnColour_ : buttonOffColour_);
        at("cmbAutocalLargeFocus").setBackColour(LargeFocus_ ? buttonOnColour_ : buttonOffColour_);
    }
}

} // namespace quillon
