#include "Workflows.h"

#include <array>
#include <string_view>

#include "base/Numbers.h"
#include "console/Runs.h"

namespace quillon {

namespace {

constexpr std::string_view kHead = R"(# What the console does, and what ends it

Written by `quillon-protocol workflows` from the tables of the program. Change those, then run
`quillon-protocol workflows > docs/workflows.md`.

The console does one thing at a time, a run. A run that is begun takes the place of the one before. What comes from
outside makes of it what its line says:

- *goes on*: to its own next step, which finds the phase that was reported.
- *ends*: at once. Its timers stop, its panel goes, the poll goes on, the event Busy is settled, the prompt goes and
  the key that closes is given.
- *asks*: ends only if nothing was said to the generator yet, or if nothing is to come any more: an entry that an
  exposure meets before its first command, an exit that the generator does not follow, a hand-over that Ready meets.
- *by mode*: "Close" leaves the mode that is reached, and closes the console when none is.
- *waits*: "Close" leaves a mode that is reached, and does nothing before.

A wait that has no end by itself gives "Close" after a minute; its press then ends the run.

| Run | Phase 1 | 2 | 3, 4, 5 | 6 | 8 | 9, 12, 13 | Lost | "Close" | Its timers and panels |
|---|---|---|---|---|---|---|---|---|---|
)";

constexpr std::string_view kWaits = R"(
Waits that may outlive the run that began them:

| Wait | Ended by the phases | By a loss | By the next run |
|---|---|---|---|
)";

std::string_view wordOf(Answer answer) {
    switch (answer) {
    case Answer::GoesOn:
        return "goes on";
    case Answer::Ends:
        return "ends";
    case Answer::Asks:
        return "asks";
    case Answer::ByMode:
        return "by mode";
    case Answer::Nothing:
        return "nothing";
    case Answer::Waits:
        return "waits";
    }
    return "";
}

std::string yesOrNo(bool yes) {
    return yes ? "yes" : "no";
}

void addTo(std::string& list, std::string_view piece) {
    if (!piece.empty()) {
        list.append(list.empty() ? "" : ", ").append(piece);
    }
}

std::string line(const RunRow& row) {
    std::string text = "| " + std::string(row.name) + " |";
    for (const Answer answer : row.answers) {
        text.append(" ").append(wordOf(answer)).append(" |");
    }
    std::string parts;
    for (const auto& names : {row.timers, row.panels}) {
        for (const std::string_view name : names) {
            addTo(parts, name.empty() ? std::string() : "`" + std::string(name) + "`");
        }
    }
    return text + " " + parts + " |\n";
}

std::string line(const WaitRow& row) {
    std::string phases;
    for (std::int32_t phase = numberOf(Phase::Initialization); phase <= numberOf(Phase::AutocalOk); ++phase) {
        addTo(phases, row.endedBy.has(Phase{phase}) ? decimalText(phase) : std::string());
    }
    phases.append(row.notWhileLent ? ", not while the machine is with its users" : "");
    return "| `" + std::string(row.timer) + "` | " + phases + " | " + yesOrNo(row.byLoss) + " | " +
           yesOrNo(row.byNextRun) + " |\n";
}

} // namespace

std::string workflowsDocument() {
    std::string text(kHead);
    for (std::size_t run = 0; run < kRuns; ++run) {
        text += line(rowOf(static_cast<Run>(run)));
    }
    text += kWaits;
    for (const WaitRow& row : waitRows()) {
        text += line(row);
    }
    return text;
}

} // namespace quillon
