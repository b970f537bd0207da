#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "CalibrationBook.h"
#include "Visit.h"
#include "model/GeneratorState.h"
#include "tools/scenario/Rig.h"

namespace quillon {

/// The values of the generator in a session that is played: settings, calibration, counters.
class ValueWatcher {
public:
    /// The session begins at that time of the visit.
    ValueWatcher(Visit& visit, Rig& rig, Milliseconds begins)
        : visit_(visit), rig_(rig), begins_(begins), calibration_(visit.values) {}

    void sent(std::string_view frame, bool again);
    void acknowledged(std::string_view frame);
    void unanswered(std::string_view frame) { calibration_.unanswered(frame); }
    /// A message that is known, when the mirror has it.
    void taken(std::string_view key, std::string_view value);
    void counter(std::int32_t number, std::string_view value);
    void modeChanges(Phase before, Phase mode);

private:
    [[nodiscard]] Milliseconds now() const { return begins_ + rig_.machine.time.now(); }
    [[nodiscard]] Phase mode();
    [[nodiscard]] const GeneratorState& mirror();
    /// "WS3"; empty where it is not known which one is meant.
    [[nodiscard]] std::string workstation();
    void settingTaken(std::string_view key, std::string_view value);
    [[nodiscard]] std::string calibrationPoint();
    void calibrationTaken(std::string_view value);
    void counted(const std::string& counter, std::string_view value);

    Visit& visit_;
    Rig& rig_;
    Milliseconds begins_;
    CalibrationBook calibration_;
    std::set<ValueName> stepped_;   ///< before they were reported
    bool defaultsSet_ = false;      ///< the same for all settings of all workstations
    bool workstationAsked_ = false; ///< another one, and it is not reported yet
};

} // namespace quillon
