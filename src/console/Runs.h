#pragma once

#include <array>
#include <concepts>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/Phase.h"
#include "console/layout/Names.h"

namespace quillon {

struct ConsoleTexts;

/// What the console is doing. One thing at a time; None while it leaves the machine to the operator.
enum class Run : std::uint8_t {
    None,
    EnteringConfiguration,
    LeavingConfiguration,
    ChoosingWorkstation,
    EnteringCalibration,
    LeavingCalibration,
    Lending, ///< out of calibration, to the users of the machine
    ChoosingAutocalibration,
    EnteringAutocalibration, ///< up to the hand-over to the operator
    HandingOver,             ///< the generator began by itself
    LeavingAutocalibration,
    ReadingCounters,
    ShowingCounters,
    Closing,
};
inline constexpr std::size_t kRuns = static_cast<std::size_t>(Run::Closing) + 1;

/// What can happen to a run from outside.
enum class Stimulus : std::uint8_t {
    Restart,         ///< phase 1
    Ready,           ///< phase 2
    Exposure,        ///< phases 3, 4 and 5
    Calibration,     ///< phase 6
    Configuration,   ///< phase 8
    Autocalibration, ///< phases 9, 12 and 13
    Lost,            ///< nothing was heard for too long
    CloseKey,        ///< cmbClose, where it can be reached
};
inline constexpr std::size_t kStimuli = static_cast<std::size_t>(Stimulus::CloseKey) + 1;

/// How a run came to its end.
struct Ending {
    enum class Kind : std::uint8_t {
        Own,       ///< its own
        Failed,    ///< its mode was not reached, and a message says so
        Cancelled, ///< something else ended it
        GivenUp,   ///< the operator has waited for a minute and pressed cmbClose
        Dropped,   ///< the console appears anew
    };
    Kind kind = Kind::Own;
    std::optional<Stimulus> by{}; ///< what ended it, if that came from the generator or was a loss
    bool operator==(const Ending&) const = default;
};

/// What a report or a loss does to the run.
enum class Reaction : std::uint8_t {
    GoesOn,      ///< its own next step looks at the phase that was reported
    Ends,        ///< at once; what it took is given back
    AskWorkflow, ///< the workflow decides: it ends if it has sent nothing yet, or has nothing more to expect
};

/// What cmbClose does in a run.
enum class CloseKey : std::uint8_t {
    ByMode,       ///< leaves the mode that is reached, or what else is open, or closes
    WaitsForMode, ///< leaves a mode that is reached, and does nothing before
    Nothing,
};

/// A run's reaction to each stimulus but cmbClose; a row that leaves one out does not compile.
class Reactions {
public:
    template <std::same_as<Reaction>... Each>
    requires(sizeof...(Each) == kStimuli - 1) constexpr Reactions(Each... each) : each_{each...} {}
    [[nodiscard]] constexpr const std::array<Reaction, kStimuli - 1>& all() const { return each_; }

private:
    std::array<Reaction, kStimuli - 1> each_;
};

/// What belongs to a run: what is stopped and closed with it, whatever ends it.
struct RunRow {
    Run run;
    std::string_view name;
    std::string ConsoleTexts::*says; ///< in the status bar; null unless it waits for the generator
    ConsoleTimer lastWait;           ///< the timer with which it ends; empty if that takes no fixed time
    std::array<ConsoleTimer, 3> timers;
    std::array<std::string_view, 3> panels;
    Reactions reactions;
    CloseKey close;
    /// It waits for the generator.
    [[nodiscard]] constexpr bool waits() const { return says != nullptr; }
};

/// A wait that may outlive the run that began it, and what ends it besides its own end.
struct WaitRow {
    ConsoleTimer timer;
    Phases endedBy;
    bool byLoss;
    bool byNextRun;
    bool notWhileLent; ///< no phase ends it while the machine is with its users
};
[[nodiscard]] std::span<const WaitRow> waitRows();

[[nodiscard]] const RunRow& rowOf(Run run);
/// To any stimulus but cmbClose.
[[nodiscard]] inline Reaction reactionOf(Run run, Stimulus stimulus) {
    return rowOf(run).reactions.all().at(static_cast<std::size_t>(stimulus));
}

} // namespace quillon
