#include "VisitDifference.h"

#include <algorithm>

#include "ReportWords.h"
#include "base/Numbers.h"

namespace quillon {

namespace {

/// The values that the visit knows on that side.
std::vector<std::pair<ValueName, std::string>> known(const Visit& visit, Side side) {
    std::vector<std::pair<ValueName, std::string>> values;
    for (const auto& [name, fact] : visit.values) {
        if (fact.*side) {
            values.emplace_back(name, *(fact.*side));
        }
    }
    return values;
}

/// How much a counter has gone on, and a day where the days are known.
std::string changeOf(const Difference::Row& row, const std::optional<double>& days,
                     const ReportTexts& texts) {
    if (row.name.subject == Subject::Setting || !isNumeric(row.first) || !isNumeric(row.second)) {
        return {};
    }
    const double by = toDouble(row.second) - toDouble(row.first);
    const std::string change = (by > 0 ? "+" : "") + decimalText(by);
    const bool daily = by > 0 && row.name.subject == Subject::Counter && days && *days >= 1;
    return daily ? texts.with("PerDay", {change, oneDecimal(decimalText(by / *days))}) : change;
}

std::string namesOf(const std::vector<ValueName>& names, const ReportWords& words) {
    std::vector<std::string> told;
    std::ranges::transform(names, std::back_inserter(told),
                           [&words](const ValueName& name) { return words.name(name); });
    std::string text = std::to_string(names.size());
    return told.empty() ? text : text + " (" + ReportWords::list(told) + ")";
}

Section sectionOf(const std::string& title, const Difference& difference, const std::optional<double>& days,
                  const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Section section{title, {}};
    Table table{{{texts["Value"]}, {texts["First"], true}, {texts["Second"], true}, {texts["Change"]}}, {}};
    for (const Difference::Row& row : difference.changed) {
        Cell second(words.value(row.name, row.second));
        second.changed = true;
        table.rows.push_back(
            {words.name(row.name), words.value(row.name, row.first), second, changeOf(row, days, texts)});
    }
    section.add(std::move(table), texts["NothingChanged"]);
    section.say(texts.with("SameCount", {std::to_string(difference.same)}));
    section.say(texts.with("OnlyFirst", {namesOf(difference.onlyFirst, words)}), Tone::Note);
    section.say(texts.with("OnlySecond", {namesOf(difference.onlySecond, words)}), Tone::Note);
    return section;
}

std::string headOf(const Visit& visit, const ReportTexts& texts) {
    const auto from = visit.clock.at(0);
    return (from ? dateText(*from) + " " + timeOfDayText(*from) : texts["Unknown"]) + ", " +
           ReportWords::length(visit.end) + ", " +
           (visit.generatorVersion.empty() ? texts["NeverReported"] : visit.generatorVersion);
}

std::optional<double> daysBetween(const std::optional<WallTime>& from, const std::optional<WallTime>& to) {
    constexpr double kDay = 24.0 * 3600 * 1000;
    return from && to ? std::optional(static_cast<double>(to->sinceEpoch - from->sinceEpoch) / kDay)
                      : std::nullopt;
}

} // namespace

Difference differenceOf(const Visit& first, Side firstSide, const Visit& second, Side secondSide) {
    Difference difference;
    const auto before = known(first, firstSide);
    const auto after = known(second, secondSide);
    auto a = before.begin();
    auto b = after.begin();
    while (a != before.end() || b != after.end()) {
        if (b == after.end() || (a != before.end() && a->first < b->first)) {
            difference.onlyFirst.push_back((a++)->first);
        } else if (a == before.end() || b->first < a->first) {
            difference.onlySecond.push_back((b++)->first);
        } else {
            if (a->second == b->second) {
                ++difference.same;
            } else {
                difference.changed.push_back({a->first, a->second, b->second});
            }
            ++a;
            ++b;
        }
    }
    return difference;
}

Section sinceSection(const Visit& before, const Visit& visit, const ReportTexts& texts) {
    const auto from = before.clock.at(0);
    return sectionOf(texts.with("Since", {from ? dateText(*from) : texts["Unknown"]}),
                     differenceOf(before, &ValueFact::left, visit, &ValueFact::found),
                     daysBetween(before.clock.at(before.end), visit.clock.at(0)), ReportWords(visit, texts));
}

ReportPage comparisonOf(const Visit& first, const Visit& second, const ReportTexts& texts) {
    const ReportWords words(second, texts);
    ReportPage page;
    page.title = texts["Comparison"];
    page.facts = {{texts["FirstVisit"], headOf(first, texts)}, {texts["SecondVisit"], headOf(second, texts)}};
    for (const auto* each : {&first, &second}) {
        if (!each->trust.whole()) {
            page.lines.push_back((each == &first ? texts["FirstVisit"] : texts["SecondVisit"]) + ": " +
                                 texts["NotWhole"]);
        }
    }
    page.sections = {
        sectionOf(texts["Between"], differenceOf(first, &ValueFact::left, second, &ValueFact::found),
                  daysBetween(first.clock.at(first.end), second.clock.at(0)), words),
        sectionOf(texts["OverBoth"], differenceOf(first, &ValueFact::found, second, &ValueFact::left),
                  daysBetween(first.clock.at(0), second.clock.at(second.end)), words)};
    return page;
}

} // namespace quillon
