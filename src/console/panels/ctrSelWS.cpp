#include "console/panels/ctrSelWS.h"

#include <array>

namespace quillon {

namespace {

constexpr std::int16_t kWorkstations = 8;

constexpr std::array kSelectWorkstationTexts{
    // clang-format off
    ModalPanel::TextRow{"sSelectWS", "lblSelectWS"},
    ModalPanel::TextRow{"sWSUp",     "cmbWSUp"},
    ModalPanel::TextRow{"sWSDown",   "cmbWSDown"},
    ModalPanel::TextRow{"sOK",       "cmdOK"},
    // clang-format on
};

} // namespace

ctrSelWS::ctrSelWS(Schedule& schedule)
    : ModalPanel(schedule, kSelectWorkstationRows, kModalSize, "ConsoleBackColor", kSelectWorkstationTexts) {
    addStepper({"WorkstationSelected", "lblWS", "cmbWSUp", "cmbWSDown", kWorkstations}, WorkstationSelected_);
    closes({.name = "cmdOK", .event = "OK", .parameter = [this] { return WorkstationSelected_; }});
}

} // namespace quillon
