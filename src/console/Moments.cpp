#include "console/Moments.h"

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

// clang-format off
constexpr std::array kRows{
    //        moment                               on              off            at rest    active poll            busy           prompt           caption         X-rays
    MomentRow{Moment::PoweringUp,                  X,              modes | F,     modes | U, none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Close, Rx::Stays},
    MomentRow{Moment::Ready,                       X,              none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Cleared, Caption::Close, Rx::Stays},
    MomentRow{Moment::ReadyAndIdle,                M,              none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::ReadyForTheUsers,            F,              none,          none,      U,     Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::ReadyBeforeTheUsersCame,     none,           none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::ModeIsOver,                  none,           F,             none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::Preparation,                 none,           modes | U | X, none,      none,  Poll::Unparked, Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::InCalibration,               none,           none,          U,         none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Exit,  Rx::Stays},
    MomentRow{Moment::CalibrationIsFree,           M | U | X | F,  R,             R | A | U, M,     Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::ErrorReported,               E,              none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::InConfiguration,             F | C | U,      M | A | R,     M|A|R|U,   C,     Poll::Stays,    Busy::Stays,   Prompt::Cleared, Caption::Exit,  Rx::Stays},
    MomentRow{Moment::InAutocalibration,           none,           none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Exit,  Rx::Stays},
    MomentRow{Moment::QuestionAsked,               F,              none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::QuestionWithdrawn,           none,           none,          none,      none,  Poll::Free,     Busy::Stays,   Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::ValueReported,               none,           none,          none,      none,  Poll::Free,     Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::Lost,                        U | X | E,      modes,         modes | U, none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},

    MomentRow{Moment::PortOpened,                  none,           none,          none,      none,  Poll::Free,     Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::Shown,                       none,           modes | U | F, none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::RefreshDone,                 modes,          none,          modes,     none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::MessageOpens,                X,              none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Cleared, Caption::Close, Rx::Stays},
    MomentRow{Moment::MessageAcknowledged,         none,           none,          none,      none,  Poll::Free,     Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::ErrorResetForTheUsers,       none,           none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::On},
    MomentRow{Moment::ClosePressed,                none,           none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Off},
    MomentRow{Moment::XRaysGivenBack,              none,           none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::GivenBack},
    MomentRow{Moment::ClosingBegins,               none,           none,          none,      none,  Poll::Held,     Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::On},
    MomentRow{Moment::LeavingNow,                  none,           none,          none,      none,  Poll::Free,     Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},

    MomentRow{Moment::BrokenOff,                   X,              none,          none,      none,  Poll::Free,     Busy::Settled, Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::BrokenOffByExposure,         none,           none,          none,      none,  Poll::Free,     Busy::Settled, Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::PatienceIsOver,              X,              none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},

    MomentRow{Moment::ConfigurationPressed,        none,           F,             none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::ConfigurationAsked,          none,           modes | X,     none,      none,  Poll::Held,     Busy::Taken,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::ConfigurationLeft,           none,           modes | X,     none,      none,  Poll::Held,     Busy::Taken,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::ConfigurationReached,        C | X | F,      none,          none,      C,     Poll::Free,     Busy::Given,   Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::ConfigurationNotReached,     X,              none,          none,      none,  Poll::Free,     Busy::Given,   Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::ConfigurationDone,           modes | X,      none,          modes,     none,  Poll::Free,     Busy::Given,   Prompt::Stays,   Caption::Stays, Rx::Stays},

    MomentRow{Moment::CalibrationPressed,          none,           F,             none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::CalibrationChoice,           E,              modes | U | X, none,      none,  Poll::Held,     Busy::Taken,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::CalibrationChosen,           none,           modes | U | X, none,      none,  Poll::Held,     Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::CalibrationReturn,           E,              modes | U | X, none,      none,  Poll::Held,     Busy::Taken,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::CalibrationReached,          M | U | X | F,  none,          A | U,     M,     Poll::Free,     Busy::Given,   Prompt::Cleared, Caption::Stays, Rx::On},
    MomentRow{Moment::CalibrationNotReached,       modes | X,      none,          none,      none,  Poll::Free,     Busy::Given,   Prompt::Cleared, Caption::Stays, Rx::On},
    MomentRow{Moment::CalibrationLeft,             E,              modes | U | X, none,      none,  Poll::Held,     Busy::Taken,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::CalibrationDone,             modes,          none,          modes,     none,  Poll::Free,     Busy::Given,   Prompt::Stays,   Caption::Stays, Rx::Off},
    MomentRow{Moment::CalibrationDoneForTheUsers,  C | A | R,      none,          modes,     none,  Poll::Free,     Busy::Given,   Prompt::Stays,   Caption::Stays, Rx::Off},
    MomentRow{Moment::CalibrationExitNotFollowed,  M | U | X | F,  none,          A | U,     M,     Poll::Free,     Busy::Settled, Prompt::Cleared, Caption::Stays, Rx::GivenBack},
    MomentRow{Moment::UsersAsked,                  none,           none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::On},
    MomentRow{Moment::UsersCome,                   F | M | X,      none,          none,      U,     Poll::Free,     Busy::Settled, Prompt::Stays,   Caption::Exit,  Rx::On},

    MomentRow{Moment::AutocalibrationChoice,       none,           F,             none,      none,  Poll::Held,     Busy::Taken,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::AutocalibrationCancelled,    none,           none,          none,      none,  Poll::Parked,   Busy::Given,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::AutocalibrationChosen,       none,           modes | X | F, none,      none,  Poll::Held,     Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::AutocalibrationConfirmed,    none,           F,             none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::AutocalibrationWaits,        none,           none,          none,      none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::On},
    MomentRow{Moment::AutocalibrationReached,      F,              none,          none,      none,  Poll::Free,     Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::AutocalibrationHandedOver,   A | X,          none,          none,      A,     Poll::Free,     Busy::Given,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::AutocalibrationNotReached,   modes | X,      none,          none,      none,  Poll::Parked,   Busy::Given,   Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::AutocalibrationLeft,         none,           modes | X | F, none,      none,  Poll::Held,     Busy::Taken,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::AutocalibrationEnded,        none,           F,             none,      none,  Poll::Held,     Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::AutocalibrationDone,         modes | X,      none,          A,         none,  Poll::Free,     Busy::Given,   Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::AutocalibrationDoneInReady,  modes | X,      none,          A,         none,  Poll::Parked,   Busy::Given,   Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::CalibrationBehindItDone,     modes | X,      none,          A,         none,  Poll::Free,     Busy::Given,   Prompt::Cleared, Caption::Stays, Rx::Off},

    MomentRow{Moment::CountersAsked,               none,           modes | X,     none,      none,  Poll::Held,     Busy::Taken,   Prompt::Stays,   Caption::Exit,  Rx::Stays},
    MomentRow{Moment::CountersShown,               R | X,          none,          none,      R,     Poll::Stays,    Busy::Given,   Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::CountersShownInExposure,     none,           none,          none,      R,     Poll::Stays,    Busy::Given,   Prompt::Cleared, Caption::Stays, Rx::Stays},
    MomentRow{Moment::CountersRead,                none,           none,          none,      none,  Poll::Free,     Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::CountersIncomplete,          modes,          none,          none,      none,  Poll::Free,     Busy::Stays,   Prompt::Stays,   Caption::Stays, Rx::Stays},
    MomentRow{Moment::CountersClosed,              modes | X,      none,          R,         none,  Poll::Stays,    Busy::Stays,   Prompt::Stays,   Caption::Close, Rx::Stays},
    MomentRow{Moment::CountersGone,                X,              none,          R,         none,  Poll::Stays,    Busy::Stays,   Prompt::Cleared, Caption::Close, Rx::Stays},
    MomentRow{Moment::CountersFailed,              none,           none,          none,      none,  Poll::Free,     Busy::Settled, Prompt::Stays,   Caption::Stays, Rx::Stays},
};
// clang-format on

constexpr bool inOrder() {
    for (std::size_t i = 0; i < kRows.size(); ++i) {
        if (static_cast<std::size_t>(kRows[i].moment) != i) {
            return false;
        }
    }
    return kRows.back().moment == Moment::CountersFailed;
}
static_assert(inOrder());

} // namespace

const MomentRow& rowOf(Moment moment) {
    return kRows.at(static_cast<std::size_t>(moment));
}

} // namespace quillon
