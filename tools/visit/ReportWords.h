#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "ReportPage.h"
#include "ReportTexts.h"
#include "Settings.h"
#include "Visit.h"

namespace quillon {

/// How the facts of one visit are put into words.
class ReportWords {
public:
    ReportWords(const Visit& visit, const ReportTexts& texts) : visit_(visit), texts_(texts) {}

    [[nodiscard]] const ReportTexts& texts() const { return texts_; }
    /// The time of day, marked where what is told of then is in doubt.
    [[nodiscard]] std::string time(Milliseconds at) const;
    [[nodiscard]] std::string end(const Span& span) const;
    [[nodiscard]] std::string stood(const Span& span) const;
    /// "9.3 s", "1 min 11 s", "2 h 5 min".
    [[nodiscard]] static std::string length(Milliseconds ms);
    [[nodiscard]] std::string phase(Phase phase) const;
    [[nodiscard]] std::string mode(Phase mode) const;
    [[nodiscard]] std::string setting(const SettingRow& row, const std::string& value) const;
    /// "WS2, small, 25 mA".
    [[nodiscard]] std::string point(const ValueName& name) const;
    /// Of any subject.
    [[nodiscard]] std::string name(const ValueName& name) const;
    [[nodiscard]] std::string value(const ValueName& name, const std::optional<std::string>& value) const;
    /// A value as found and as left, in one cell.
    [[nodiscard]] Cell both(const ValueName& name, const ValueFact& fact) const;
    [[nodiscard]] std::string warning(const WarningFact& warning) const;
    [[nodiscard]] std::string step(const Step& step) const;
    [[nodiscard]] std::string outcome(const WorkflowFact& work) const;
    [[nodiscard]] std::string workflow(Workflow workflow) const;
    /// Joined by ", ".
    [[nodiscard]] static std::string list(const std::vector<std::string>& words);

private:
    [[nodiscard]] std::string doubt(Milliseconds at) const;

    const Visit& visit_;
    const ReportTexts& texts_;
};

/// The row of a setting; empty for one that there is none of.
[[nodiscard]] const SettingRow* rowOf(const ValueName& name);

} // namespace quillon
