#include "console/panels/ctrAWarning.h"

#include <array>

namespace quillon {

namespace {

constexpr std::array kWarningTexts{
    // clang-format off
    ModalPanel::TextRow{"sWarning1",   "lblWarning1"},
    ModalPanel::TextRow{"sWarning2",   "lblWarning2"},
    ModalPanel::TextRow{"sWarning3",   "lblWarning3"},
    ModalPanel::TextRow{"sWarning4",   "lblWarning4"},
    ModalPanel::TextRow{"sAutocalYes", "cmbAutocalYes"},
    ModalPanel::TextRow{"sAutocalNo",  "cmbAutocalNo"},
    // clang-format on
};

} // namespace

ctrAWarning::ctrAWarning(Schedule& schedule)
    : ModalPanel(schedule, kWarningRows, kModalSize, "BackColor", kWarningTexts) {
    operations_.addReadOnly("StartAutocal", [this] { return StartAutocal_; });
    closes({"cmbAutocalYes", "OK", [this] { StartAutocal_ = true; }});
    closes({"cmbAutocalNo", "Cancel", [this] { StartAutocal_ = false; }});
}

} // namespace quillon
