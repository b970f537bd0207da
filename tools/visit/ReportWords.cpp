#include "ReportWords.h"

#include <algorithm>
#include <array>

#include "Utf8.h"
#include "base/Numbers.h"
#include "base/Text.h"

namespace quillon {

namespace {

// In the order of their numbers.
constexpr std::array<TextName, kStimuli> kWayNames{"WayRestart",     "WayReady",         "WayExposure",
                                                   "WayCalibration", "WayConfiguration", "WayAutocalibration",
                                                   "WayLost",        "WayClose"};
constexpr std::array<TextName, 5> kWorkflowNames{"Configuration", "Calibration", "Autocalibration",
                                                 "WorkCounters", "Closing"};

} // namespace

const SettingRow* rowOf(const ValueName& name) {
    const auto rows = name.scope.starts_with("Ready") ? readyRows() : configurationRows();
    const auto row = std::ranges::find(rows, name.name, &SettingRow::name);
    return row == rows.end() ? nullptr : &*row;
}

std::string ReportWords::doubt(Milliseconds at) const {
    const auto from = visit_.trust.doubtFrom();
    return from && at >= *from ? " " + texts_["InDoubt"] : "";
}

std::string ReportWords::time(Milliseconds at) const {
    return visit_.clock.text(at) + doubt(at);
}

std::string ReportWords::end(const Span& span) const {
    return span.to ? time(*span.to) : texts_["Stands"];
}

std::string ReportWords::stood(const Span& span) const {
    return length(span.to.value_or(visit_.end) - span.from);
}

std::string ReportWords::length(Milliseconds ms) {
    constexpr Milliseconds kSecond = 1000;
    constexpr Milliseconds kMinute = 60;
    constexpr Milliseconds kHour = 60 * kMinute;
    const Milliseconds seconds = ms / kSecond;
    if (ms < 10 * kSecond) {
        return fixedDecimals(static_cast<double>(ms) / kSecond, 1) + " s";
    }
    if (seconds < kMinute) {
        return std::to_string(seconds) + " s";
    }
    if (seconds < kHour) {
        return std::to_string(seconds / kMinute) + " min " + std::to_string(seconds % kMinute) + " s";
    }
    return std::to_string(seconds / kHour) + " h " + std::to_string(seconds / kMinute % kMinute) + " min";
}

std::string ReportWords::phase(Phase phase) const {
    return isKnown(phase) ? texts_.named("Phase" + decimalText(numberOf(phase)))
                          : decimalText(numberOf(phase));
}

std::string ReportWords::mode(Phase mode) const {
    switch (mode) {
    case Phase::NormalOperation:
        return texts_["ModeReady"];
    case Phase::Configuration:
        return texts_["Configuration"];
    case Phase::Calibration:
        return texts_["Calibration"];
    case Phase::Autocalibration:
        return texts_["Autocalibration"];
    default:
        return texts_["ModeStart"];
    }
}

std::string ReportWords::setting(const SettingRow& row, const std::string& value) const {
    switch (row.kind) {
    case SettingKind::Switch:
        return texts_[value == "0" ? TextName("Off") : TextName("On")];
    case SettingKind::WorkingMode: {
        const std::string name = "WorkingMode" + value;
        const std::string words = texts_.named(name);
        return words == name ? value : words;
    }
    case SettingKind::Synchronisation:
        return texts_[value == "0" ? TextName("Hardware") : TextName("Software")];
    case SettingKind::FocalSpot:
        return texts_[value == "small" ? TextName("Small") : TextName("Large")];
    case SettingKind::Number:
        break;
    }
    return row.unit.empty() ? value : value + " " + std::string(row.unit);
}

std::string ReportWords::point(const ValueName& name) const {
    std::vector<std::string> parts;
    if (!name.scope.empty()) {
        parts.push_back(name.scope);
    }
    std::string_view rest = name.name; // "small 25 mA", "E01 small", "E07"
    std::string behind;
    for (const auto& [english, word] : {std::pair(std::string_view("small"), TextName("Small")),
                                        std::pair(std::string_view("large"), TextName("Large"))}) {
        if (rest.starts_with(english)) {
            parts.push_back(texts_[word]);
            rest = trim(rest.substr(english.size()));
        } else if (rest.ends_with(english)) {
            behind = texts_[word];
            rest = trim(rest.substr(0, rest.size() - english.size()));
        }
    }
    parts.push_back(utf8Of(rest));
    if (!behind.empty()) {
        parts.push_back(behind);
    }
    return list(parts);
}

std::string ReportWords::name(const ValueName& name) const {
    switch (name.subject) {
    case Subject::Setting: {
        std::string scope = name.scope;
        constexpr std::string_view kReady = "Ready";
        if (scope.starts_with(kReady)) {
            scope = texts_["Phase2"] + scope.substr(kReady.size());
        }
        return scope + ", " + texts_.named(name.name);
    }
    case Subject::Calibration:
        return texts_["Calibration"] + ", " + point(name);
    case Subject::Counter:
        break;
    }
    return texts_["Counter"] + " " + texts_.named("Counter" + name.name);
}

std::string ReportWords::value(const ValueName& name, const std::optional<std::string>& value) const {
    if (!value) {
        return texts_["Unknown"];
    }
    const SettingRow* row = name.subject == Subject::Setting ? rowOf(name) : nullptr;
    return row != nullptr ? setting(*row, *value) : utf8Of(*value);
}

Cell ReportWords::both(const ValueName& name, const ValueFact& fact) const {
    Cell cell(value(name, fact.left) + doubt(fact.leftAt));
    if (fact.found != fact.left) {
        cell.before = value(name, fact.found);
        cell.changed = true;
    }
    return cell;
}

std::string ReportWords::warning(const WarningFact& warning) const {
    const std::string number = decimalText(warning.number);
    return warning.key == "WN"    ? texts_.with("WN", {number})
           : warning.key == "ERL" ? texts_.with("ERL", {number})
                                  : texts_.named(warning.key);
}

std::string ReportWords::workflow(Workflow workflow) const {
    return texts_[kWorkflowNames.at(static_cast<std::size_t>(workflow))];
}

std::string ReportWords::step(const Step& step) const {
    const bool choosing = step.run == Run::ChoosingWorkstation || step.run == Run::ChoosingAutocalibration;
    if (!step.ending) {
        return texts_["GoesOn"];
    }
    switch (step.ending->kind) {
    case Ending::Kind::Failed:
        return texts_["NotReached"];
    case Ending::Kind::GivenUp:
        return texts_["GivenUp"];
    case Ending::Kind::Dropped:
        return texts_["Dropped"];
    case Ending::Kind::Cancelled:
        if (choosing && !step.ending->by) {
            return texts_["Cancelled"];
        }
        return step.ending->by
                   ? texts_.with("BrokenOffBy",
                                 {texts_[kWayNames.at(static_cast<std::size_t>(*step.ending->by))]})
                   : texts_["BrokenOff"];
    case Ending::Kind::Own:
        break;
    }
    switch (step.run) {
    case Run::EnteringConfiguration:
    case Run::EnteringCalibration:
        return texts_["Reached"];
    case Run::EnteringAutocalibration:
    case Run::HandingOver:
        return texts_["HandedOver"];
    case Run::LeavingConfiguration:
    case Run::LeavingCalibration:
    case Run::LeavingAutocalibration:
        return step.mode == Phase::NormalOperation ? texts_["LeftAgain"]
               : step.mode == Phase::Calibration && step.run == Run::LeavingAutocalibration
                   ? texts_.with("BackIn", {mode(step.mode)})
                   : texts_["NotLeft"];
    case Run::Lending:
        return texts_["Lent"];
    case Run::ReadingCounters:
        return texts_["NotRead"];
    case Run::ShowingCounters:
        return texts_["Read"];
    case Run::Closing:
        return texts_["Closed"];
    case Run::ChoosingWorkstation:
    case Run::ChoosingAutocalibration:
    case Run::None:
        break;
    }
    return texts_["Cancelled"];
}

std::string ReportWords::outcome(const WorkflowFact& work) const {
    std::vector<std::string> words;
    for (const Step& each : work.steps) {
        words.push_back(step(each));
        if (&each == &work.steps.front() && work.result != Phase::None) {
            words.push_back(phase(work.result));
        }
    }
    if (work.open && (words.empty() || words.back() != texts_["GoesOn"])) {
        words.push_back(texts_["GoesOn"]);
    }
    return list(words);
}

std::string ReportWords::list(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words) {
        text.append(text.empty() ? "" : ", ").append(word);
    }
    return text;
}

} // namespace quillon
