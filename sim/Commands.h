#pragma once

#include "base/Phase.h"

#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace simulator {

using quillon::Phase;
using quillon::Phases;

inline constexpr Phase kOff = Phase::None;

// Sets of phases that stand in many rows.
inline constexpr Phases kReady{Phase::NormalOperation};
inline constexpr Phases kReadyOrFluoro{Phase::NormalOperation, Phase::FluoroExposure};
inline constexpr Phases kCalibrating{Phase::Calibration};
inline constexpr Phases kAutocalibrating{Phase::Autocalibration};
inline constexpr Phases kCalibratingEither{Phase::Calibration, Phase::Autocalibration};
inline constexpr Phases kConfiguring{Phase::Configuration};
inline constexpr Phases kOnceStarted{Phase::NormalOperation, Phase::Preparation,     Phase::RadExposure,
                                     Phase::FluoroExposure,  Phase::Calibration,     Phase::Error,
                                     Phase::Configuration,   Phase::Autocalibration, Phase::TubeTooHot,
                                     Phase::ConfirmDismiss,  Phase::AutocalError,    Phase::AutocalOk};
inline constexpr Phases kEveryPhase{Phase::Initialization, Phase::NormalOperation, Phase::Preparation,
                                    Phase::RadExposure,    Phase::FluoroExposure,  Phase::Calibration,
                                    Phase::Error,          Phase::Configuration,   Phase::Autocalibration,
                                    Phase::TubeTooHot,     Phase::ConfirmDismiss,  Phase::AutocalError,
                                    Phase::AutocalOk};

/// What may stand behind a mnemonic.
enum class Takes { Nothing, Number, NumberOrNothing, Text };

/// One command of the console, as a subject gets it.
struct Request {
    std::string_view argument;
    std::optional<double> number;
    int amount = 0; ///< from the row: the size and direction of a step, or which item is meant
};

/// One row of a subject's table. A handler says whether it could use the argument. The same mnemonic may
/// stand in several rows with different phases.
template <class Subject> struct Row {
    std::string_view mnemonic;
    Phases phases;
    Takes takes;
    bool (Subject::*handler)(const Request&);
    int amount = 0;
};

enum class Verdict { Taken, WrongPhase, BadArgument, Unknown };

/// Finds the command for a text: the longest mnemonic it begins with.
class CommandTable {
public:
    template <class Subject> void enroll(Subject& subject, std::span<const Row<Subject>> rows) {
        for (const Row<Subject>& row : rows) {
            entries_.push_back({row.mnemonic, row.phases, row.takes, row.amount,
                                [&subject, handler = row.handler](const Request& request) {
                                    return (subject.*handler)(request);
                                }});
        }
    }

    [[nodiscard]] Verdict run(std::string_view text, Phase phase) const;

private:
    struct Entry {
        std::string_view mnemonic;
        Phases phases;
        Takes takes;
        int amount;
        std::function<bool(const Request&)> handler;
    };

    std::vector<Entry> entries_;
};

} // namespace simulator
