#include "ValueSections.h"

#include <algorithm>

#include "Utf8.h"
#include "base/Numbers.h"
#include "base/Text.h"

namespace quillon {

namespace {

constexpr std::int32_t kWorkstations = 8;
constexpr std::string_view kFluoroCounter = "2";

/// Scopes of settings that begin so, in their order.
std::vector<std::string> scopesOf(const Visit& visit, std::string_view start) {
    std::vector<std::string> scopes;
    for (const auto& [name, fact] : visit.values) {
        if (name.subject == Subject::Setting && name.scope.starts_with(start) &&
            (scopes.empty() || scopes.back() != name.scope)) {
            scopes.push_back(name.scope);
        }
    }
    return scopes;
}

/// A row each setting, a column each scope. What was not reported is said to be unknown.
Table matrix(const Visit& visit, const ReportWords& words, std::span<const SettingRow> rows,
             const std::vector<std::string>& scopes) {
    Table table{{{words.texts()["Setting"]}}, {}};
    for (const std::string& scope : scopes) {
        constexpr std::string_view kReady = "Ready ";
        table.columns.push_back({scope == "Ready"            ? words.texts()["NoWorkstation"]
                                 : scope.starts_with(kReady) ? scope.substr(kReady.size())
                                                             : scope});
    }
    for (const SettingRow& row : rows) {
        std::vector<Cell> cells{words.texts().named(row.name)};
        bool any = false;
        for (const std::string& scope : scopes) {
            const ValueName name{Subject::Setting, scope, std::string(row.name)};
            const auto fact = visit.values.find(name);
            any = any || fact != visit.values.end();
            cells.push_back(fact == visit.values.end() ? Cell(words.texts()["Unknown"])
                                                       : words.both(name, fact->second));
        }
        if (any) {
            table.rows.push_back(std::move(cells));
        }
    }
    return scopes.empty() ? Table{} : table;
}

std::string changeOf(const ValueFact& fact) {
    if (!fact.changed() || !isNumeric(*fact.found) || !isNumeric(*fact.left)) {
        return {};
    }
    const double by = toDouble(*fact.left) - toDouble(*fact.found);
    return (by > 0 ? "+" : "") + decimalText(by);
}

std::string howOf(const ValueFact& fact, const ReportTexts& texts) {
    std::string how = fact.deed == Deed::StoredByHand      ? texts["StoredByHand"]
                      : fact.deed == Deed::Autocalibrated  ? texts["ByAutocalibration"]
                      : fact.unstored || fact.storeInDoubt ? std::string()
                                                           : texts["OnlyRead"];
    const auto add = [&how](const std::string& words) { how.append(how.empty() ? "" : "; ").append(words); };
    if (fact.storeInDoubt) {
        add(texts["StoreInDoubt"]);
    }
    if (fact.unstored) {
        add(texts.with("NotStored", {utf8Of(*fact.unstored)}));
    }
    return how;
}

std::string resetsOf(const Visit& visit, const ReportWords& words, const std::string& counter) {
    std::vector<std::string> told;
    for (const CounterReset& reset : visit.resets) {
        if (reset.counter == counter) {
            const TextName name = !reset.acknowledged ? TextName("ResetNotAcked")
                                  : reset.readAnew    ? TextName("ResetDone")
                                                      : TextName("ResetNotRead");
            told.push_back(words.texts().with(name, {words.time(reset.asked)}));
        }
    }
    return told.empty() ? words.texts()["No"] : ReportWords::list(told);
}

/// What the counter says against the exposures of this recording. It proves something only when nothing was
/// reset between its two readings.
std::string against(const Visit& visit, const ReportWords& words, const ValueName& name,
                    const ValueFact& fact) {
    const bool wasReset = std::ranges::any_of(
        visit.resets, [&](const CounterReset& reset) { return reset.counter == name.name; });
    if (wasReset || name.name == kFluoroCounter || !fact.found || !fact.left || fact.foundAt == fact.leftAt) {
        return {};
    }
    const double counted = toDouble(*fact.left) - toDouble(*fact.found);
    const auto recorded = std::ranges::count_if(visit.exposures, [&](const ExposureFact& each) {
        return !each.fluoroscopy && each.at > fact.foundAt && each.at <= fact.leftAt;
    });
    if (counted < 0) {
        return words.texts()["CountedBack"];
    }
    const auto number = static_cast<double>(recorded);
    const TextName told = counted == number  ? TextName("CountedAll")
                          : counted < number ? TextName("CountedLess")
                                             : TextName("CountedMore");
    return words.texts().with(told, {decimalText(counted), std::to_string(recorded)});
}

} // namespace

std::vector<std::string> unseenWorkstations(const Visit& visit) {
    std::vector<std::string> unseen;
    for (std::int32_t number = 1; number <= kWorkstations; ++number) {
        const std::string scope = "WS" + decimalText(number);
        if (!visit.knows(Subject::Setting, scope)) {
            unseen.push_back(scope);
        }
    }
    return unseen;
}

Section configurationSection(const Visit& visit, const ReportWords& words) {
    Section section{words.texts()["ConfigurationHead"], {}};
    section.add(matrix(visit, words, configurationRows(), scopesOf(visit, "WS")),
                words.texts()["NoConfiguration"]);
    if (const auto unseen = unseenWorkstations(visit); !unseen.empty()) {
        section.say(words.texts().with("NotOnShow", {ReportWords::list(unseen)}), Tone::Note);
    }
    return section;
}

Section readySection(const Visit& visit, const ReportWords& words) {
    Section section{words.texts()["ReadyHead"], {}};
    section.add(matrix(visit, words, readyRows(), scopesOf(visit, "Ready")), words.texts()["NoReady"]);
    return section;
}

Section calibrationSection(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Section section{texts["CalibrationHead"], {}};
    Table table{{{texts["Point"]},
                 {texts["Found"], true},
                 {texts["Left"], true},
                 {texts["Change"], true},
                 {texts["How"]},
                 {texts["Time"]}},
                {}};
    std::vector<std::pair<Milliseconds, std::vector<Cell>>> rows;
    for (const auto& [name, fact] : visit.values) {
        if (name.subject != Subject::Calibration) {
            continue;
        }
        Cell left(words.value(name, fact.left));
        left.changed = left.strong = fact.found != fact.left;
        Cell how(howOf(fact, texts));
        how.strong = fact.unstored || fact.storeInDoubt;
        const Milliseconds since = fact.found ? fact.foundAt : fact.leftAt;
        rows.emplace_back(since, std::vector<Cell>{words.point(name), words.value(name, fact.found), left,
                                                   changeOf(fact), how, words.time(fact.leftAt)});
    }
    std::ranges::stable_sort(rows, {}, [](const auto& row) { return row.first; });
    for (auto& row : rows) {
        table.rows.push_back(std::move(row.second));
    }
    section.add(std::move(table), texts["NoCalibration"]);
    return section;
}

Section counterSection(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Section section{texts["Counters"], {}};
    Table table{{{texts["Counter"]},
                 {texts["Found"], true},
                 {texts["Left"], true},
                 {texts["Reset"]},
                 {texts["Against"]}},
                {}};
    for (const auto& [name, fact] : visit.values) {
        if (name.subject == Subject::Counter) {
            Cell left(words.value(name, fact.left) + " (" + words.time(fact.leftAt) + ")");
            left.changed = left.strong = fact.found != fact.left;
            table.rows.push_back({texts.named("Counter" + name.name),
                                  words.value(name, fact.found) + " (" + words.time(fact.foundAt) + ")", left,
                                  resetsOf(visit, words, name.name), against(visit, words, name, fact)});
        }
    }
    section.add(std::move(table), texts["NoCounters"]);
    for (const CounterReset& reset : visit.resets) {
        if (!visit.values.contains({Subject::Counter, "", reset.counter})) {
            section.say(texts.named("Counter" + reset.counter) + ": " +
                        resetsOf(visit, words, reset.counter));
        }
    }
    return section;
}

} // namespace quillon
