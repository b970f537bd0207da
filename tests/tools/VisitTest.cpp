#include <gmock/gmock.h>

#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "base/Text.h"
#include "runtime/MemoryPlatform.h"
#include "shell/RecordingReader.h"
#include "tools/explore/Dice.h"
#include "tools/scenario/Script.h"
#include "tools/visit/VisitCsv.h"
#include "tools/visit/VisitDifference.h"
#include "tools/visit/VisitHtml.h"
#include "tools/visit/VisitPlayer.h"
#include "tools/visit/VisitText.h"

namespace quillon {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Books = std::map<std::string, std::string>;

/// What the simulated generator has stored, by its own names: "WS1.TU", "small.25", "E07", "counter0".
Books booksOf(Script& script) {
    Books books;
    const std::string told = script.rig().farEnd.command("books");
    for (const std::string_view line : split(told, "\n")) {
        const auto blank = line.find(' ');
        books[std::string(line.substr(0, blank))] = line.substr(blank + 1);
    }
    return books;
}

/// The name that the generator's books have for a value of the report; empty for one that they do not hold.
std::string bookName(const ValueName& name) {
    switch (name.subject) {
    case Subject::Counter:
        return "counter" + name.name;
    case Subject::Calibration: {
        const auto pieces = split(name.name, " ");
        return pieces.size() == 3 ? std::string(pieces[0]) + "." + std::string(pieces[1])
                                  : std::string(pieces[0]);
    }
    case Subject::Setting:
        break;
    }
    return name.scope.starts_with("WS") && !name.name.starts_with("FI") ? name.scope + "." + name.name : "";
}

/// A visit that was played and recorded.
struct Recorded {
    std::string recording;
    Books before;
    Books after;
    bool whole = false;
};

Recorded record(const std::string& options, const std::vector<std::string>& lines,
                std::string_view head = {}) {
    Recorded made;
    MemoryFolder disk;
    std::ostringstream out;
    std::string scenario(head);
    scenario += "simulate startphase=2 " + options + "\nwait 20000\n";
    for (const std::string& line : lines) {
        scenario += line + "\n";
    }
    Script script(scenario, out);
    script.rig().record(disk.create("session"));
    bool begun = false;
    script.onLine = [&](std::string_view line) {
        if (!begun && line == "wait 20000") {
            made.before = booksOf(script);
            begun = true;
        }
    };
    try {
        (void)script.run();
        made.whole = true;
    } catch (const BadScript&) {
        // A fault of the line has kept a panel away; what was done up to there is a visit as well.
    }
    made.after = booksOf(script);
    made.recording = *disk.find("session");
    return made;
}

/// What an engineer might do in some order, each from Ready and back to it.
std::vector<std::string> randomVisit(std::uint32_t seed) {
    SeededDice dice(seed);
    std::vector<std::string> lines;
    const auto add = [&lines](std::initializer_list<std::string> more) { lines.insert(lines.end(), more); };
    const auto wait = [&] { lines.push_back("wait " + std::to_string(700 + dice.below(2500))); };
    const auto any = [&](std::initializer_list<const char*> names) {
        return std::string(*(names.begin() + dice.below(names.size())));
    };
    const auto counters = [&] {
        add({"click Quillon.cmbReadExposureCounters", "wait 14000"});
        if (dice.below(3) == 0) {
            add({"hold Quillon.cmdReset" + any({"T1", "T2", "Fluoro"}) + " 10500",
                 "click Quillon.cmdResetCounterYes", "wait 4000"});
        }
        add({"click Quillon.cmbReadExposureCounters", "wait 3000"});
    };
    counters();
    for (int part = 0; part < 5; ++part) {
        switch (dice.below(5)) {
        case 0:
            add({"click Quillon.cmbConfiguration", "wait 9000"});
            for (int i = 0; i < 12; ++i) {
                const bool defaults = dice.below(20) == 0;
                lines.push_back(
                    dice.below(4) == 0 ? "click TorvaneSerial.cmbWS(" + std::to_string(dice.below(8)) + ")"
                    : defaults         ? "hold TorvaneSerial.cmbDfltConfig 1500"
                                       : "click TorvaneSerial.cmbConf" +
                                     any({"Tube", "WM", "AEC", "SyncType", "WSInterlock", "FailSafe"}) +
                                     any({"Up", "Down"}));
                wait();
            }
            add({"click Quillon.cmbConfiguration", "wait 15000"});
            break;
        case 1:
            add({"click Quillon.cmbManualCalibration", "click SelWSCal." + any({"cmbWSUp", "cmbWSDown"}),
                 "click SelWSCal.cmdOK", "wait 12000"});
            for (int i = dice.below(3) == 0 ? 15 : 0; i > 0; --i) { // to the parameters
                add({"click TorvaneSerial.cmbMACalUp", "wait 900"});
            }
            for (int i = 0; i < 20; ++i) {
                lines.push_back(
                    "click TorvaneSerial." +
                    any({"cmbMACalUp", "cmbMACalUp", "cmbMACalDown", "cmbCalValueUp", "cmbCalValueDown",
                         "cmbStoreCalValue", "cmbSaveCalValue", "cmbToggleFocusCal"}));
                wait();
            }
            if (dice.below(3) == 0) {
                add({"click Quillon.cmbGoToUserMode", "wait 18000", "sim expose", "wait 6000", "sim expose",
                     "wait 6000", "click Quillon.cmbManualCalibration", "wait 14000"});
            }
            add({"click Quillon.cmbClose", "wait 18000"});
            break;
        case 2:
            add({"click Quillon.cmbAutocalibration", "click SelWSAutocal.cmdOK",
                 "click AutocalSelFocusOrParameter." + any({"cmbAutocalLargeFocus", "cmbAutocalSmallFocus"}),
                 "click AutocalSelFocusOrParameter.cmbOKFocus", "click AutocalWarning.cmbAutocalYes",
                 "wait 60000"});
            if (dice.below(3) > 0) {
                add({"click TorvaneSerial.cmbAutocalConfirm", "wait 60000", "click Quillon.cmbClose",
                     "wait 40000"});
            } else {
                add({"click TorvaneSerial.cmbAutocalDismiss", "wait 60000"});
            }
            break;
        case 3:
            counters();
            break;
        default:
            add({"sim silence on", "wait " + std::to_string(3000 + dice.below(70000)), "sim silence off",
                 "wait 15000", "sim error 31", "wait 3000", "click Quillon.cmbResetError", "wait 4000"});
        }
    }
    counters();
    return lines;
}

TEST(Visit, EachValueIsWhatTheGeneratorHadInItsBooks) {
    int left = 0;
    int changed = 0;
    int whole = 0;
    for (std::uint32_t seed = 1; seed <= 20; ++seed) {
        const std::string faults = seed % 4 == 0 ? " noise=8 dropack=5" : "";
        const Recorded made = record("autoexpose=1 seed=" + std::to_string(seed) + faults, randomVisit(seed));
        const Visit visit = visitOf(made.recording);
        whole += made.whole ? 1 : 0;
        EXPECT_TRUE(visit.trust.whole() && visit.trust.same > 100) << "seed " << seed << visit.trust.problem;
        // Its stations are the same from each workstation: the one that was on show last knows.
        std::map<std::string, const std::pair<const ValueName, ValueFact>*> newest;
        for (const auto& each : visit.values) {
            auto& entry = newest[bookName(each.first)];
            if (entry == nullptr || entry->second.leftAt < each.second.leftAt) {
                entry = &each;
            }
        }
        for (const auto& [name, entry] : newest) {
            const ValueFact& fact = entry->second;
            const bool goneOn = std::ranges::any_of(
                visit.exposures, [&](const ExposureFact& each) { return each.at >= fact.leftAt; });
            if (name.empty() || (entry->first.subject == Subject::Counter && goneOn)) {
                continue;
            }
            ASSERT_TRUE(made.after.contains(name)) << name << ", seed " << seed;
            left += fact.left ? 1 : 0;
            changed += fact.changed() ? 1 : 0;
            EXPECT_EQ(fact.left.value_or(made.after.at(name)), made.after.at(name))
                << name << ", seed " << seed;
        }
        std::map<std::string, const ValueFact*> oldest;
        for (const auto& [name, fact] : visit.values) {
            auto& entry = oldest[bookName(name)];
            entry = entry == nullptr || fact.foundAt < entry->foundAt ? &fact : entry;
        }
        for (const auto& [name, fact] : oldest) {
            if (!name.empty()) {
                EXPECT_EQ(fact->found.value_or(made.before.at(name)), made.before.at(name))
                    << name << ", seed " << seed;
            }
        }
    }
    EXPECT_GE(whole, 15);
    EXPECT_GT(left, 400);
    EXPECT_GT(changed, 60);
}

TEST(Visit, WhatComesFromOutsideIsTextAndWhatNeverCameIsUnknown) {
    const std::string recording =
        record("", {"sim send VR<script>alert('1')</script> & \"2\"", "wait 500", "sim error 77", "wait 3000",
                    "sim send TC1x", "sim send WSx", "sim send WS99999999999", "sim send \"Q,\"",
                    "sim send PDKx", "wait 2000"})
            .recording;
    const Visit visit = visitOf(recording);
    const std::string html = htmlOf(visit, ReportTexts());
    EXPECT_THAT(html, AllOf(HasSubstr("&lt;script&gt;alert(&#39;1&#39;)&lt;/script&gt; &amp; &quot;2&quot;"),
                            Not(HasSubstr("<script")), Not(HasSubstr("http")), Not(HasSubstr(" src="))));
    EXPECT_THAT(html, HasSubstr("<td class='n'>77</td><td>never reported</td><td><b>still stands</b></td>"));
    const std::string text = textOf(visit, ReportTexts());
    EXPECT_THAT(text, AllOf(HasSubstr("! Error 77 stands: "), HasSubstr("! The recording ends before"),
                            HasSubstr("No counter was read."),
                            HasSubstr("The first unknown messages: \"\\\"Q,\\\"\"")));
    for (const std::string_view line : split(text, "\n")) {
        EXPECT_LE(line.size(), 100U + 2 * 10) << line; // a sign beyond ASCII has up to three bytes
    }
    EXPECT_THAT(csvOf(visit),
                HasSubstr("\r\ngenerator,,version,,,,,\"<script>alert('1')</script> & \"\"2\"\"\"\r\n"));
}

TEST(Visit, WhatIsBehindADifferenceOrAGapIsInDoubt) {
    const std::string good =
        record("", {"wait 4000", "click Quillon.cmbReadExposureCounters", "wait 14000"}).recording;
    ASSERT_TRUE(visitOf(good).trust.whole());
    std::string changed = good;
    changed.replace(changed.find("tx \"TC1\""), 8, "tx \"TC9\"");
    const Visit visit = visitOf(changed);
    ASSERT_TRUE(visit.trust.differsAt);
    EXPECT_EQ(visit.trust.recorded, visitOf(good).trust.recorded);
    EXPECT_LT(visit.values.at({Subject::Counter, "", "0"}).foundAt, *visit.trust.differsAt);
    EXPECT_GT(visit.values.at({Subject::Counter, "", "1"}).foundAt, *visit.trust.differsAt);
    const std::string text = textOf(visit, ReportTexts());
    EXPECT_THAT(text, AllOf(HasSubstr("! The recording does not play the same"),
                            testing::ContainsRegex("RAD tube 1 .* 0 \\([0-9:]+\\)"),
                            testing::ContainsRegex("RAD tube 2 .* 0 \\([0-9:]+ \\(\\?\\)\\)")));
    std::string cut = good.substr(0, good.rfind("wait "));
    EXPECT_TRUE(visitOf(cut).trust.whole()) << "a recording that was cut off plays as far as it goes";
    EXPECT_FALSE(visitOf(cut + "nonsense\n").trust.whole());
}

TEST(Visit, SessionsOneBehindTheOtherAreOneVisit) {
    const auto session = [](const std::string& counter, std::string_view clock, std::string_view head = "") {
        std::string recording =
            record("",
                   {"sim set counter0 " + counter, "click Quillon.cmbReadExposureCounters", "wait 14000",
                    "sim error 31", "wait 2000"},
                   head)
                .recording;
        return recording.replace(recording.find("start\n"), 6,
                                 "start\n# 0 clock " + std::string(clock) + "\n");
    };
    const std::string both =
        session("5", "2026-11-25T09:00:00.000+00:00") +
        session("9", "2026-11-25T09:10:00.000+00:00", "file texts.txt\n# Recorded by x\nend\n");
    ASSERT_EQ(recordingsIn(both).size(), 2U);
    const Visit visit = visitOf(both);
    EXPECT_THAT(visit.sessions, testing::ElementsAre(0, 600'000));
    EXPECT_TRUE(visit.trust.whole());
    const ValueFact& counter = visit.values.at({Subject::Counter, "", "0"});
    EXPECT_EQ(counter.found, "5");
    EXPECT_EQ(counter.left, "9");
    EXPECT_GT(counter.leftAt, 600'000);
    ASSERT_EQ(visit.errors.size(), 2U);
    EXPECT_TRUE(visit.errors[0].span.to && !visit.errors[0].end) << "nobody saw its end";
    EXPECT_FALSE(visit.errors[1].span.to);
}

/// One setting, one point and one counter, as found and as left.
Visit visitWith(std::optional<std::string> tube, std::optional<std::string> point,
                std::optional<std::string> counter) {
    Visit visit;
    const auto set = [&visit](Subject subject, const std::string& scope, const std::string& name,
                              const auto& value) {
        if (value) {
            visit.values[{subject, scope, name}].report(*value, 5);
        }
    };
    set(Subject::Setting, "WS3", "TU", tube);
    set(Subject::Calibration, "WS2", "small 25 mA", point);
    set(Subject::Counter, "", "0", counter);
    return visit;
}

TEST(VisitDifference, TellsWhatBothKnowAndWhatOneOnly) {
    const auto told = [](const Visit& a, const Visit& b) {
        const Difference found = differenceOf(a, &ValueFact::left, b, &ValueFact::found);
        std::string text;
        for (const Difference::Row& row : found.changed) {
            text += row.name.name + ": " + row.first + " -> " + row.second + "; ";
        }
        return text + std::to_string(found.same) + " same, " + std::to_string(found.onlyFirst.size()) +
               " and " + std::to_string(found.onlySecond.size()) + " alone";
    };
    Visit all = visitWith("1", "325", "18244");
    EXPECT_EQ(told(all, all), "3 same, 0 and 0 alone");
    EXPECT_EQ(told(all, visitWith("2", "325", "18244")), "TU: 1 -> 2; 2 same, 0 and 0 alone");
    EXPECT_EQ(told(all, visitWith("1", {}, "18300")), "0: 18244 -> 18300; 1 same, 1 and 0 alone");
    EXPECT_EQ(told(visitWith({}, "0", {}), all), "small 25 mA: 0 -> 325; 0 same, 0 and 2 alone");
    all.values.begin()->second.left.reset(); // it was known, and is not any more
    EXPECT_EQ(told(all, all), "2 same, 0 and 1 alone");

    Visit later = visitWith("1", "325", "18344");
    all.clock.add(0, *wallTimeOf("2026-03-01T09:00:00.000+01:00"));
    later.clock.add(0, *wallTimeOf("2026-03-11T09:00:00.000+01:00"));
    EXPECT_THAT(
        plainText(comparisonOf(all, later, ReportTexts())),
        AllOf(HasSubstr("RAD tube 1  18244  *18344*  +100, 10.0 a day"), HasSubstr("The same in both: 1\n")));
}

TEST(WallClock, TellsTheTimeOfDayAndWhereItWasSet) {
    WallClock clock;
    EXPECT_EQ(clock.text(65'000), "0:01:05");
    clock.add(1000, *wallTimeOf("2026-12-31T23:59:58.500+00:00"));
    clock.add(61'000, *wallTimeOf("2027-01-01T02:00:58.500+00:00"));
    clock.add(121'000, *wallTimeOf("2027-01-01T02:01:58.900+00:00"));
    EXPECT_EQ(isoText(*clock.at(4000)), "2027-01-01T00:00:01.500+00:00");
    EXPECT_EQ(clock.text(1500), "23:59:59");
    EXPECT_EQ(clock.text(4000), "2027-01-01 00:00:01");
    const auto jumps = clock.jumps({0});
    ASSERT_EQ(jumps.size(), 1U);
    EXPECT_EQ(jumps[0].by, 2 * 3600 * 1000);
    EXPECT_THAT(clock.jumps({0, 61'000}), IsEmpty()) << "another session";
    for (const char* wrong : {"", "2026", "2026-02-30T10:00:00.000+00:00", "2026-01-01T24:00:00.000+00:00",
                              "2026-01-01T10:00:00"}) {
        EXPECT_FALSE(wallTimeOf(wrong)) << wrong;
    }
}

} // namespace
} // namespace quillon
