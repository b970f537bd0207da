#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "Comparison.h"
#include "Follower.h"
#include "Listing.h"
#include "ScenarioWriter.h"
#include "base/ProgramArguments.h"
#include "tools/visit/VisitCsv.h"
#include "tools/visit/VisitDifference.h"
#include "tools/visit/VisitHtml.h"
#include "tools/visit/VisitPlayer.h"
#include "tools/visit/VisitText.h"

namespace {

constexpr int kWrong = 2;
constexpr const char* kHelp = R"(Usage: quillon-replay [OPTION] FILE   (- reads standard input)
       quillon-replay --compare FILE FILE
       quillon-replay --against-sim [--profile] [--machine FILE] FILE

FILE is a communication log ("log.txt") or a recording (QUILLON_RECORD).
Without an option: the messages, a line each, with what they mean and what became of them.
--scenario: a scenario for quillon-scenario that plays a log's generator. A recording is one already.
--follow: the messages of a recording that is still written, as they come, until the program is ended.
Of a recording, which is played through the console's own program:
--report: a service report as an HTML page on standard output, --text: as plain text, --csv: its facts as rows.
--compare: what differs between two visits, as plain text.
--against-sim: sends the frames of a recording to the simulated generator at their times, and tells where what
it says differs: in messages, values, order, delays. --machine: the profile of that generator.
--profile: with --against-sim, the delays that were measured, as lines of a profile.
--texts FILE: the report's texts in another language, such as examples/report-de.txt.
--help, -h: this text.
--version: the version.

Ends with 0 when all of the file was understood and nothing differs, 1 when some of it was not, a recording does
not play the same or something differs from the simulated generator, 2 when it cannot be read.
)";

// clang-format off
constexpr std::array kSwitches{
    quillon::ProgramSwitch{"--scenario"},
    quillon::ProgramSwitch{"--follow"},
    quillon::ProgramSwitch{"--report"},
    quillon::ProgramSwitch{"--text"},
    quillon::ProgramSwitch{"--csv"},
    quillon::ProgramSwitch{"--compare"},
    quillon::ProgramSwitch{"--against-sim"},
    quillon::ProgramSwitch{"--profile"},
    quillon::ProgramSwitch{"--machine", true},
    quillon::ProgramSwitch{"--texts", true},
};
// clang-format on
/// What one run does; without one of them it lists.
constexpr std::array<std::string_view, 7> kModes{"--scenario", "--follow",  "--report",     "--text",
                                                 "--csv",      "--compare", "--against-sim"};

/// A recording of days is large: it is not copied on its way.
std::optional<std::string> contentOf(const std::string& name) {
    if (name == "-") {
        return std::string(std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>());
    }
    std::ifstream file(name, std::ios::binary | std::ios::ate);
    const auto size = file ? static_cast<std::streamoff>(file.tellg()) : -1;
    std::string content(static_cast<std::size_t>(std::max<std::streamoff>(size, 0)), '\0');
    file.seekg(0);
    if (size < 0 || !file.read(content.data(), size)) {
        return std::nullopt;
    }
    return content;
}

int complain(std::string_view what) {
    std::cerr << "quillon-replay: " << what << '\n';
    return kWrong;
}

/// Prints what the file tells as it grows, until the program is ended.
int follow(const std::string& name) {
    constexpr std::chrono::milliseconds kPace{250};
    std::ifstream file(name, std::ios::binary);
    if (!file) {
        return complain(name + " cannot be read");
    }
    quillon::Follower follower;
    while (std::cout) {
        const std::string more{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        file.clear(); // its end is only the end for now
        std::cout << follower.take(more) << std::flush;
        std::this_thread::sleep_for(kPace);
    }
    return 0;
}

std::optional<quillon::Visit> visitIn(const std::string& name) {
    const auto content = contentOf(name);
    if (!content) {
        complain(name + " cannot be read");
        return std::nullopt;
    }
    if (quillon::recordingsIn(*content).empty()) {
        complain(name + " is no recording");
        return std::nullopt;
    }
    quillon::Visit visit = quillon::visitOf(*content);
    if (!visit.trust.problem.empty()) {
        std::cerr << name << ": " << visit.trust.problem << '\n';
    }
    return visit;
}

int tell(const quillon::ProgramArguments& read) {
    quillon::ReportTexts texts;
    if (const std::string file = read.value("--texts"); !file.empty()) {
        const auto content = contentOf(file);
        if (!content) {
            return complain(file + " cannot be read");
        }
        for (const std::string& problem : texts.replace(*content)) {
            std::cerr << file << ": " << problem << '\n';
        }
    }
    const auto visit = visitIn(read.words.front());
    if (!visit) {
        return kWrong;
    }
    bool whole = visit->trust.whole();
    if (read.has("--report")) {
        std::cout << quillon::htmlOf(*visit, texts);
    } else if (read.has("--text")) {
        std::cout << quillon::textOf(*visit, texts);
    } else if (read.has("--csv")) {
        std::cout << quillon::csvOf(*visit);
    } else {
        const auto second = visitIn(read.words.at(1));
        if (!second) {
            return kWrong;
        }
        whole = whole && second->trust.whole();
        std::cout << quillon::plainText(quillon::comparisonOf(*visit, *second, texts));
    }
    return whole ? 0 : 1;
}

int compareWithSimulator(const quillon::Journal& recording, const quillon::ProgramArguments& read) {
    simulator::Options options;
    if (read.has("--machine")) {
        if (const std::string problem = applyProfileFile(options, read.value("--machine"));
            !problem.empty()) {
            return complain(problem);
        }
    }
    const quillon::Comparison result = compared(quillon::playAgainst(recording, options));
    std::cout << (read.has("--profile") ? result.profile : result.report);
    return !result.differences.empty() || !recording.problems.empty() ? 1 : 0;
}

int list(const quillon::ProgramArguments& read) {
    const std::string& name = read.words.front();
    const bool scenario = read.has("--scenario");
    const auto content = contentOf(name);
    if (!content) {
        return complain(name + " cannot be read");
    }
    const quillon::Journal journal = quillon::readJournal(*content);
    for (const std::string& problem : journal.problems) {
        std::cerr << name << ": " << problem << '\n';
    }
    if (scenario && journal.recorded) {
        return complain("a recording is a scenario already");
    }
    if (read.has("--against-sim")) {
        return journal.recorded ? compareWithSimulator(journal, read)
                                : complain("a log tells no times; a recording is needed");
    }
    std::cout << (scenario ? quillon::scenarioOf(journal) : quillon::listing(journal));
    return journal.problems.empty() ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> given(arguments + 1, arguments + std::max(count, 1));
    quillon::ProgramArguments read = quillon::readArguments(given, kSwitches);
    const auto modes =
        std::ranges::count_if(kModes, [&read](std::string_view mode) { return read.has(mode); });
    const std::size_t files = read.has("--compare") ? 2 : 1;
    if (!read.help && !read.version && read.error.empty()) {
        if (modes > 1) {
            read.error = "one option at a time";
        } else if (read.words.size() != files) {
            read.error = files == 1 ? "one file is needed" : "two files are needed";
        }
    }
    if (const auto status = quillon::answerAtOnce(read, "quillon-replay", kHelp)) {
        return *status;
    }
    if (read.has("--follow")) {
        return follow(read.words.front());
    }
    const bool lists = modes == 0 || read.has("--scenario") || read.has("--against-sim");
    return lists ? list(read) : tell(read);
}
