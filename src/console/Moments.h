#pragma once

#include <cstdint>

#include "console/ConsoleKeys.h"

namespace quillon {

/// Each moment at which the console gives something to the operator or the generator, or takes it.
enum class Moment : std::uint8_t {
    // The generator reports
    PoweringUp,
    Ready,
    ReadyAndIdle,
    ReadyForTheUsers,
    ReadyBeforeTheUsersCame,
    ModeIsOver,
    Preparation,
    InCalibration,
    CalibrationIsFree,
    ErrorReported,
    InConfiguration,
    InAutocalibration,
    QuestionAsked,
    QuestionWithdrawn,
    ValueReported,
    Lost,
    // Start, refresh, messages, closing
    PortOpened,
    Shown,
    RefreshDone,
    MessageOpens,
    MessageAcknowledged,
    ErrorResetForTheUsers,
    ClosePressed,
    XRaysGivenBack,
    ClosingBegins,
    LeavingNow,
    // What a workflow was is over, and not by its own end
    BrokenOff,
    BrokenOffByExposure,
    PatienceIsOver,
    // Configuration
    ConfigurationPressed,
    ConfigurationAsked,
    ConfigurationLeft,
    ConfigurationReached,
    ConfigurationNotReached,
    ConfigurationDone,
    // Calibration, and the machine with its users
    CalibrationPressed,
    CalibrationChoice,
    CalibrationChosen,
    CalibrationReturn,
    CalibrationReached,
    CalibrationNotReached,
    CalibrationLeft,
    CalibrationDone,
    CalibrationDoneForTheUsers,
    CalibrationExitNotFollowed,
    UsersAsked,
    UsersCome,
    // Autocalibration
    AutocalibrationChoice,
    AutocalibrationCancelled,
    AutocalibrationChosen,
    AutocalibrationConfirmed,
    AutocalibrationWaits,
    AutocalibrationReached,
    AutocalibrationHandedOver,
    AutocalibrationNotReached,
    AutocalibrationLeft,
    AutocalibrationEnded,
    AutocalibrationDone,
    AutocalibrationDoneInReady,
    CalibrationBehindItDone,
    // Exposure counters
    CountersAsked,
    CountersShown,
    CountersShownInExposure,
    CountersRead,
    CountersIncomplete,
    CountersClosed,
    CountersGone,
    CountersFailed,
};

/// The status poll: away while a workflow holds it. Parked, it stays away behind the workflow's end, up to
/// the next value, preparation, message or workflow.
enum class Poll : std::uint8_t { Stays, Held, Free, Parked, Unparked };
/// The event Busy: 1 when a workflow takes the console, 0 when it gives it back; Settled raises 0 only if it
/// is due.
enum class Busy : std::uint8_t { Stays, Taken, Given, Settled };
enum class Prompt : std::uint8_t { Stays, Cleared };
/// What stands on cmbClose.
enum class Caption : std::uint8_t { Stays, Close, Exit };
/// Whether the generator may make X-rays ("RX1", "RX0"). Given back means: as soon as the phase lets it be
/// told.
enum class Rx : std::uint8_t { Stays, On, Off, GivenBack };

/// What one moment gives and takes.
struct MomentRow {
    Moment moment;
    Keys on;     ///< enabled
    Keys off;    ///< disabled
    Keys atRest; ///< in the colour of a key at rest
    Keys active; ///< in the colour of the mode that runs
    Poll poll;
    Busy busy;
    Prompt prompt;
    Caption caption;
    Rx rx;
};

[[nodiscard]] const MomentRow& rowOf(Moment moment);

} // namespace quillon
