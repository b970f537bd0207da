#include "console/panels/ctrQuillonError.h"

#include <array>

namespace quillon {

namespace {

constexpr std::array kErrorTexts{
    // clang-format off
    ModalPanel::TextRow{"sMessage", "lblError"},
    ModalPanel::TextRow{"Caption",  "myCaption"},
    ModalPanel::TextRow{"sOK",      "cmbOK"},
    // clang-format on
};

} // namespace

ctrQuillonError::ctrQuillonError(Schedule& schedule)
    : ModalPanel(schedule, kErrorRows, kErrorSize, "BackColor", kErrorTexts) {
    closes({"cmbOK", "OK"});
}

} // namespace quillon
