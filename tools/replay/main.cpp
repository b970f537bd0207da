#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "Comparison.h"
#include "EarlierVisit.h"
#include "Follower.h"
#include "Listing.h"
#include "Recordings.h"
#include "ScenarioWriter.h"
#include "base/ProgramArguments.h"
#include "runtime/Packing.h"
#include "tools/visit/VisitCsv.h"
#include "tools/visit/VisitDifference.h"
#include "tools/visit/VisitHtml.h"
#include "tools/visit/VisitPlayer.h"
#include "tools/visit/VisitText.h"

namespace {

constexpr int kWrong = 2;
constexpr const char* kHelp = R"(Usage: quillon-replay [OPTION] FILE   (- reads standard input)
       quillon-replay [OPTION] --last[=N] [FOLDER]
       quillon-replay --list [FOLDER]
       quillon-replay --compare FILE FILE
       quillon-replay --against-sim [--profile] [--machine FILE] FILE

FILE is a communication log ("log.txt") or a recording, packed or not.
--last[=N]: the last visit in the place of FILE, or the last but N - 1. A visit is a session in which the
generator spoke, and what was recorded at the same device less than a quarter of an hour before.
FOLDER is that of the recordings, where it is not that of the console beside this program.
--list: the recordings of the console, newest first.

Without an option: the messages, a line each, with what they mean and what became of them.
--scenario: a scenario for quillon-scenario that plays a log's generator. A recording is one already.
--follow: the messages of a recording that is still written, as they come, until the program is ended.
--save PLACE: saves the last visit as one packed file: under a name of its own where PLACE is a folder.
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
    quillon::ProgramSwitch{"--list"},
    quillon::ProgramSwitch{"--last"},
    quillon::ProgramSwitch{"--save", true},
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
/// What one run does; without one of them it lists messages.
constexpr std::array<std::string_view, 9> kModes{"--list", "--save", "--scenario", "--follow",     "--report",
                                                 "--text", "--csv",  "--compare",  "--against-sim"};

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

/// A file, or a visit of the console's recordings.
struct Source {
    std::string name;
    quillon::RecordingText read;
    quillon::Recordings* recordings = nullptr;
    std::optional<quillon::RecordedVisit> visit{};
};

/// Nothing where it cannot be read, which is told.
std::optional<Source> sourceOf(const std::string& name) {
    const auto content = contentOf(name);
    if (!content) {
        complain(name + " cannot be read");
        return std::nullopt;
    }
    Source source{name, quillon::recordingTextOf(*content)};
    if (!source.read.problem.empty()) {
        std::cerr << name << ": " << source.read.problem << '\n';
    }
    return source;
}

std::optional<Source> sourceOf(quillon::Recordings& recordings, int visit) {
    const auto kept = recordings.visit(visit);
    if (!kept) {
        complain("there is no such visit in " + recordings.folder().string());
        return std::nullopt;
    }
    Source source{"visit " + std::to_string(visit), recordings.textOf(*kept), &recordings, kept};
    if (!source.read.problem.empty()) {
        std::cerr << source.name << ": " << source.read.problem << '\n';
    }
    return source;
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

std::optional<quillon::Visit> visitIn(const Source& source) {
    if (!quillon::isRecording(source.read.text)) {
        complain(source.name + " is no recording");
        return std::nullopt;
    }
    quillon::Visit visit = quillon::visitOf(source.read.text);
    if (!visit.trust.problem.empty()) {
        std::cerr << source.name << ": " << visit.trust.problem << '\n';
    }
    return visit;
}

int report(const Source& source, const quillon::ProgramArguments& read) {
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
    const auto visit = visitIn(source);
    if (!visit) {
        return kWrong;
    }
    bool whole = visit->trust.whole() && source.read.problem.empty();
    const auto earlier = source.visit && !read.has("--csv") && !read.has("--compare")
                             ? quillon::earlierVisit(*source.recordings, *source.visit, *visit)
                             : std::nullopt;
    const quillon::Visit* before = earlier ? &*earlier : nullptr;
    if (read.has("--report")) {
        std::cout << quillon::htmlOf(*visit, texts, before);
    } else if (read.has("--text")) {
        std::cout << quillon::textOf(*visit, texts, before);
    } else if (read.has("--csv")) {
        std::cout << quillon::csvOf(*visit);
    } else {
        const auto other = sourceOf(read.words.at(1));
        const auto second = other ? visitIn(*other) : std::nullopt;
        if (!second) {
            return kWrong;
        }
        whole = whole && second->trust.whole() && other->read.problem.empty();
        std::cout << quillon::plainText(quillon::comparisonOf(*visit, *second, texts));
    }
    return whole ? 0 : 1;
}

int compare(const Source& source, const quillon::ProgramArguments& read) {
    const quillon::Journal recording = quillon::readJournal(source.read.text);
    if (!recording.recorded) {
        return complain("a log tells no times; a recording is needed");
    }
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

/// Lists what a file or a visit holds, recording by recording.
int list(const Source& source, bool scenario) {
    bool understood = source.read.problem.empty();
    const auto recordings = quillon::recordingsIn(source.read.text);
    for (std::size_t at = 0; at < recordings.size(); ++at) {
        if (recordings.size() > 1) {
            std::cout << (at > 0 ? "\n" : "") << "== " << source.name << ", session " << at + 1 << '\n';
        }
        const quillon::Journal journal = quillon::readJournal(recordings[at]);
        for (const std::string& problem : journal.problems) {
            std::cerr << source.name << ": " << problem << '\n';
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
    const auto source = sourceOf(recordings, visit);
    if (!source) {
        return kWrong;
    }
    const auto file = quillon::nameAt(place, *recordings.visit(visit));
    if (const std::string problem = quillon::savePacked(file, source->read.text); !problem.empty()) {
        return complain(file.string() + ": " + problem);
    }
    std::cout << "saved: " << file.string() << ", " << std::filesystem::file_size(file) << " bytes\n";
    return source->read.problem.empty() ? 0 : 1;
}

/// What is wrong with the words; empty when nothing is.
std::string wrongIn(const quillon::ProgramArguments& read, bool kept) {
    const auto modes =
        std::ranges::count_if(kModes, [&read](std::string_view mode) { return read.has(mode); });
    if (modes > 1) {
        return "one option at a time";
    }
    if (kept) {
        return read.has("--compare") || read.has("--follow") ? "that wants files"
               : read.words.size() > 1                       ? "there is one folder of recordings"
                                                             : "";
    }
    const std::size_t files = read.has("--compare") ? 2 : 1;
    return read.words.size() == files ? "" : files == 1 ? "one file is needed" : "two files are needed";
}

int tell(const Source& source, const quillon::ProgramArguments& read) {
    if (read.has("--against-sim")) {
        return compare(source, read);
    }
    const bool reports =
        read.has("--report") || read.has("--text") || read.has("--csv") || read.has("--compare");
    return reports ? report(source, read) : list(source, read.has("--scenario"));
}

} // namespace

int main(int count, char** arguments) {
    std::vector<std::string> given(arguments + 1, arguments + std::max(count, 1));
    const std::optional<int> visit = takeVisit(given);
    quillon::ProgramArguments read = quillon::readArguments(given, kSwitches);
    const bool kept = read.has("--list") || read.has("--last") || read.has("--save");
    if (!read.help && !read.version && read.error.empty()) {
        read.error = visit ? wrongIn(read, kept) : "--last= wants a number";
    }
    if (const auto status = quillon::answerAtOnce(read, "quillon-replay", kHelp)) {
        return *status;
    }
    if (read.has("--follow")) {
        return follow(read.words.front());
    }
    if (!kept) {
        const auto source = sourceOf(read.words.front());
        return source ? tell(*source, read) : kWrong;
    }
    quillon::Recordings recordings(read.words.empty() ? quillon::Recordings::folderBeside(arguments[0])
                                                      : std::filesystem::path(read.words.front()));
    if (read.has("--list")) {
        std::cout << recordings.list();
        return 0;
    }
    if (read.has("--save")) {
        return save(recordings, *visit, read.value("--save"));
    }
    const auto source = sourceOf(recordings, *visit);
    return source ? tell(*source, read) : kWrong;
}
