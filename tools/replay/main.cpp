#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "Listing.h"
#include "Recordings.h"
#include "ScenarioWriter.h"
#include "base/ProgramArguments.h"
#include "runtime/Packing.h"

namespace {

constexpr int kWrong = 2;
constexpr const char* kHelp = R"(Usage: quillon-replay [--scenario] FILE   (- reads standard input)
       quillon-replay --list|--last[=N] [--save PLACE] [FOLDER]

FILE is a communication log ("log.txt") or a recording, packed or not.
Without an option: the messages, a line each, with what they mean and what became of them.
--scenario: a scenario for quillon-scenario that plays a log's generator. A recording is one already.
--list: the recordings of the console, newest first.
--last[=N]: the last visit in the place of FILE, or the last but N - 1. A visit is a session in which the
generator spoke, and what was recorded at the same device less than a quarter of an hour before.
--save PLACE: saves that visit as one packed file instead: under a name of its own where PLACE is a folder.
FOLDER is that of the recordings, where it is not that of the console beside this program.
--help, -h: this text.
--version: the version.

Ends with 0 when all of the file was understood, 1 when some of it was not, 2 when it cannot be read.
)";

constexpr std::array kSwitches{quillon::ProgramSwitch{"--scenario"}, quillon::ProgramSwitch{"--list"},
                               quillon::ProgramSwitch{"--last"}, quillon::ProgramSwitch{"--save", true}};

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

/// The N of "--last=N", which is left as "--last"; 1 without one, nothing when it is no number.
std::optional<int> takeVisit(std::vector<std::string>& words) {
    constexpr std::string_view kLast = "--last";
    int visit = 1;
    for (std::string& word : words) {
        if (word.starts_with(kLast) && word.size() > kLast.size() && word[kLast.size()] == '=') {
            const auto [end, error] =
                std::from_chars(word.data() + kLast.size() + 1, word.data() + word.size(), visit);
            if (error != std::errc{} || end != word.data() + word.size() || visit < 1) {
                return std::nullopt;
            }
            word = kLast;
        }
    }
    return visit;
}

/// Lists what a file or a visit holds, recording by recording.
int tell(const std::string& name, const quillon::RecordingText& read, bool scenario) {
    bool understood = read.problem.empty();
    if (!understood) {
        std::cerr << name << ": " << read.problem << '\n';
    }
    const auto recordings = quillon::recordingsIn(read.text);
    for (std::size_t at = 0; at < recordings.size(); ++at) {
        if (recordings.size() > 1) {
            std::cout << (at > 0 ? "\n" : "") << "== " << name << ", session " << at + 1 << '\n';
        }
        const quillon::Journal journal = quillon::readJournal(recordings[at]);
        for (const std::string& problem : journal.problems) {
            std::cerr << name << ": " << problem << '\n';
        }
        if (scenario && journal.recorded) {
            return complain("a recording is a scenario already");
        }
        std::cout << (scenario ? quillon::scenarioOf(journal) : quillon::listing(journal));
        understood = understood && journal.problems.empty();
    }
    return understood ? 0 : 1;
}

int save(quillon::Recordings& recordings, int visit, const std::string& place) {
    const auto file = recordings.nameAt(place, visit);
    const quillon::RecordingText read = recordings.visit(visit);
    if (const std::string problem = quillon::savePacked(file, read.text); !problem.empty()) {
        return complain(file.string() + ": " + problem);
    }
    if (!read.problem.empty()) {
        std::cerr << file.string() << ": " << read.problem << '\n';
    }
    std::cout << "saved: " << file.string() << ", " << std::filesystem::file_size(file) << " bytes\n";
    return read.problem.empty() ? 0 : 1;
}

} // namespace

int main(int count, char** arguments) {
    std::vector<std::string> given(arguments + 1, arguments + std::max(count, 1));
    const std::optional<int> visit = takeVisit(given);
    quillon::ProgramArguments read = quillon::readArguments(given, kSwitches);
    const bool kept = read.has("--list") || read.has("--last") || read.has("--save");
    if (!read.help && !read.version && read.error.empty()) {
        if (!visit) {
            read.error = "--last= wants a number";
        } else if (kept ? read.words.size() > 1 : read.words.size() != 1) {
            read.error = kept ? "there is one folder of recordings" : "one file is needed";
        }
    }
    if (const auto status = quillon::answerAtOnce(read, "quillon-replay", kHelp)) {
        return *status;
    }
    if (!kept) {
        const std::string& name = read.words.front();
        const auto content = contentOf(name);
        return content ? tell(name, quillon::recordingTextOf(*content), read.has("--scenario"))
                       : complain(name + " cannot be read");
    }
    quillon::Recordings recordings(read.words.empty() ? quillon::Recordings::folderBeside(arguments[0])
                                                      : std::filesystem::path(read.words.front()));
    if (read.has("--list")) {
        std::cout << recordings.list();
        return 0;
    }
    const quillon::RecordingText text = recordings.visit(*visit);
    if (text.text.empty()) {
        return complain("there is no such visit in " + recordings.folder().string());
    }
    return read.has("--save") ? save(recordings, *visit, read.value("--save"))
                              : tell("visit " + std::to_string(*visit), text, read.has("--scenario"));
}
