#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "WallClock.h"
#include "base/Phase.h"
#include "console/Runs.h"
#include "console/SessionErrors.h"
#include "runtime/Clock.h"

namespace quillon {

// What the recordings of a visit tell. Times count in ms from the beginning of the first session; texts are
// as they came, one byte a character. What was never reported is empty, which is neither 0 nor an empty text.

enum class Subject : std::uint8_t { Setting, Calibration, Counter };

/// Names a value of a generator, at every visit alike: (Setting, "WS3", "TU"), (Setting, "Ready WS2", "KV"),
/// (Calibration, "WS2", "small 25 mA"), (Calibration, "WS2", "E07"), (Counter, "", "0").
struct ValueName {
    Subject subject = Subject::Setting;
    std::string scope;
    std::string name;
    bool operator==(const ValueName&) const = default;
    bool operator<(const ValueName& other) const {
        return std::tie(subject, scope, name) < std::tie(other.subject, other.scope, other.name);
    }
};

/// What became of a value.
enum class Deed : std::uint8_t { Read, StoredByHand, Autocalibrated, Reset };

/// A value as it was found and as it was left.
struct ValueFact {
    std::optional<std::string> found;
    std::optional<std::string> left; ///< empty where what was done last makes it unknown
    Milliseconds foundAt = 0;
    Milliseconds leftAt = 0;
    Deed deed = Deed::Read;
    /// A calibration value that was changed, shown, and not stored.
    std::optional<std::string> unstored{};
    /// The command to store it went out and was not acknowledged.
    bool storeInDoubt = false;
    /// It was changed before it was reported, so nobody knows how it was found.
    bool foundUnseen = false;

    [[nodiscard]] bool changed() const { return found && left && *found != *left; }
    void report(std::string value, Milliseconds at) {
        if (!found && !foundUnseen) {
            found = value;
            foundAt = at;
        }
        left = std::move(value);
        leftAt = at;
    }
};

using ValueFacts = std::map<ValueName, ValueFact>;

struct Span {
    Milliseconds from = 0;
    std::optional<Milliseconds> to{}; ///< empty: to the end and on
};

/// "TCR" for a counter.
struct CounterReset {
    std::string counter;
    Milliseconds asked = 0;
    bool acknowledged = false;
    std::optional<Milliseconds> readAnew{};
};

struct ExposureFact {
    Milliseconds at = 0;
    std::optional<Milliseconds> to{};
    bool fluoroscopy = false;
    Phase mode = Phase::None;
    bool lent = false;
    std::int32_t workstation = 0;
    std::string kVp; ///< empty: never reported
    bool kVpMeasured = false;
    // As they were in fact.
    std::string mA;
    std::string ms;
    std::string mAs;
    std::optional<std::int32_t> reason{};
    std::string dose;
};

struct ErrorFact {
    Span span;
    std::int16_t code = 0;
    std::string words{};
    std::optional<ErrorEnd> end{};
    bool byKey = false; ///< the operator asked for the reset
};

/// A warning of the technique, or a condition that keeps the generator from exposing.
struct WarningFact {
    Span span;
    std::string key;         ///< "DL" for the door, "WN" for a technique warning, "ERL" for an interlock
    std::int32_t number = 0; ///< of "WN" and "ERL"
};

struct SilenceFact {
    Span span;
    bool lost = false; ///< it counted as a loss
};

/// What the console was asked to do, with what belongs to it, from the choice to the way back.
enum class Workflow : std::uint8_t { Configuration, Calibration, Autocalibration, Counters, Closing };

/// What came of a part of it.
struct Step {
    Run run = Run::None;
    std::optional<Ending> ending{}; ///< empty: the recording ended first
    Phase mode = Phase::None;       ///< that was reached
};

struct WorkflowFact {
    Span span;
    Workflow what = Workflow::Configuration;
    std::vector<Step> steps{};
    Phase result = Phase::None; ///< of an autocalibration: 12 or 13
    bool open = false;          ///< it has not come to its end
};

struct Question {
    Milliseconds at = 0;
    std::string text;
    std::optional<bool> yes{}; ///< empty: a message, which asks nothing
};

/// A hand on a control.
struct Touch {
    Milliseconds at = 0;
    std::string control;
    std::string caption; ///< what stood on it
    std::string value;   ///< typed, chosen or slid to
};

/// How the line fared.
struct Tally {
    std::int64_t sent = 0;
    std::int64_t lost = 0;     ///< that the device did not take
    std::int64_t repeated = 0; ///< transmissions behind the first
    std::int64_t unanswered = 0;
    std::int64_t heard = 0;
    std::int64_t unknown = 0;
    std::int64_t held = 0; ///< commands that the phase kept back
    std::vector<std::string> firstUnknown;
    std::vector<std::pair<Milliseconds, std::string>> firstHeld;
};

/// Whether what is told is what happened.
struct Trust {
    std::vector<std::string> recordedBy; ///< a session each
    std::int64_t recorded = 0;           ///< frames in the recordings
    std::int64_t same = 0;               ///< of them, played at the same ms
    std::optional<Milliseconds> differsAt{};
    std::vector<Milliseconds> gaps; ///< from where on a recording misses something
    std::string problem;            ///< why a recording could not be played to its end

    [[nodiscard]] bool whole() const { return !differsAt && gaps.empty() && problem.empty(); }
    /// From where on facts are in doubt.
    [[nodiscard]] std::optional<Milliseconds> doubtFrom() const;
};

/// How the generator stood when the last recording ended.
struct Leaving {
    Phase phase = Phase::None;
    std::optional<bool> raysAllowed{}; ///< by the last such command
    bool raysAcknowledged = false;     ///< and the generator has acknowledged that
    bool raysLost = false;             ///< or the device has not taken it
    bool lost = false;
    bool silent = false;
    bool closed = false; ///< the console has said goodbye
};

struct Visit {
    WallClock clock;
    std::vector<Milliseconds> sessions; ///< when each begins
    Milliseconds end = 0;

    std::string generatorVersion; ///< empty: never reported
    std::optional<bool> fluoroscopy{};
    std::string device;
    std::string port;
    std::string line; ///< "19200,n,8,1"

    ValueFacts values;
    std::vector<CounterReset> resets;
    std::vector<ExposureFact> exposures;
    std::string accumulatedDose;
    std::vector<ErrorFact> errors;
    std::vector<WarningFact> warnings;
    std::vector<SilenceFact> silences;
    std::vector<WorkflowFact> workflows;
    std::vector<Question> questions;
    std::vector<Touch> touches;
    std::vector<std::pair<Milliseconds, Phase>> modes; ///< from then on
    std::vector<std::pair<Milliseconds, int>> heat;    ///< percent, from then on
    Tally tally;
    Leaving left;
    Trust trust;

    [[nodiscard]] std::int64_t changedValues() const;
    /// A value of this subject is known under this scope.
    [[nodiscard]] bool knows(Subject subject, std::string_view scope) const;
};

} // namespace quillon
