// Searches the states of the console in virtual time for forbidden ones, and simulates many days of work.

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>
#include <limits>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

#include "Chance.h"
#include "LineSweep.h"
#include "Search.h"
#include "base/ProgramArguments.h"

namespace {

using namespace quillon;

constexpr Milliseconds kDay = Milliseconds{24} * 3600 * 1000;

constexpr int kMovesOfWalk = 100;

/// What is left of a day when the work ends.
constexpr Milliseconds kEvening = Milliseconds{30} * 60 * 1000;

/// Seconds of processor that a day of polling may take.
#ifdef __SANITIZE_ADDRESS__
constexpr double kIdleLimit = 10;
#elif defined(NDEBUG)
constexpr double kIdleLimit = 2;
#else
constexpr double kIdleLimit = 5;
#endif

std::uint32_t number(std::string_view text) {
    return static_cast<std::uint32_t>(std::strtoul(std::string(text).c_str(), nullptr, 10));
}

/// Resident memory in KiB.
long residentMemory() {
    std::ifstream file("/proc/self/statm");
    long total = 0;
    long resident = 0;
    file >> total >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

constexpr std::string_view kHelp =
    "usage: quillon-explore search GROUND [SITUATIONS [WALKS [SEED [PROBES]]]]\n"
    "                               breadth first, then random walks; fails if fewer probes are reached\n"
    "       quillon-explore hunt [SECONDS [SEED [FINDINGS]]]\n"
    "                               the same from everywhere, up to so many findings; fails if a probe is "
    "missing\n"
    "       quillon-explore reach PROBE [SECONDS [SEED]]\n"
    "                               a short way to one of what must be reached\n"
    "       quillon-explore line [STEP [SEED]]        each workflow, a fault of the line at every so manieth "
    "piece\n"
    "       quillon-explore line WORKFLOW FAULT...    one such round, with what travels; a fault is "
    "in:12:lost "
    "or\n"
    "                               out:7:late:on (lost, garbled, stuck, doubled, late)\n"
    "       quillon-explore print GROUND [SEED]       a walk as a scenario\n"
    "       quillon-explore days [DAYS [SEED]]        one session of many days\n"
    "       quillon-explore idle                      a day of polling, timed\n"
    "A ground is where a search begins, by its name, such as \"simulated\"; or ready, scenes, starts or all "
    "for "
    "many. What is found is printed as scenario files.\n";

std::vector<Ground> groundsOf(std::string_view name) {
    if (name == "all") {
        return allGrounds();
    }
    if (name == "ready") {
        return grounds();
    }
    if (name == "scenes") {
        return groundsOfScenes();
    }
    if (name == "starts") {
        return groundsOfStarts();
    }
    for (const Ground& ground : allGrounds()) {
        if (ground.name == name) {
            return {ground};
        }
    }
    return {};
}

int search(const std::string& name, std::size_t situations, std::uint32_t walks, std::uint32_t seed,
           std::size_t probes) {
    Search search(groundsOf(name));
    search.breadthFirst(situations);
    for (std::uint32_t i = 0; i < walks; ++i) {
        search.walk(seed + i, kMovesOfWalk);
    }
    std::cout << search.named() << search.found() << search.reachedAgainstReasons();
    std::cerr << name << ": " << search.figures() << "; " << search.marks().figures()
              << (search.clean() ? "; everything held\n" : "\n");
    const bool reached = search.marks().count() >= probes;
    std::cerr << (reached ? "" : "fewer probes than " + std::to_string(probes) + "\n");
    return search.clean() && reached ? 0 : 1;
}

/// For as long as asked: half the time in breadth, half in walks.
void goOn(Search& search, std::uint32_t seconds, std::uint32_t seed) {
    const auto begin = std::chrono::steady_clock::now();
    const auto over = [&](double share) {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - begin;
        return passed.count() > share * seconds;
    };
    search.breadthFirst(std::numeric_limits<std::size_t>::max(), [&] { return over(0.5); });
    for (std::uint32_t i = 0; !over(1) && !search.enough(); ++i) {
        search.walk(seed + i, kMovesOfWalk);
    }
    std::cerr << search.figures() << "; " << search.marks().figures() << "\n";
}

/// The shortest way to a probe.
int reach(std::string_view probe, std::uint32_t seconds, std::uint32_t seed) {
    Search search(allGrounds(), 1);
    search.want(probe);
    goOn(search, seconds, seed);
    std::cout << search.found();
    return search.clean() ? 1 : 0;
}

int hunt(std::uint32_t seconds, std::uint32_t seed, std::size_t most) {
    Search search(allGrounds(), most);
    goOn(search, seconds, seed);
    const std::string missing = search.marks().complaints();
    std::cout << search.named() << search.found() << search.reachedAgainstReasons() << missing;
    return search.clean() && missing.empty() ? 0 : 1;
}

/// Faults of the line at the pieces of each workflow.
int line(std::size_t step, std::uint32_t seed) {
    LineSweep sweep(step, seed);
    for (const Workflow& workflow : workflows()) {
        const std::size_t before = sweep.rounds();
        sweep.sweep(workflow);
        std::cerr << workflow.scene.name << ": " << sweep.rounds() - before << " rounds\n";
    }
    std::cout << sweep.found();
    return sweep.found().empty() ? 0 : 1;
}

int lineRound(const Workflow& workflow, std::span<const std::string> words) {
    std::vector<LineFault> faults;
    for (const std::string& word : words) {
        const auto fault = lineFaultOf(word);
        if (!fault) {
            std::cerr << kHelp;
            return 2;
        }
        faults.push_back(*fault);
    }
    const std::string complaints = playOnLine(workflow, faults, [](Session& session) {
        session.onFrame = [&session](std::string_view frame) {
            std::cout << session.machine().time.now() << " tx \"" << frame << "\"\n";
        };
        session.onReport = [&session](std::string_view report) {
            std::cout << session.machine().time.now() << " rx \"" << report << "\"\n";
        };
    });
    std::cout << complaints;
    return complaints.empty() ? 0 : 1;
}

/// Prints a walk as a scenario file, and on standard error the frames that it brings on the line.
int print(const Ground& ground, std::uint32_t seed) {
    SeededDice dice(seed);
    Chance chance(ground, dice);
    Plan plan = chance.plan();
    Session session(plan);
    session.onFrame = [&session](std::string_view frame) {
        std::cerr << session.machine().time.now() << " tx \"" << frame << "\"\n";
    };
    for (const std::string& line : plan.lines) {
        session.perform(line);
    }
    for (int i = 0; i < kMovesOfWalk && !session.ended(); ++i) {
        session.perform(chance.next(session));
    }
    plan.lines = session.done();
    std::cout << scenarioOf(plan);
    return 0;
}

/// One application that is never restarted. A day of work ends at rest, so that days can be compared.
int soak(int days, std::uint32_t seed) {
    Session session(Plan{"", {}, "startphase=2", {}});
    session.keepDone(false);
    const Ground ground = groundsOf("simulated").front();
    SeededDice dice(seed);
    Chance chance(ground, dice);
    chance.mayEnd(false);
    // Its own clock, started once and never corrected: it shows whether lateness adds up.
    Timer second(session.machine().time.schedule());
    std::uint64_t ticks = 0;
    second.setTick([&ticks] { ++ticks; });
    Milliseconds slept = 0; // of the PC: no timer ticks meanwhile
    std::uint64_t sleeps = 0;
    const Milliseconds begin = session.machine().time.now();
    second.start(1000);

    long firstDay = 0;
    long lastDay = 0;
    for (int day = 1; day <= days; ++day) {
        while (!session.ended() && session.machine().time.now() < begin + day * kDay - kEvening) {
            std::string line = chance.next(session);
            if (line.starts_with("gap ")) {
                slept += number(line.substr(4));
                ++sleeps;
            }
            // The day ends with the closing of the window; this operator works on. Without a generator, the
            // second "Exit" closes.
            if (line.find("Quillon.cmbClose") == std::string::npos ||
                (session.find("Quillon.cmbClose")->caption() == "Exit" &&
                 !session.application().console().session().generator().isLost())) {
                session.perform(line);
            }
            if (session.machine().time.now() % 7 == 0) {
                session.perform("wait 120000"); // somebody has coffee
            }
        }
        session.comeToRest();
        session.perform("wait " + std::to_string(std::max<Milliseconds>(
                                      0, begin + day * kDay - session.machine().time.now())));
        lastDay = residentMemory();
        if (day == std::max(1, days / 10)) {
            firstDay = lastDay;
        }
        std::cout << "day " << day << ": " << session.frameCount() << " frames, " << session.reportCount()
                  << " messages, " << lastDay << " KiB" << std::endl;
    }
    if (session.ended()) {
        std::cout << "the program has ended\n" << session.complaints();
        return 1;
    }
    const auto passed = static_cast<std::uint64_t>((session.machine().time.now() - begin - slept) / 1000);
    // Each sleep moves the next tick by less than one.
    const bool exact = ticks <= passed + sleeps + 1 && ticks + sleeps + 1 >= passed;
    std::cout << "timer: " << ticks << " ticks in " << passed << " s, and " << sleeps << " sleeps of the PC\n"
              << "memory: " << firstDay << " KiB after day " << std::max(1, days / 10) << ", " << lastDay
              << " KiB at the end\n";
    std::cout << session.complaints();
    const bool flat = lastDay <= firstDay + firstDay / 50 + 512;
    std::cout << (flat ? "" : "memory grows\n") << (exact ? "" : "the timer drifts\n");
    return flat && exact && session.violations().empty() ? 0 : 1;
}

/// A day in which nobody comes: the generator is polled and answers.
int idle() {
    Session session(Plan{"", {}, "startphase=2", {}});
    const std::clock_t begin = std::clock(); // of this process: other work on the machine does not count
    session.machine().time.advance(kDay);
    const double took = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
    // One poll in 1350 ms, each answered.
    const bool polled = session.frameCount() >= kDay / 1400 && session.reportCount() >= kDay / 1400;
    std::cout << "a day of polling: " << session.frameCount() << " frames in " << took << " s of processor\n";
    return polled && took < kIdleLimit ? 0 : 1;
}

int run(const std::vector<std::string>& words) {
    const auto argument = [&](std::size_t at, std::uint32_t otherwise) {
        return at < words.size() ? number(words[at]) : otherwise;
    };
    const std::string what = words.empty() ? "" : words[0];
    const bool onGround = words.size() > 1 && !groundsOf(words[1]).empty();
    if (what == "search" && onGround) {
        return search(words[1], argument(2, 1000), argument(3, 50), argument(4, 1), argument(5, 0));
    }
    if (what == "reach" && words.size() > 1) {
        return reach(words[1], argument(2, 60), argument(3, 1));
    }
    if (what == "print" && onGround) {
        return print(groundsOf(words[1]).front(), argument(2, 1));
    }
    if (what == "hunt") {
        return hunt(argument(1, 60), argument(2, 1), argument(3, 4));
    }
    if (what == "line" && words.size() > 1 && workflowOf(words[1]) != nullptr) {
        return lineRound(*workflowOf(words[1]), std::span(words).subspan(2));
    }
    if (what == "line") {
        return line(argument(1, 1), argument(2, 1));
    }
    if (what == "days") {
        return soak(static_cast<int>(argument(1, 30)), argument(2, 1));
    }
    if (what == "idle") {
        return idle();
    }
    std::cerr << kHelp;
    return 2;
}

} // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> given(arguments + 1, arguments + std::max(count, 1));
    const ProgramArguments read = readArguments(given, {});
    if (const auto status = answerAtOnce(read, "quillon-explore", kHelp)) {
        return *status;
    }
    return run(read.words);
}
