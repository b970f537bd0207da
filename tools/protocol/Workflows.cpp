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

The console does one thing at a time, a run. A run that is begun takes the place of the one before. What comes from
outside makes of it what its line says:

- *goes on*: to its own next step, which finds the phase that was reported.
- *ends*: at once. Its timers stop, its panel goes, the poll goes on, the event Busy is settled, the prompt goes and
  the key that closes is given; then the screen is what stands at rest (below).
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

constexpr std::string_view kStanding = R"(
## What stands at rest

While nothing is under way, no message stands and no screen of a positioner, the screen is one row of this table: of where
the generator stands. It is applied when a run ends, when a message goes, and behind every report.

Keys: C Configuration, M Manual Calibration, A Auto Calibration, R Read Exposure Counters, U Go to User Mode, X the key
that closes, E the key that resets an error, F the link control. A key that the row does not give is as left: a row takes
none away. U, C, M, A and R that are not on show are hidden; those that are not lit have the colour of a key at rest.

| Where it stands | Working area | Page | Gives | On show | Lit | X says | Words | Positioner's key |
|---|---|---|---|---|---|---|---|---|
)";

constexpr std::string_view kPhasesAtRest = R"(
What a phase makes of its mode's row:

- 3, 4, 5: the row gives F alone; the other keys come with the end of the exposure.
- 7: the words of autocalibration go. In Ready, M comes with phase 2, as in every phase but that.
- 10: nothing changes. Behind an exposure X is given, and the rest when the tube has cooled.
- 11: the question with its page; the keys of its answer come up again when an answer came to nothing.
- 12, 13: the result. 9: "Press Prep and Expose" once it was handed over and until it is left, otherwise no words.
- 1 and a loss: where an exit was tried in vain, the key that closes says "Close" and closes the console.
- Not lit: autocalibration that was to be left. As left: what is on show of C, A, R, U in a calibration that no run of the
  console's has led to, F in 9 until the entry's own look gives it, M in Ready while a refresh runs.
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
    constexpr std::array<std::string_view, 3> kWords{"as left", "on show", "hidden"};
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
