// Searches the states of the console in virtual time for one that must not be; and works on for many days.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include <unistd.h>

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

/// Resident memory in KiB.
long residentMemory() {
    std::ifstream file("/proc/self/statm");
    long total = 0;
    long resident = 0;
    file >> total >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

constexpr std::string_view kHelp =
    "usage: quillon-explore search GROUND [STATES [WALKS [SEED]]]   breadth first, then random walks\n"
    "       quillon-explore hunt [SECONDS [SEED]]                   the same on every ground\n"
    "       quillon-explore print GROUND [SEED]                     a walk as a scenario\n"
    "       quillon-explore days [DAYS [SEED]]                      one session of many days\n"
    "       quillon-explore idle                                    a day of polling, timed\n"
    "A ground is where a search begins: told, remote, orla, simulated. What is found is printed as scenario "
    "files.\n";

const Ground* groundOf(std::string_view name) {
    for (const Ground& ground : grounds()) {
        if (ground.name == name) {
            return &ground;
        }
    }
    return nullptr;
}

/// Tells what was found and what was done.
bool told(const Search& search) {
    std::cout << search.named() << search.found();
    std::cerr << search.figures() << (search.clean() ? "; everything held\n" : "\n");
    return search.clean();
}

int search(const Ground& ground, std::size_t states, std::uint32_t walks, std::uint32_t seed) {
    Search search(ground);
    search.breadthFirst(states);
    for (std::uint32_t i = 0; i < walks; ++i) {
        search.walk(seed + i, kMovesOfWalk);
    }
    return told(search) ? 0 : 1;
}

/// All that a search finds, without stories: for each ground, and from the middle of every run.
int census(std::size_t states, std::uint32_t walks, std::uint32_t seed) {
    constexpr std::size_t kAll = 10000;
    std::vector<Ground> all = grounds();
    for (Ground& ground : groundsOfScenes()) {
        all.push_back(std::move(ground));
    }
    for (const Ground& ground : all) {
        Search search(ground, kAll);
        search.breadthFirst(states);
        for (std::uint32_t i = 0; i < walks; ++i) {
            search.walk(seed + i, kMovesOfWalk);
        }
        std::cout << search.named() << std::flush;
        std::cerr << search.figures() << "\n";
    }
    return 0;
}

/// From the middle of every run: so many states from each, and walks.
int searchScenes(std::size_t states, std::uint32_t walks, std::uint32_t seed) {
    bool clean = true;
    for (const Ground& ground : groundsOfScenes()) {
        Search search(ground);
        search.breadthFirst(states);
        for (std::uint32_t i = 0; i < walks; ++i) {
            search.walk(seed + i, kMovesOfWalk);
        }
        clean = told(search) && clean;
    }
    return clean ? 0 : 1;
}

/// For as long as asked: half the time in breadth, half in walks, the same for each ground.
int hunt(std::uint32_t seconds, std::uint32_t seed) {
    bool clean = true;
    for (const Ground& ground : grounds()) {
        const std::clock_t begin = std::clock();
        const auto over = [&](double share) {
            return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC >
                   share * seconds / static_cast<double>(grounds().size());
        };
        Search search(ground);
        search.breadthFirst(std::numeric_limits<std::size_t>::max(), [&] { return over(0.5); });
        for (std::uint32_t i = 0; search.clean() && !over(1); ++i) {
            search.walk(seed + i, kMovesOfWalk);
        }
        clean = told(search) && clean;
    }
    return clean ? 0 : 1;
}

/// Prints a walk as a scenario file, and on standard error the frames that it brings on the line.
int print(const Ground& ground, std::uint32_t seed) {
    Chance chance(ground, seed);
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
    Chance chance(*groundOf("simulated"), seed);
    // Its own clock, started once and never corrected: it shows whether lateness adds up.
    Timer second(session.machine().time.schedule());
    std::uint64_t ticks = 0;
    second.setTick([&ticks] { ++ticks; });
    const Milliseconds begin = session.machine().time.now();
    second.start(1000);

    long firstDay = 0;
    long lastDay = 0;
    for (int day = 1; day <= days; ++day) {
        while (session.machine().time.now() < begin + day * kDay - kEvening) {
            std::string line = chance.next(session);
            // The day ends with the closing of the window; this operator works on.
            if (line.find("Quillon.cmbClose") == std::string::npos ||
                session.find("Quillon.cmbClose")->caption() == "Exit") {
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
    const auto passed = static_cast<std::uint64_t>((session.machine().time.now() - begin) / 1000);
    std::cout << "timer: " << ticks << " ticks in " << passed << " s\n"
              << "memory: " << firstDay << " KiB after day " << std::max(1, days / 10) << ", " << lastDay
              << " KiB at the end\n";
    std::cout << session.complaints();
    const bool flat = lastDay <= firstDay + firstDay / 50 + 512;
    std::cout << (flat ? "" : "memory grows\n") << (ticks == passed ? "" : "the timer drifts\n");
    return flat && ticks == passed && session.violations().empty() ? 0 : 1;
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

std::uint32_t number(std::string_view text) {
    return static_cast<std::uint32_t>(std::strtoul(std::string(text).c_str(), nullptr, 10));
}

int run(const std::vector<std::string>& words) {
    const auto argument = [&](std::size_t at, std::uint32_t otherwise) {
        return at < words.size() ? number(words[at]) : otherwise;
    };
    const std::string what = words.empty() ? "" : words[0];
    const Ground* ground = words.size() < 2 ? nullptr : groundOf(words[1]);
    if (what == "search" && ground != nullptr) {
        return search(*ground, argument(2, 1000), argument(3, 50), argument(4, 1));
    }
    if (what == "census") {
        return census(argument(1, 100), argument(2, 10), argument(3, 1));
    }
    if (what == "scenes") {
        return searchScenes(argument(1, 200), argument(2, 4), argument(3, 1));
    }
    if (what == "print" && ground != nullptr) {
        return print(*ground, argument(2, 1));
    }
    if (what == "hunt") {
        return hunt(argument(1, 60), argument(2, 1));
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
