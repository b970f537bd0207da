#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "Listing.h"
#include "ScenarioWriter.h"
#include "base/ProgramArguments.h"

namespace {

constexpr int kWrong = 2;
constexpr const char* kHelp = R"(Usage: quillon-replay [--scenario] FILE   (- reads standard input)

FILE is a communication log ("log.txt") or a recording (QUILLON_RECORD).
Without an option: the messages, a line each, with what they mean and what became of them.
--scenario: a scenario for quillon-scenario that plays a log's generator. A recording is one already.
--help, -h: this text.
--version: the version.

Ends with 0 when all of the file was understood, 1 when some of it was not, 2 when it cannot be read.
)";

constexpr std::array kSwitches{quillon::ProgramSwitch{"--scenario"}};

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
    std::cout << (scenario ? quillon::scenarioOf(journal) : quillon::listing(journal));
    return journal.problems.empty() ? 0 : 1;
}
