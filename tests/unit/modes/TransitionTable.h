#pragma once

#include <array>
#include <string_view>

namespace quillon {

/// One way from a state of the console to another, and the scenario that plays it. "any" stands for every
/// state, "same" for the state it was in.
struct Transition {
    std::string_view from;
    std::string_view trigger;
    std::string_view condition;
    std::string_view to;
    std::string_view scenario; ///< below tests/scenarios
};

// clang-format off
inline constexpr auto kTransitions = std::to_array<Transition>({
    {"any", "GeneratorERROR 33", "m_LastPhase isn't 1", "CommLost", "phases/generator_lost.scn"},
    {"any", "GeneratorERROR, another code", "", "same", "phases/an_error_phase.scn"},
    {"any", "phase 7", "", "same", "phases/an_error_phase.scn"},
    {"any", "phase 1", "", "PoweringUp", "phases/power_up.scn"},
    {"any", "phase 8", "tmrConfigON at rest", "Configuration", "configuration/found_at_start.scn"},
    {"any", "phase 8", "tmrConfigON runs", "ConfigEntering", "configuration/enter_and_leave.scn"},
    {"any", "phase 6", "no entry, no leave of autocalibration", "Calibration", "calibration/late_report.scn"},
    {"any", "phase 2", "m_LastPhase 6, 8, 9, no workflow", "Ready", "phases/mode_lost.scn"},
    {"any", "phase 2", "m_LastPhase 1 or 7, m_PowerUpSeen", "Refreshing", "phases/power_up.scn"},
    {"any", "phase 2", "m_LastPhase 1 or 7, not m_PowerUpSeen", "Refreshing", "phases/refresh_at_once.scn"},
    {"Created", "UserControl_Show", "", "Waiting", "phases/no_generator.scn"},
    {"Waiting", "tmrDelayShow", "m_LastPhase isn't 2", "Waiting", "phases/no_generator.scn"},
    {"Refreshing", "tmrWaitRefresh", "m_LastPhase 2", "Ready", "phases/power_up.scn"},
    {"Ready", "phase 3", "", "Exposing", "phases/exposing.scn"},
    {"Exposing", "phases 4, 5", "", "Exposing", "phases/exposing.scn"},
    {"Exposing", "phase 2", "", "Ready", "phases/exposing.scn"},

    {"Ready", "cmbConfiguration", "", "ConfigEntering", "configuration/enter_and_leave.scn"},
    {"ConfigEntering", "tmrConfigON", "m_ServiceMode 8", "Configuration", "configuration/enter_and_leave.scn"},
    {"ConfigEntering", "tmrConfigON", "m_ServiceMode isn't 8", "Ready", "configuration/not_entered.scn"},
    {"Configuration", "cmbConfiguration", "", "ConfigLeaving", "configuration/enter_and_leave.scn"},
    {"Configuration", "cmbClose", "", "ConfigLeaving", "closing/levels.scn"},
    {"ConfigLeaving", "phase 2", "", "ConfigLeaving", "configuration/enter_and_leave.scn"},
    {"ConfigLeaving", "tmrConfigOFF", "", "Ready", "configuration/enter_and_leave.scn"},

    {"Ready", "cmbManualCalibration", "not TempUserMode", "CalChoice", "calibration/enter_and_leave.scn"},
    {"CalChoice", "OK", "", "CalEntering", "calibration/enter_and_leave.scn"},
    {"CalEntering", "tmrCalON step 2", "m_ServiceMode 6", "Calibration", "calibration/enter_and_leave.scn"},
    {"CalEntering", "tmrCalON step 2", "neither m_ServiceMode 6 nor m_LastPhase 7", "Ready", "calibration/not_entered.scn"},
    {"CalEntering", "tmrCalON step 2", "not m_ServiceMode 6, m_LastPhase 7", "Ready", "calibration/error_during_entry.scn"},
    {"Calibration", "cmbManualCalibration", "", "CalLeaving", "calibration/enter_and_leave.scn"},
    {"Calibration", "cmbClose", "", "CalLeaving", "closing/levels.scn"},
    {"CalLeaving", "phase 2", "", "CalLeaving", "calibration/enter_and_leave.scn"},
    {"CalLeaving", "tmrCalOFF step 2", "m_ServiceMode 2", "Ready", "calibration/enter_and_leave.scn"},
    {"CalLeaving", "tmrCalOFF step 2", "m_ServiceMode isn't 2", "CalLeaving", "calibration/not_left.scn"},
    {"Calibration", "cmbGoToUserMode", "", "UserModeEntering", "user_mode/there_and_back.scn"},
    {"UserModeEntering", "tmrGotoUserMode", "m_ServiceMode 2, TempUserMode", "UserMode", "user_mode/there_and_back.scn"},
    {"UserMode", "cmbManualCalibration or cmbClose", "", "CalEntering", "user_mode/there_and_back.scn"},

    {"Ready", "cmbAutocalibration", "", "AutocalChoice", "autocalibration/time_line.scn"},
    {"AutocalChoice", "OK of the first two panels", "", "AutocalChoice", "autocalibration/time_line.scn"},
    {"AutocalChoice", "Cancel", "", "Ready", "autocalibration/cancelled.scn"},
    {"AutocalChoice", "OK of the warning", "", "AutocalEntering", "autocalibration/time_line.scn"},
    {"AutocalEntering", "tmrAutocalON step 3", "m_ServiceMode isn't 6", "Ready", "autocalibration/calibration_refused.scn"},
    {"AutocalEntering", "phase 11", "", "AutocalConfirm", "autocalibration/time_line.scn"},
    {"AutocalConfirm", "AutocalibrationConfirm", "", "AutocalEntering", "autocalibration/time_line.scn"},
    {"AutocalConfirm", "AutocalibrationDismiss", "", "AutocalLeaving", "autocalibration/simulated_dismiss.scn"},
    {"AutocalEntering", "phase 9", "m_ServiceMode 6", "Autocalibration", "autocalibration/time_line.scn"},
    {"AutocalEntering", "tmrAutocalON step 5, 20th tick", "", "Ready", "autocalibration/nobody_asks.scn"},
    {"Autocalibration", "phases 12, 13", "", "Autocalibration", "autocalibration/simulated_focus.scn"},
    {"Autocalibration", "cmbAutocalibration", "", "AutocalLeaving", "autocalibration/leave_stations.scn"},
    {"Autocalibration", "cmbClose", "", "AutocalLeaving", "closing/levels.scn"},
    {"AutocalLeaving", "AutocalibrationACK False", "m_AutocalOnStep 5", "AutocalLeaving", "autocalibration/leave_shortened.scn"},
    {"AutocalLeaving", "tmrAutocalOFF step 1", "m_LastPhase neither 6 nor 7", "Ready", "autocalibration/leave_parameter.scn"},
    {"AutocalLeaving", "tmrAutocalOFF step 2", "", "Ready", "autocalibration/leave_stations.scn"},

    {"Ready", "cmbReadExposureCounters", "", "CountersReading", "counters/reading.scn"},
    {"CountersReading", "ExposureCounter 2", "", "CountersShown", "counters/reading.scn"},
    {"CountersReading", "tmrReadExposureCounters step 5", "no fluoro answer", "CountersShown", "counters/no_fluoro_answer.scn"},
    {"CountersShown", "cmbReadExposureCounters", "", "Ready", "counters/no_fluoro_answer.scn"},
    {"CountersShown", "cmbClose", "", "Ready", "closing/levels.scn"},
    {"Ready", "cmbClose", "not m_AutocalStarting", "Closing", "shell/closing.scn"},
    {"CommLost", "cmbClose", "m_ServiceMode 8", "ConfigLeaving", "phases/lost_and_left.scn"},
    {"Closing", "tmrGoodbye", "", "ended", "shell/closing.scn"},
});
// clang-format on

} // namespace quillon
