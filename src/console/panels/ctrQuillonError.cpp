#include "console/panels/ctrQuillonError.h"

#include <array>

namespace quillon {

namespace {

constexpr std::array kTexts{
    // clang-format off
    ModalPanel::TextRow{"sMessage", "lblError"},
    ModalPanel::TextRow{"Caption",  "myCaption"},
    ModalPanel::TextRow{"sOK",      "cmbOK"},
    // clang-format on
};

} // namespace

ctrQuillonError::ctrQuillonError(Schedule& schedule)
    : ModalPanel(schedule, kErrorRows, kErrorSize, "BackColor", kTexts) {
    closes({"cmbOK", "OK"});
}

} // namespace quillon
