#include "console/Standing.h"

#include <array>

namespace quillon {

namespace {

constexpr Keys none{};
constexpr Keys C = Key::Configuration;
constexpr Keys M = Key::ManualCalibration;
constexpr Keys A = Key::Autocalibration;
constexpr Keys R = Key::ReadCounters;
constexpr Keys U = Key::GoToUserMode;
constexpr Keys X = Key::Close;
constexpr Keys E = Key::ResetError;
constexpr Keys F = Key::LinkControl;
constexpr Keys modes = kModeKeys;

// In Ready the three mode keys besides M are as left: after an exposure they stay away until calibration was
// gone through.
// clang-format off
constexpr std::array<StandingRow, kStands> kRows{{
    // stand                    name                area               in reach       out of reach   shown  hidden     lit   caption          words              positioner      X-rays
    {Stand::Silent,          "nothing heard",    Area::Picture,     X,             modes | F,     modes, U,         none, Caption::Close,  Says::AsLeft,     Offer::AsLeft,  Rx::Stays},
    {Stand::Lost,            "lost",             Area::Picture,     X | E,         modes | F,     modes, U,         none, Caption::Stays,  Says::Lost,       Offer::AsLeft,  Rx::Stays},
    {Stand::PoweringUp,      "powering up",      Area::Picture,     X,             modes | F,     modes, U,         none, Caption::Close,  Says::PoweringUp, Offer::AsLeft,  Rx::Stays},
    {Stand::Ready,           "Ready",            Area::Picture,     M | X,         F,             modes, U,         none, Caption::Close,  Says::None,       Offer::Shown,   Rx::Stays},
    {Stand::WithUsers,       "with its users",   Area::LinkControl, M | X | F,     C | A | R,     M | U, C | A | R, U,    Caption::Exit,   Says::None,       Offer::Hidden,  Rx::On},
    {Stand::Calibration,     "calibration",      Area::LinkControl, M | U | X | F, C | A | R,     M | U, C | A | R, M,    Caption::Exit,   Says::None,       Offer::Hidden,  Rx::Stays},
    {Stand::Configuration,   "configuration",    Area::LinkControl, C | X | F,     M | A | R,     modes, U,         C,    Caption::Exit,   Says::None,       Offer::Hidden,  Rx::Stays},
    {Stand::Autocalibration, "autocalibration",  Area::LinkControl, A | X | F,     C | M | R,     modes, U,         A,    Caption::Exit,   Says::Expose,     Offer::Hidden,  Rx::Stays},
    {Stand::Asking,          "asking",           Area::LinkControl, X | F,         modes,         modes, U,         none, Caption::Close,  Says::Question,   Offer::Hidden,  Rx::Stays},
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
    switch (heard.mode) {
    case Phase::Calibration:
        return Stand::Calibration;
    case Phase::Configuration:
        return Stand::Configuration;
    case Phase::Autocalibration:
        return Stand::Autocalibration;
    case Phase::NormalOperation:
        if (heard.lent) {
            return Stand::WithUsers;
        }
        return heard.phase == Phase::ConfirmDismiss ? Stand::Asking : Stand::Ready;
    default:
        return heard.phase == Phase::ConfirmDismiss ? Stand::Asking : Stand::Silent;
    }
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
    if (row.stand == Stand::Silent && heard.phase > Phase::Initialization) {
        row.words = Says::None; // it was heard: nobody has to power it up
    }
    if (heard.phase == Phase::ConfirmDismiss) {
        row.words = Says::Question;
        row.inReach = row.inReach.without(U); // a machine that asks is not lent
        row.outOfReach = row.outOfReach | U;
    } else if (endsAutocalibration(heard.phase)) {
        row.words = Says::Result;
    } else if (row.words == Says::Expose && !heard.exposes) {
        row.words = Says::None;
    } else if (row.words == Says::Expose && heard.phase != Phase::Autocalibration) {
        row.words = heard.phase == Phase::Error ? Says::None : Says::AsLeft;
    }
    if (row.stand == Stand::Ready && heard.phase != Phase::NormalOperation) {
        row.inReach = row.inReach.without(M); // an entry would be refused
    }
    if (isExposure(heard.phase)) {
        row.inReach = row.inReach.without(modes | U | X);
        row.outOfReach = row.outOfReach | modes | U | X;
    }
    return row;
}

} // namespace quillon
