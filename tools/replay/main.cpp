#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "Comparison.h"
#include "Listing.h"
#include "ScenarioWriter.h"
#include "base/ProgramArguments.h"

namespace {

constexpr int kWrong = 2;
constexpr const char* kHelp = R"(Usage: quillon-replay [--scenario] FILE   (- reads standard input)
       quillon-replay --against-sim [--profile] [--machine FILE] FILE

FILE is a communication log ("log.txt") or a recording (QUILLON_RECORD).
Without an option: the messages, a line each, with what they mean and what became of them.
--scenario: a scenario for quillon-scenario that plays a log's generator. A recording is one already.
--against-sim: sends the frames of a recording to the simulated generator at their times, and tells where what
it says differs: in messages, values, order, delays. --machine: the profile of that generator.
--profile: with --against-sim, the delays that were measured, as lines of a profile.
--help, -h: this text.
--version: the version.

Ends with 0 when all of the file was understood and nothing differs, 1 when some of it was not or something
differs, 2 when it cannot be read.
)";

constexpr std::array kSwitches{quillon::ProgramSwitch{"--scenario"}, quillon::ProgramSwitch{"--against-sim"},
                               quillon::ProgramSwitch{"--profile"},
                               quillon::ProgramSwitch{"--machine", true}};

std::optional<std::string> contentOf(const std::string& name) {
    std::ifstream file;
    if (name != "-") {
        file.open(name, std::ios::binary);
        if (!file) {
            return std::nullopt;
        }
    }
    std::istream& in = name == "-" ? std::cin : file;
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

int complain(std::string_view what) {
    std::cerr << "quillon-replay: " << what << '\n';
    return kWrong;
}

int compare(const quillon::Journal& recording, const quillon::ProgramArguments& read) {
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

} // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> given(arguments + 1, arguments + std::max(count, 1));
    quillon::ProgramArguments read = quillon::readArguments(given, kSwitches);
    if (read.words.size() != 1 && !read.help && !read.version && read.error.empty()) {
        read.error = "one file is needed";
    }
    if (const auto status = quillon::answerAtOnce(read, "quillon-replay", kHelp)) {
        return *status;
    }
    const bool scenario = read.has("--scenario");
    const std::string& name = read.words.front();
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
        return journal.recorded ? compare(journal, read)
                                : complain("a log tells no times; a recording is needed");
    }
    std::cout << (scenario ? quillon::scenarioOf(journal) : quillon::listing(journal));
    return journal.problems.empty() ? 0 : 1;
}
