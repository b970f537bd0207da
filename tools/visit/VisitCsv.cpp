#include "VisitCsv.h"

#include <array>
#include <initializer_list>
#include <string_view>

#include "Utf8.h"
#include "base/Numbers.h"

namespace quillon {

namespace {

constexpr std::array<std::string_view, 3> kSubjects{"setting", "calibration", "counter"};
constexpr std::array<std::string_view, 4> kDeeds{"read", "stored by hand", "autocalibration", "reset"};
constexpr std::array<std::string_view, 3> kErrorEnds{"reset acknowledged", "another phase", "another error"};
constexpr std::array<std::string_view, 5> kWorkflows{"configuration", "calibration", "autocalibration",
                                                     "counters", "closing"};
constexpr std::array<std::string_view, 5> kEndings{"own end", "failed", "broken off", "given up", "dropped"};
constexpr std::array<std::string_view, 8> kWays{"restart",       "ready",           "exposure", "calibration",
                                                "configuration", "autocalibration", "loss",     "close key"};

template <typename Names, typename Number> std::string nameIn(const Names& names, Number number) {
    return std::string(names.at(static_cast<std::size_t>(number)));
}

class Rows {
public:
    explicit Rows(const Visit& visit) : visit_(visit) {}

    /// Texts of the wire become UTF-8 here.
    void add(std::initializer_list<std::string> fields) {
        bool first = true;
        for (const std::string& field : fields) {
            text_ += first ? "" : ",";
            first = false;
            const std::string utf8 = utf8Of(field);
            if (utf8.find_first_of(",\"\r\n") == std::string::npos) {
                text_ += utf8;
                continue;
            }
            text_ += '"';
            for (const char c : utf8) {
                text_.append(c == '"' ? 2 : 1, c);
            }
            text_ += '"';
        }
        text_ += "\r\n";
    }
    [[nodiscard]] std::string time(std::optional<Milliseconds> at) const {
        if (!at) {
            return {};
        }
        const auto wall = visit_.clock.at(*at);
        return wall ? isoText(*wall) : fixedDecimals(static_cast<double>(*at) / 1000.0, 3);
    }
    void span(std::string kind, std::string scope, std::string name, const Span& span, std::string note) {
        add({std::move(kind), std::move(scope), std::move(name), "", "", time(span.from), time(span.to),
             std::move(note)});
    }
    [[nodiscard]] std::string take() { return std::move(text_); }

private:
    const Visit& visit_;
    std::string text_;
};

std::string noteOf(const ValueFact& fact) {
    std::string note = nameIn(kDeeds, fact.deed);
    if (fact.unstored) {
        note += "; changed and not stored: " + *fact.unstored;
    }
    return fact.storeInDoubt ? note + "; store not acknowledged" : note;
}

void addValues(const Visit& visit, Rows& rows) {
    for (const auto& [name, fact] : visit.values) {
        rows.add({nameIn(kSubjects, name.subject), name.scope, name.name, fact.found.value_or(""),
                  fact.left.value_or(""), rows.time(fact.found ? std::optional(fact.foundAt) : std::nullopt),
                  rows.time(fact.left ? std::optional(fact.leftAt) : std::nullopt), noteOf(fact)});
    }
    for (const CounterReset& reset : visit.resets) {
        rows.add({"reset", "", reset.counter, "", "", rows.time(reset.asked), rows.time(reset.readAnew),
                  reset.acknowledged ? "acknowledged" : "not acknowledged"});
    }
}

void addHappenings(const Visit& visit, Rows& rows) {
    std::int32_t number = 0;
    for (const ExposureFact& each : visit.exposures) {
        std::string values = each.kVp + " kV" + (each.kVpMeasured ? "" : " set");
        for (const auto& [value, unit] : {std::pair(each.mA, " mA"), std::pair(each.ms, " ms"),
                                          std::pair(each.mAs, " mAs"), std::pair(each.dose, " dose")}) {
            values += value.empty() ? "" : "; " + value + unit;
        }
        const std::string mode = each.lent ? "lent" : "phase " + decimalText(numberOf(each.mode));
        rows.span(each.fluoroscopy ? "fluoroscopy" : "exposure",
                  mode + (each.workstation > 0 ? " WS" + decimalText(each.workstation) : ""),
                  decimalText(++number), {each.at, each.to},
                  values + (each.reason ? "; reason " + decimalText(*each.reason) : ""));
    }
    for (const ErrorFact& each : visit.errors) {
        rows.span("error", "", decimalText(std::int32_t{each.code}), each.span,
                  each.words + (each.end ? "; " + nameIn(kErrorEnds, *each.end) : "; stands"));
    }
    for (const WarningFact& each : visit.warnings) {
        rows.span("warning", each.key, each.number != 0 ? decimalText(each.number) : "", each.span, "");
    }
    for (const SilenceFact& each : visit.silences) {
        rows.span("silence", "", "", each.span, each.lost ? "lost" : "");
    }
    for (const WorkflowFact& each : visit.workflows) {
        std::string note;
        for (const Step& step : each.steps) {
            note.append(note.empty() ? "" : "; ").append(rowOf(step.run).name).append(": ");
            note += step.ending ? nameIn(kEndings, step.ending->kind) : "goes on";
            note += step.ending && step.ending->by ? " by " + nameIn(kWays, *step.ending->by) : "";
        }
        rows.span("workflow", "", nameIn(kWorkflows, each.what), each.span, note);
    }
    for (const Question& each : visit.questions) {
        rows.span(each.yes ? "question" : "message", "", each.yes ? (*each.yes ? "yes" : "no") : "",
                  {each.at, each.at}, each.text);
    }
    for (const Touch& each : visit.touches) {
        rows.span("key", "", each.control, {each.at, each.at}, each.value);
    }
}

} // namespace

std::string csvOf(const Visit& visit) {
    Rows rows(visit);
    const auto plain = [&rows](std::string kind, std::string name, std::string note) {
        rows.add({std::move(kind), "", std::move(name), "", "", "", "", std::move(note)});
    };
    rows.add({"kind", "scope", "name", "found", "left", "from", "to", "note"});
    plain("format", "1", "");
    rows.span("visit", "", "", {0, visit.end}, "");
    plain("generator", "version", visit.generatorVersion);
    plain("generator", "fluoroscopy", visit.fluoroscopy ? (*visit.fluoroscopy ? "1" : "0") : "");
    plain("line", visit.port, visit.line + (visit.device.empty() ? "" : " " + visit.device));
    for (const std::string& program : visit.trust.recordedBy) {
        plain("recorded", "by", program);
    }
    addValues(visit, rows);
    addHappenings(visit, rows);
    const auto figure = [&plain](std::string name, std::int64_t number) {
        plain("figure", std::move(name), std::to_string(number));
    };
    figure("frames sent", visit.tally.sent);
    figure("frames lost", visit.tally.lost);
    figure("frames repeated", visit.tally.repeated);
    figure("frames unacknowledged", visit.tally.unanswered);
    figure("messages heard", visit.tally.heard);
    figure("messages unknown", visit.tally.unknown);
    figure("commands held back", visit.tally.held);
    figure("frames recorded", visit.trust.recorded);
    figure("frames played the same", visit.trust.same);
    if (visit.trust.differsAt) {
        rows.span("doubt", "", "", {*visit.trust.differsAt}, "played differently");
    }
    for (const Milliseconds gap : visit.trust.gaps) {
        rows.span("doubt", "", "", {gap}, "gap in the recording");
    }
    if (!visit.trust.problem.empty()) {
        plain("doubt", "", visit.trust.problem);
    }
    return rows.take();
}

} // namespace quillon
