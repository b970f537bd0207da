#include "ValueWatcher.h"

#include "Settings.h"
#include "base/Numbers.h"
#include "base/Text.h"
#include "console/ServiceSession.h"
#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"

namespace quillon {

namespace {

constexpr std::int16_t kFocusParameter = 1; // the one parameter that has a value for each focal spot

} // namespace

Phase ValueWatcher::mode() {
    return rig_.application().console().session().mode();
}

const GeneratorState& ValueWatcher::mirror() {
    return rig_.application().link().mirror();
}

std::string ValueWatcher::workstation() {
    const std::int32_t number = mirror().m_Workstation;
    return workstationAsked_ || number <= 0 ? std::string() : "WS" + std::to_string(number);
}

/// A command that changes a setting makes it unknown until it is reported.
void ValueWatcher::sent(std::string_view frame, bool again) {
    constexpr std::string_view kReset = "TCR";
    constexpr std::string_view kDefaults = "CFD"; // those of workstations that are not on show change as well
    constexpr std::string_view kWorkstation = "WS";
    calibration_.sent(frame);
    if (frame.starts_with(kReset) && !again) {
        visit_.resets.push_back({std::string(frame.substr(kReset.size())), now()});
    }
    const std::string scope = workstation();
    const bool configuration = mode() == Phase::Configuration;
    if (configuration && frame == kDefaults) {
        defaultsSet_ = true;
        for (auto& [name, fact] : visit_.values) {
            if (name.subject == Subject::Setting && name.scope.starts_with(kWorkstation)) {
                fact.left.reset();
            }
        }
    } else if (configuration && !scope.empty() && (frame.ends_with('+') || frame.ends_with('-'))) {
        const ValueName name{Subject::Setting, scope, std::string(frame.substr(0, frame.size() - 1))};
        stepped_.insert(name);
        if (const auto fact = visit_.values.find(name); fact != visit_.values.end()) {
            fact->second.left.reset();
        }
    }
    if (frame.starts_with(kWorkstation) && isNumeric(frame.substr(kWorkstation.size()))) {
        workstationAsked_ = toDouble(frame.substr(kWorkstation.size())) != mirror().m_Workstation;
    }
}

void ValueWatcher::acknowledged(std::string_view frame) {
    calibration_.acknowledged(frame, now());
    if (frame.starts_with("TCR") && !visit_.resets.empty()) {
        visit_.resets.back().acknowledged = true;
    }
}

void ValueWatcher::modeChanges(Phase before, Phase mode) {
    if (mode == Phase::Calibration && before != Phase::Autocalibration) {
        calibration_.modeBegins();
    } else if (mode == Phase::Autocalibration) {
        calibration_.autocalibrationBegins();
    } else if (mode != Phase::Calibration) {
        calibration_.leavePoint();
    }
}

void ValueWatcher::taken(std::string_view key, std::string_view value) {
    if (equalsNoCase(key, "WS")) {
        workstationAsked_ = false;
    }
    if (mode() == Phase::Configuration || mode() == Phase::NormalOperation) {
        settingTaken(key, value);
    } else if (mode() == Phase::Calibration || mode() == Phase::Autocalibration) {
        const bool focus = equalsNoCase(key, "FO1") || equalsNoCase(key, "FO2");
        const bool onFocus =
            mirror().m_CalibrationType > 0 && mirror().m_CalibrationParameter == kFocusParameter;
        if (equalsNoCase(key, "MA") || equalsNoCase(key, "MAS") || (focus && onFocus)) {
            calibration_.placeReported();
        } else if (equalsNoCase(key, "CV") && isNumeric(value)) {
            calibrationTaken(value);
        }
    }
}

void ValueWatcher::settingTaken(std::string_view key, std::string_view value) {
    const bool configuration = mode() == Phase::Configuration;
    const std::string scope = workstation();
    if (configuration && scope.empty()) {
        return; // it is not known whose it is
    }
    const NamedValues reported =
        configuration ? configured(key, value, mirror()) : readySettings(key, value, mirror());
    if (workstationAsked_) {
        return;
    }
    const std::string ready = scope.empty() ? "Ready" : "Ready " + scope;
    for (const auto& [name, told] : reported) {
        const ValueName full{Subject::Setting, configuration ? scope : ready, name};
        ValueFact& fact = visit_.values[full];
        fact.foundUnseen = !fact.found && (stepped_.contains(full) || (configuration && defaultsSet_));
        fact.report(told, now());
    }
}

/// The name of the point that the list stands at; empty where that is not known for certain.
std::string ValueWatcher::calibrationPoint() {
    const GeneratorState& state = mirror();
    const bool small = state.m_SmallFocus == 1;
    const bool large = state.m_LargeFocus == 1;
    const bool focusKnown = small != large || (state.m_SmallFocus < 0 && state.m_LargeFocus < 0);
    const std::string focus = small ? "small" : large ? "large" : "";
    if (state.m_CalibrationType > 0) {
        std::string parameter = "E" + fixedDigits(state.m_CalibrationParameter, 2);
        if (state.m_CalibrationParameter != kFocusParameter) {
            return parameter;
        }
        return !focusKnown ? "" : parameter + (focus.empty() ? "" : " " + focus);
    }
    if (state.m_CalibrationType < 0 || state.m_MADisplay.empty() || !focusKnown) {
        return {};
    }
    return focus + (focus.empty() ? "" : " ") + state.m_MADisplay + " mA";
}

void ValueWatcher::calibrationTaken(std::string_view value) {
    const std::string point = workstationAsked_ ? std::string() : calibrationPoint();
    if (point.empty()) {
        calibration_.leavePoint();
    } else {
        calibration_.value({Subject::Calibration, workstation(), point}, decimalText(toDouble(value)),
                           mode() == Phase::Autocalibration, now());
    }
}

void ValueWatcher::counter(std::int32_t number, std::string_view value) {
    // Some generators tell the third tube behind the second.
    const std::string compact = without(value, ' ');
    const auto pieces = split(compact, "-");
    counted(std::to_string(number), pieces[0]);
    if (number == 1 && pieces.size() > 1) {
        counted("3", pieces[1]);
    }
}

void ValueWatcher::counted(const std::string& counter, std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    ValueFact& fact = visit_.values[{Subject::Counter, "", counter}];
    fact.report(decimalText(toDouble(value)), now());
    for (CounterReset& reset : visit_.resets) {
        if (reset.counter == counter && !reset.readAnew) {
            reset.readAnew = now();
            fact.deed = Deed::Reset;
        }
    }
}

} // namespace quillon
