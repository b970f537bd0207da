#include "console/Standing.h"

#include <array>

#include "console/ServiceModes.h"

namespace quillon {

namespace {

using namespace keys;

// In Ready the three mode keys besides M are as left: after an exposure they stay away until calibration was
// gone through.
// clang-format off
constexpr std::array<StandingRow, kStands> kRows{{
    // stand                    name                area               page                 in reach       shown  lit   caption          words             positioner
    {Stand::Silent,          "nothing heard",    Area::Picture,     Page::AsLeft,        X,             modes, none, Caption::Close,  Says::AsLeft,     Offer::AsLeft},
    {Stand::Lost,            "lost",             Area::Picture,     Page::AsLeft,        X | E,         modes, none, Caption::Stays,  Says::Lost,       Offer::AsLeft},
    {Stand::PoweringUp,      "powering up",      Area::Picture,     Page::AsLeft,        X,             modes, none, Caption::Close,  Says::PoweringUp, Offer::AsLeft},
    {Stand::Ready,           "Ready",            Area::Picture,     Page::AsLeft,        M | X,         modes, none, Caption::Close,  Says::None,       Offer::Shown},
    {Stand::WithUsers,       "with its users",   Area::LinkControl, Page::Main,          M | X | F,     M | U, U,    Caption::Stays,  Says::None,       Offer::Hidden},
    {Stand::Calibration,     "calibration",      Area::LinkControl, Page::Calibration,   M | U | X | F, M | U, M,    Caption::Exit,   Says::None,       Offer::Hidden},
    {Stand::Configuration,   "configuration",    Area::LinkControl, Page::Configuration, C | X | F,     modes, C,    Caption::Exit,   Says::None,       Offer::Hidden},
    {Stand::Autocalibration, "autocalibration",  Area::LinkControl, Page::Calibration,   A | X | F,     modes, A,    Caption::Exit,   Says::Expose,     Offer::Hidden},
    {Stand::Asking,          "asking",           Area::LinkControl, Page::Calibration,   X | F,         modes, none, Caption::Close,  Says::Question,   Offer::Hidden},
}};
// clang-format on

constexpr bool inOrder() {
    for (std::size_t i = 0; i < kRows.size(); ++i) {
        if (static_cast<std::size_t>(kRows[i].stand) != i) {
            return false;
        }
    }
    return true;
}
static_assert(inOrder());

} // namespace

const StandingRow& rowOf(Stand stand) {
    return kRows.at(static_cast<std::size_t>(stand));
}

Stand standOf(const Heard& heard) {
    if (heard.lost) {
        return Stand::Lost;
    }
    if (heard.poweringUp) {
        return Stand::PoweringUp;
    }
    if (const ServiceMode* mode = serviceModeOf(heard.mode)) {
        return mode->stand;
    }
    const bool ready = heard.mode == Phase::NormalOperation;
    if (ready && heard.lent) {
        return Stand::WithUsers;
    }
    return heard.phase == Phase::ConfirmDismiss ? Stand::Asking : ready ? Stand::Ready : Stand::Silent;
}

StandingRow standingOf(const Heard& heard) {
    StandingRow row = rowOf(standOf(heard));
    if (heard.lost || heard.poweringUp) {
        if (heard.exitUnheard) {
            row.caption = Caption::Close; // and it closes
        }
        row.positioner = heard.mode == Phase::NormalOperation ? Offer::Shown : Offer::AsLeft;
        return row;
    }
    const bool asked = heard.exposures == ExposureRequest::Stands;
    if (row.stand == Stand::Ready && heard.phase != Phase::NormalOperation) {
        row.inReach = row.inReach.without(M); // an entry would be refused
    }
    if (isExposure(heard.phase)) {
        row.inReach = row.inReach.only(F); // the others come with its end
    }
    if (row.stand == Stand::Autocalibration && heard.exposures == ExposureRequest::Over) {
        row.lit = none;
    }
    if (heard.phase == Phase::ConfirmDismiss) {
        row.page = Page::Calibration; // it bears the keys of the answer
        row.words = Says::Question;
    } else if (endsAutocalibration(heard.phase)) {
        row.words = heard.phase == Phase::AutocalOk ? Says::ResultOk : Says::ResultError;
    } else if (row.words == Says::Expose && (!asked || heard.phase == Phase::Error)) {
        row.words = Says::None;
    } else if (row.words == Says::Expose && heard.phase != Phase::Autocalibration) {
        row.words = Says::AsLeft;
    }
    return row;
}

} // namespace quillon
