#include "HappeningSections.h"

#include <algorithm>

#include "Utf8.h"
#include "base/Numbers.h"
#include "base/ScenarioText.h"

namespace quillon {

namespace {

std::string orNever(const std::string& value, const ReportTexts& texts) {
    return value.empty() ? texts["NeverReported"] : utf8Of(value);
}

std::string kVpOf(const ExposureFact& exposure, const ReportTexts& texts) {
    if (exposure.kVp.empty()) {
        return texts["NeverReported"];
    }
    return texts.with(exposure.kVpMeasured ? TextName("Measured") : TextName("Set"), {utf8Of(exposure.kVp)});
}

std::string whereOf(const ExposureFact& exposure, const ReportWords& words) {
    std::string where = exposure.lent ? words.texts()["WhereUsers"] : words.mode(exposure.mode);
    return exposure.workstation > 0 ? where + ", WS" + decimalText(exposure.workstation) : where;
}

std::string endOf(const ExposureFact& exposure, const ReportTexts& texts) {
    if (exposure.fluoroscopy && exposure.to) {
        return texts.with("Fluoro", {ReportWords::length(*exposure.to - exposure.at)});
    }
    return exposure.reason ? texts.with("EndReason", {decimalText(*exposure.reason)})
                           : texts["NeverReported"];
}

std::string howEnded(const ErrorFact& error, const ReportTexts& texts) {
    if (!error.end) {
        return texts[error.span.to ? TextName("NotSeen") : TextName("Stands")];
    }
    switch (*error.end) {
    case ErrorEnd::ResetAcknowledged:
        return texts[error.byKey ? TextName("ByKey") : TextName("ByReset")];
    case ErrorEnd::AnotherPhase:
        return texts[error.byKey ? TextName("ByKeyAndPhase") : TextName("ByItself")];
    case ErrorEnd::AnotherError:
        break;
    }
    return texts["ByOther"];
}

Table keysTable(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Table table{{{texts["Time"]}, {texts["Key"]}, {texts["Words"]}, {texts["Value"]}}, {}};
    table.folded = texts.with("Keys", {std::to_string(visit.touches.size())});
    for (const Touch& each : visit.touches) {
        table.rows.push_back({words.time(each.at), each.control, utf8Of(each.caption), utf8Of(each.value)});
    }
    return table;
}

} // namespace

Section courseSection(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Section section{texts["Course"], {CoursePlace{}}};
    section.say(visit.heat.empty() ? texts["NoHeat"] : texts["CourseLegend"], Tone::Note);
    return section;
}

Section exposureSection(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Section section{texts["Exposures"], {}};
    Table table{{{texts["Time"]},
                 {texts["Where"]},
                 {texts["KV"], true},
                 {texts["MA"], true},
                 {"ms", true},
                 {texts["MX"], true},
                 {texts["End"]},
                 {texts["Dose"], true}},
                {}};
    for (const ExposureFact& each : visit.exposures) {
        const auto actual = [&](const std::string& value) {
            return each.fluoroscopy ? std::string() : orNever(value, texts);
        };
        table.rows.push_back({words.time(each.at), whereOf(each, words), kVpOf(each, texts), actual(each.mA),
                              actual(each.ms), actual(each.mAs), endOf(each, texts), utf8Of(each.dose)});
    }
    if (std::ranges::all_of(visit.exposures, &std::string::empty, &ExposureFact::dose)) {
        table.columns.pop_back();
        for (auto& row : table.rows) {
            row.pop_back();
        }
    }
    const bool any = !table.rows.empty();
    section.add(std::move(table), texts["NoExposures"]);
    if (any) {
        section.say(texts["ExposureNote"], Tone::Note);
    }
    if (!visit.accumulatedDose.empty()) {
        section.say(texts.with("AccumulatedDose", {utf8Of(visit.accumulatedDose)}));
    }
    return section;
}

Section errorSection(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Section section{texts["Errors"], {}};
    Table table{{{texts["From"]},
                 {texts["To"]},
                 {texts["Stood"]},
                 {texts["Number"], true},
                 {texts["Words"]},
                 {texts["HowEnded"]}},
                {}};
    for (const ErrorFact& each : visit.errors) {
        Cell ended(howEnded(each, texts));
        ended.strong = !each.end;
        table.rows.push_back({words.time(each.span.from), each.span.to ? words.time(*each.span.to) : "",
                              words.stood(each.span),
                              each.code != 0 ? decimalText(std::int32_t{each.code}) : "",
                              orNever(each.words, texts), ended});
    }
    section.add(std::move(table), texts["NoErrors"]);
    return section;
}

Section warningSection(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Section section{texts["Warnings"], {}};
    Table table{{{texts["From"]}, {texts["To"]}, {texts["Stood"]}, {texts["What"]}}, {}};
    for (const WarningFact& each : visit.warnings) {
        Cell to(words.end(each.span));
        to.strong = !each.span.to;
        table.rows.push_back({words.time(each.span.from), to, words.stood(each.span), words.warning(each)});
    }
    section.add(std::move(table), texts["NoErrors"]);
    return section;
}

Section lineSection(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Section section{texts["TheLine"], {}};
    Table table{{{texts["SilentFrom"]}, {texts["To"]}, {texts["For"]}, {texts["CountedAsLost"]}}, {}};
    for (const SilenceFact& each : visit.silences) {
        Cell lost(texts[each.lost ? TextName("Yes") : TextName("No")]);
        lost.strong = each.lost;
        table.rows.push_back(
            {words.time(each.span.from), words.end(each.span), words.stood(each.span), lost});
    }
    section.add(std::move(table), texts["NoSilence"]);
    const Tally& tally = visit.tally;
    section.say(texts.with("LineFigures", {std::to_string(tally.sent), std::to_string(tally.lost),
                                           std::to_string(tally.repeated), std::to_string(tally.unanswered),
                                           std::to_string(tally.heard), std::to_string(tally.unknown),
                                           std::to_string(tally.held)}));
    if (!tally.firstUnknown.empty()) {
        std::vector<std::string> unknown;
        for (const std::string& each : tally.firstUnknown) {
            unknown.push_back(scenarioText(each));
        }
        section.say(texts.with("UnknownMessages", {ReportWords::list(unknown)}), Tone::Note);
    }
    if (!tally.firstHeld.empty()) {
        std::vector<std::string> held;
        for (const auto& [at, message] : tally.firstHeld) {
            held.push_back(words.time(at) + " " + utf8Of(message));
        }
        section.say(texts.with("HeldCommands", {ReportWords::list(held)}), Tone::Note);
    }
    return section;
}

Section workSection(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Section section{texts["Done"], {}};
    Table table{{{texts["From"]}, {texts["To"]}, {texts["Took"]}, {texts["What"]}, {texts["Outcome"]}}, {}};
    for (const WorkflowFact& each : visit.workflows) {
        const Span span{each.span.from, each.open ? std::nullopt : each.span.to};
        table.rows.push_back({words.time(span.from), span.to ? words.time(*span.to) : "", words.stood(span),
                              words.workflow(each.what), words.outcome(each)});
    }
    section.add(std::move(table), texts["NothingDone"]);
    if (!visit.questions.empty()) {
        Table questions{{{texts["Time"]}, {texts["Questions"]}, {texts["Answer"]}}, {}};
        for (const Question& each : visit.questions) {
            const std::string answer = !each.yes ? "" : texts[*each.yes ? TextName("Yes") : TextName("No")];
            questions.rows.push_back({words.time(each.at), utf8Of(each.text), answer});
        }
        section.blocks.emplace_back(std::move(questions));
    }
    if (!visit.touches.empty()) {
        section.blocks.emplace_back(keysTable(visit, words));
    }
    return section;
}

} // namespace quillon
