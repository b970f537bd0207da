#include "Workflows.h"

#include <array>
#include <string_view>

#include "base/Numbers.h"
#include "console/Runs.h"
#include "console/Standing.h"

namespace quillon {

namespace {

constexpr std::string_view kHead = R"(# What the console does, and what ends it

Written by `quillon-protocol workflows` from the tables of the program. Change those, then run
`quillon-protocol workflows > docs/workflows.md`.

The console does one thing at a time, a run. A new run replaces the one before. The columns say what a report of a phase,
a loss and the key "Close" do to a run:

- *goes on*: the run continues; its own next step looks at the phase that was reported.
- *ends*: at once. Its timers stop, its panel goes, the poll goes on, the event Busy is settled, the prompt goes and
  "Close" can be pressed; then the screen is that of the state at rest (below).
- *asks*: the workflow decides. It ends if an exposure comes before an entry has sent its first command; if calibration
  is reported after the command that leaves it was sent; and if Ready, calibration or configuration is reported when the
  entry into autocalibration has reached autocalibration before or has no timer left. Otherwise it goes on.
- *by mode*: "Close" leaves the mode if one has been reached, otherwise it closes the console.
- *waits*: "Close" leaves the mode if it has been reached, and does nothing before.

If a wait has no end of its own, "Close" can be pressed after a minute and ends the run.

| Run | Phase 1 | 2 | 3, 4, 5 | 6 | 8 | 9, 12, 13 | Lost | "Close" | Its timers and panels |
|---|---|---|---|---|---|---|---|---|---|
)";

constexpr std::string_view kWaits = R"(
Waits that may outlive the run that began them:

| Wait | Ended by the phases | By a loss | By the next run |
|---|---|---|---|
)";

constexpr std::string_view kStanding = R"(
## The screen at rest

While there is no run, no open message and no screen of a positioner, the screen is one row of this table, chosen by the
state of the generator. It is applied when a run ends, when a message is closed, and after every report.

Keys: C Configuration, M Manual Calibration, A Auto Calibration, R Read Exposure Counters, U Go to User Mode, X the key
"Close" or "Exit", E RESET ERROR, F the link control. "Gives" are the keys that the row enables; it disables none, so
other keys stay as they were ("as left"). U, C, M, A and R are hidden unless the row shows them, and have the colour of a
key at rest unless it lights them.

| State | Working area | Page | Gives | Shown | Lit | X says | Words | Positioner's key |
|---|---|---|---|---|---|---|---|---|
)";

constexpr std::string_view kPhasesAtRest = R"(
What a phase changes in the row of its mode:

- 3, 4, 5: the row gives F alone; the other keys come with the end of the exposure.
- 7: the words of autocalibration go. In Ready, M is given with phase 2 only.
- 10: nothing changes. After an exposure X is given, and the rest when the tube has cooled.
- 11: the question with its page; Confirm and Dismiss are shown again if an answer had no effect.
- 12, 13: the result. 9: "Press Prep and Expose" from the hand-over until the mode is left, otherwise no words.
- 1 and a loss: if leaving the mode was tried without success, X says "Close" and closes the console.
- Not lit: an autocalibration that was to be left. As left: which of C, A, R, U are shown in a calibration that no run of
  the console has led to, F in 9 until the entry itself gives it, M in Ready while a refresh runs.
)";

std::string_view wordOf(Reaction answer) {
    switch (answer) {
    case Reaction::GoesOn:
        return "goes on";
    case Reaction::Ends:
        return "ends";
    case Reaction::AskWorkflow:
        return "asks";
    }
    return "";
}

std::string_view wordOf(CloseKey close) {
    switch (close) {
    case CloseKey::ByMode:
        return "by mode";
    case CloseKey::WaitsForMode:
        return "waits";
    case CloseKey::Nothing:
        return "nothing";
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
    for (const Reaction answer : row.reactions.all()) {
        text.append(" ").append(wordOf(answer)).append(" |");
    }
    text.append(" ").append(wordOf(row.close)).append(" |");
    std::string parts;
    const auto add = [&parts](std::string_view name) {
        addTo(parts, name.empty() ? std::string() : "`" + std::string(name) + "`");
    };
    std::for_each(row.timers.begin(), row.timers.end(), add);
    std::for_each(row.panels.begin(), row.panels.end(), add);
    return text + " " + parts + " |\n";
}

std::string line(const WaitRow& row) {
    std::string phases;
    for (std::int32_t phase = 1; phase <= kPhaseCount; ++phase) {
        addTo(phases, row.endedBy.has(Phase{phase}) ? decimalText(phase) : std::string());
    }
    phases.append(row.notWhileLent ? ", not while the machine is with its users" : "");
    return "| `" + std::string(row.timer) + "` | " + phases + " | " + yesOrNo(row.byLoss) + " | " +
           yesOrNo(row.byNextRun) + " |\n";
}

std::string wordOf(Keys set) {
    constexpr std::string_view kLetters = "CMARUXEF"; // in the order of Key
    static_assert(kLetters.size() == kKeyNames.size());
    std::string text;
    set.each([&](Key key) { addTo(text, kLetters.substr(static_cast<std::size_t>(key), 1)); });
    return text.empty() ? "none" : text;
}

std::string_view wordOf(Page page) {
    constexpr std::array<std::string_view, 4> kWords{"as left", "main menu", "Configuration", "Calibration"};
    return kWords.at(static_cast<std::size_t>(page));
}

std::string_view wordOf(Caption caption) {
    constexpr std::array<std::string_view, 3> kWords{"as left", "Close", "Exit"};
    return kWords.at(static_cast<std::size_t>(caption));
}

std::string_view wordOf(Says words) {
    constexpr std::array<std::string_view, 8> kWords{"as left",
                                                     "none",
                                                     "\"Communications ERROR\"",
                                                     "\"Powering Up\"",
                                                     "\"Press Confirm to Start\"",
                                                     "\"Press Prep and Expose\"",
                                                     "\"ERROR\"",
                                                     "\"OK\""};
    return kWords.at(static_cast<std::size_t>(words));
}

std::string_view wordOf(Offer offer) {
    constexpr std::array<std::string_view, 3> kWords{"as left", "shown", "hidden"};
    return kWords.at(static_cast<std::size_t>(offer));
}

std::string line(const StandingRow& row) {
    std::string text = "| " + std::string(row.name) + " | ";
    text.append(row.area == Area::Picture ? "picture" : "link control")
        .append(" | ")
        .append(wordOf(row.page));
    for (const Keys set : {row.inReach, row.shown, row.lit}) {
        text.append(" | ").append(wordOf(set));
    }
    for (const std::string_view word : {wordOf(row.caption), wordOf(row.words), wordOf(row.positioner)}) {
        text.append(" | ").append(word);
    }
    return text + " |\n";
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
    text += kStanding;
    for (std::size_t stand = 0; stand < kStands; ++stand) {
        text += line(rowOf(static_cast<Stand>(stand)));
    }
    text += kPhasesAtRest;
    return text;
}

} // namespace quillon
