#include "VisitPage.h"

#include <algorithm>
#include <set>

#include "HappeningSections.h"
#include "ReportWords.h"
#include "Utf8.h"
#include "ValueSections.h"
#include "VisitDifference.h"
#include "base/Numbers.h"

namespace quillon {

namespace {

std::string datesOf(const Visit& visit, const ReportTexts& texts) {
    const auto from = visit.clock.at(0);
    const auto to = visit.clock.at(visit.end);
    const std::string length = ReportWords::length(visit.end);
    if (!from || !to) {
        return texts.with("DatesUnknown", {length});
    }
    return dateText(*from) == dateText(*to)
               ? texts.with("DatesOneDay",
                            {dateText(*from), timeOfDayText(*from), timeOfDayText(*to), length})
               : texts.with("DatesMore", {dateText(*from), timeOfDayText(*from), dateText(*to),
                                          timeOfDayText(*to), length});
}

void addHead(const Visit& visit, const ReportWords& words, ReportPage& page) {
    const ReportTexts& texts = words.texts();
    page.title = texts["Title"];
    page.lines.push_back(datesOf(visit, texts));
    for (const WallClock::Jump& jump : visit.clock.jumps(visit.sessions)) {
        const std::string by = (jump.by < 0 ? "-" : "+") + ReportWords::length(std::abs(jump.by));
        page.lines.push_back(texts.with("ClockSet", {words.time(jump.at), by}));
    }
    const std::string& version = visit.generatorVersion;
    page.facts.emplace_back(texts["GeneratorVersion"],
                            version.empty() ? texts["NeverReported"] : utf8Of(version));
    page.facts.emplace_back(texts["Kind"], !visit.fluoroscopy   ? texts["NeverReported"]
                                           : *visit.fluoroscopy ? texts["WithFluoroscopy"]
                                                                : texts["WithoutFluoroscopy"]);
    const std::set<std::string> programs(visit.trust.recordedBy.begin(), visit.trust.recordedBy.end());
    std::vector<std::string> recordedBy;
    recordedBy.reserve(programs.size());
    for (const std::string& program : programs) {
        recordedBy.push_back(utf8Of(program));
    }
    page.facts.emplace_back(texts["Console"], ReportWords::list(recordedBy));
    std::vector<std::string> line;
    for (const std::string& part : {visit.port, visit.line, visit.device}) {
        if (!part.empty()) {
            line.push_back(utf8Of(part));
        }
    }
    page.facts.emplace_back(texts["Line"], line.empty() ? texts["Unknown"] : ReportWords::list(line));
    if (visit.sessions.size() > 1) {
        std::vector<std::string> begins;
        for (const Milliseconds begin : visit.sessions) {
            begins.push_back(words.time(begin));
        }
        page.facts.emplace_back(texts["Sessions"], ReportWords::list(begins));
    }
    const auto figure = [&page](std::int64_t number, const std::string& what) {
        page.figures.emplace_back(std::to_string(number), what);
    };
    figure(visit.changedValues(), texts["ValuesChanged"]);
    figure(static_cast<std::int64_t>(visit.exposures.size()), texts["ExposureCount"]);
    figure(static_cast<std::int64_t>(visit.errors.size()), texts["ErrorCount"]);
    figure(std::ranges::count_if(visit.resets, &CounterReset::acknowledged), texts["ResetCount"]);
}

void addStanding(const Visit& visit, const ReportWords& words, std::vector<std::string>& bad) {
    const ReportTexts& texts = words.texts();
    for (const ErrorFact& each : visit.errors) {
        if (!each.span.to) {
            bad.push_back(
                texts.with("ErrorStands", {decimalText(std::int32_t{each.code}), utf8Of(each.words)}));
        }
    }
    for (const WarningFact& each : visit.warnings) {
        if (!each.span.to) {
            bad.push_back(texts.with("InterlockStands", {words.warning(each)}));
        }
    }
    const Leaving& left = visit.left;
    if (left.raysAllowed && !*left.raysAllowed) {
        bad.push_back(texts["RaysNotAllowed"]);
    } else if (!left.raysAllowed || left.raysLost || !(left.raysAcknowledged || left.closed)) {
        bad.push_back(texts["RaysUnknown"]);
    }
    if (visit.tally.heard == visit.tally.unknown) {
        bad.push_back(texts["NothingHeard"]);
    } else if (left.lost || left.silent) {
        bad.push_back(texts["StillSilent"]);
    } else if (left.phase != Phase::NormalOperation) {
        bad.push_back(texts.with("NotReady", {words.phase(left.phase)}));
    }
}

Section leftSection(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Section section{texts["HowLeft"], {}};
    std::vector<std::string> bad;
    addStanding(visit, words, bad);
    for (const auto& [name, fact] : visit.values) {
        if (fact.unstored) {
            bad.push_back(texts.with("LeftUnstored", {words.point(name), utf8Of(*fact.unstored)}));
        }
        if (fact.storeInDoubt) {
            bad.push_back(texts.with("LeftInDoubt", {words.point(name)}));
        }
    }
    for (const WorkflowFact& each : visit.workflows) {
        for (const Step& step : each.steps) {
            if (step.ending && step.ending->kind == Ending::Kind::Failed) {
                bad.push_back(
                    texts.with("ModeMissed", {words.workflow(each.what), words.time(each.span.from)}));
            }
        }
    }
    if (!visit.left.closed) {
        bad.push_back(texts["NotClosed"]);
    }
    for (std::string& line : bad) {
        section.say(std::move(line), Tone::Bad);
    }
    if (bad.empty()) {
        section.say(texts["LeftInOrder"], Tone::Good);
    }
    const Leaving& left = visit.left;
    if (left.raysAllowed.value_or(false) && !left.raysLost) {
        if (left.raysAcknowledged) {
            section.say(texts["RaysAllowed"], Tone::Note);
        } else if (left.closed) {
            section.say(texts["RaysAsked"], Tone::Note);
        }
    }
    return section;
}

Section unknownSection(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Section section{texts["NotKnownHead"], {}};
    if (const auto unseen = unseenWorkstations(visit); !unseen.empty()) {
        section.say(texts.with("NotKnownConfig", {ReportWords::list(unseen)}), Tone::Note);
    }
    section.say(texts["NotKnownPoints"], Tone::Note);
    std::vector<std::string> counters;
    for (const std::string number : {"0", "1", "2"}) {
        if (!visit.values.contains({Subject::Counter, "", number})) {
            counters.push_back(texts.named("Counter" + number));
        }
    }
    if (!counters.empty()) {
        section.say(texts.with("NotKnownCounters", {ReportWords::list(counters)}), Tone::Note);
    }
    const bool dose =
        !visit.accumulatedDose.empty() ||
        std::ranges::any_of(visit.exposures, [](const ExposureFact& each) { return !each.dose.empty(); });
    if (!dose) {
        section.say(texts["NotKnownDose"], Tone::Note);
    }
    section.say(texts["NotKnownElse"], Tone::Note);
    return section;
}

Section trustSection(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    const Trust& trust = visit.trust;
    Section section{texts["TrustHead"], {}};
    const std::string same = std::to_string(trust.same);
    const std::string recorded = std::to_string(trust.recorded);
    if (trust.differsAt) {
        section.say(texts.with("PlayedDifferent",
                               {same, recorded, visit.clock.text(*trust.differsAt), texts["InDoubt"]}),
                    Tone::Bad);
    } else {
        section.say(texts.with("PlayedSame", {same, recorded}), Tone::Good);
    }
    for (const Milliseconds gap : trust.gaps) {
        section.say(texts.with("Gap", {visit.clock.text(gap), texts["InDoubt"]}), Tone::Bad);
    }
    if (!trust.problem.empty()) {
        section.say(texts.with("PlayProblem", {utf8Of(trust.problem)}), Tone::Bad);
    }
    if (visit.tally.unknown > 0) {
        section.say(texts.with("Garbled", {std::to_string(visit.tally.unknown)}));
    }
    section.say(texts["TrustNote"], Tone::Note);
    return section;
}

} // namespace

ReportPage pageOf(const Visit& visit, const ReportTexts& texts, const Visit* before) {
    const ReportWords words(visit, texts);
    ReportPage page;
    addHead(visit, words, page);
    page.sections = {
        leftSection(visit, words),        courseSection(visit, words),  configurationSection(visit, words),
        calibrationSection(visit, words), counterSection(visit, words), exposureSection(visit, words),
        errorSection(visit, words),       warningSection(visit, words), lineSection(visit, words),
        workSection(visit, words),        readySection(visit, words),   unknownSection(visit, words),
        trustSection(visit, words)};
    if (before != nullptr) {
        page.sections.push_back(sinceSection(*before, visit, texts));
    }
    return page;
}

} // namespace quillon
