#include <set>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "console/ctrQuillonConsole.h"
#include "explore/Session.h"
#include "link/TorvaneSerial.h"

namespace quillon {
namespace {

using testing::IsEmpty;

/// What became of an engineer's round through the modes.
struct Round {
    bool faulted = false; ///< the line had a fault at all
    std::set<std::string> reached;
    std::set<std::string> panels; ///< titles of messages that he had to acknowledge
    bool lost = false;            ///< the console said that the generator is gone
    std::string complaints;
};

/// Configuration, counters and calibration, each entered and left, then the end. He reads what the screen
/// says and presses what it offers, and gives a mode that was not reached a second look.
class Engineer {
public:
    Engineer(Session& session, Round& round) : session_(session), round_(round) {}

    void walk() {
        wait(30000);
        visit("Quillon.cmbConfiguration", "Configuration");
        visit("Quillon.cmbManualCalibration", "Calibration");
        look("Quillon.cmbReadExposureCounters", 20000);
        if (session_.application().console()["fraExposureCounters"].visible()) {
            round_.reached.insert("Counters");
        }
        look("Quillon.cmbReadExposureCounters", 3000);
        session_.leave();
        round_.complaints = session_.complaints();
    }

private:
    void wait(Milliseconds ms) {
        // He looks up now and then.
        for (Milliseconds passed = 0; passed < ms; passed += 1000) {
            session_.perform("wait 1000");
            const std::string& prompt = session_.application().console()["lblHelp"].caption();
            round_.lost = round_.lost || prompt == "Communications ERROR";
            if (const ControlHost* error = session_.application().console().keyed("Error")) {
                round_.panels.insert((*error)["myCaption"].caption());
                session_.perform("click Error.cmbOK");
            }
        }
    }
    void look(const std::string& key, Milliseconds ms) {
        session_.perform("click " + key);
        session_.perform("click SelWSCal.cmdOK");
        wait(ms);
    }
    void visit(const std::string& key, const std::string& phase) {
        for (int tries = 0; tries < 3 && !isShown(phase); ++tries) {
            look(key, 15000);
        }
        if (isShown(phase)) {
            round_.reached.insert(phase);
        }
        for (int tries = 0; tries < 3 && isShown(phase); ++tries) {
            look(key, 20000);
        }
    }
    [[nodiscard]] bool isShown(const std::string& phase) {
        return session_.application().link()["txtPHASE"].caption() == phase;
    }

    Session& session_;
    Round& round_;
};

/// What a fault makes of the bytes.
using Fault = std::string (*)(std::string_view);
std::string nothing(std::string_view) {
    return {};
}
std::string half(std::string_view bytes) {
    return std::string(bytes.substr(0, bytes.size() / 2));
}
std::string twice(std::string_view bytes) {
    return std::string(bytes) + std::string(bytes);
}
std::string garbled(std::string_view bytes) {
    std::string text(bytes);
    text[0] = static_cast<char>(text[0] ^ 0x10);
    return text;
}

constexpr int kFirst = 4; // the messages of the power-up itself come before the round

/// A round in which the Nth piece on its way to one end meets the fault. `kind` chooses what is counted;
/// empty counts everything.
Round roundWith(int n, Fault fault, bool toGenerator, std::string_view kind) {
    Session session(Plan{"", {}, "startphase=2", {}});
    Round round;
    const auto line = [&round, n, fault, kind, seen = 0](std::string_view bytes) mutable {
        const bool counts = !bytes.empty() && (kind.empty() || bytes.starts_with(kind));
        if (!counts || ++seen != n) {
            return std::string(bytes);
        }
        round.faulted = true;
        return fault(bytes);
    };
    (toGenerator ? session.farEnd().toGenerator : session.toConsole) = line;
    Engineer(session, round).walk();
    return round;
}

/// From the first piece to the one that is not there any more: the round runs without a fault then.
template <typename Judge>
int sweep(int step, Fault fault, bool toGenerator, std::string_view kind, Judge judge) {
    int n = 1;
    for (;; n += step) {
        SCOPED_TRACE("piece " + std::to_string(n));
        const Round round = roundWith(n, fault, toGenerator, kind);
        EXPECT_EQ(round.complaints, "");
        judge(round);
        if (!round.faulted) {
            EXPECT_THAT(round.panels, IsEmpty());
            EXPECT_GT(n, kFirst);
            return n;
        }
        if (testing::Test::HasFailure() || n > 3000) {
            return n;
        }
    }
}

void everythingReached(const Round& round) {
    EXPECT_EQ(round.reached, (std::set<std::string>{"Calibration", "Configuration", "Counters"}));
    EXPECT_FALSE(round.lost);
}

// A command that is not acknowledged is sent again. (A step would be executed again; no step is in this
// round.)
TEST(LineFaults, ALostAcknowledgementKeepsNoModeFromItsKey) {
    sweep(1, nothing, false, "AK", [](const Round& round) {
        everythingReached(round);
        EXPECT_THAT(round.panels, IsEmpty());
    });
}

TEST(LineFaults, ALostShortOrDoubledWriteCostsNothing) {
    sweep(9, nothing, true, "", everythingReached);
    sweep(13, half, true, "", everythingReached);
    sweep(13, twice, true, "", everythingReached);
}

// A report that is lost may leave a mode unseen at the end of its wait: the operator is told, and the next
// poll shows what is.
TEST(LineFaults, ALostReportIsMadeUpForByThePoll) {
    std::set<std::string> panels;
    sweep(1, nothing, false, "ST", [&panels](const Round& round) {
        everythingReached(round);
        panels.insert(round.panels.begin(), round.panels.end());
    });
    EXPECT_EQ(panels, std::set<std::string>{"BQS Calibration Dip Switch Error"});
}

TEST(LineFaults, AGarbledOrTruncatedMessageIsDropped) {
    sweep(13, garbled, false, "", everythingReached);
    sweep(17, half, false, "", everythingReached);
}

// The device is gone for a while: nothing passes in either direction from the Nth piece on, for two minutes.
TEST(LineFaults, ADeviceThatIsGoneIsToldAndComesBack) {
    int losses = 0;
    for (int n = 2; n < 160; n += 12) {
        SCOPED_TRACE("from piece " + std::to_string(n));
        Session session(Plan{"", {}, "startphase=2", {}});
        Round round;
        int seen = 0;
        Milliseconds gone = 0;
        const auto line = [&](std::string_view bytes) {
            if (++seen == n) {
                gone = session.machine().time.now();
            }
            const bool away = seen >= n && session.machine().time.now() - gone < 120'000;
            return away ? std::string() : std::string(bytes);
        };
        session.farEnd().toGenerator = line;
        session.toConsole = line;
        Engineer(session, round).walk();
        EXPECT_EQ(round.complaints, "");
        losses += round.lost ? 1 : 0;
        if (HasFailure()) {
            return;
        }
    }
    EXPECT_GT(losses, 4) << "the operator was not told";
}

} // namespace
} // namespace quillon
