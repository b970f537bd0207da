#include <algorithm>
#include <array>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "Script.h"
#include "base/ProgramArguments.h"
#include "shell/RecordingReader.h"

namespace {

constexpr int kHeld = 0;
constexpr int kFailed = 1;
constexpr int kWrong = 2;

constexpr const char* kHelp =
    R"(Usage: quillon-scenario [--beyond-gaps] [--record FILE] FILE...   (- reads standard input)

Runs the whole console in virtual time as each file says, and prints what happened, a line each, behind its
time in ms. A file has one command a line:

  before the start
    file NAME ... end      the lines between are a file beside the program, "Quillon.ini" for one
    args TEXT              the command line
    screen W H             the screen in pixels
    port N fail|ok|comes   COM port N cannot be opened, or can be; it opens, where the console waits for it
    power refuse TEXT|ok   a restart of the PC is refused; is done
    start                  the console starts; the first other command does it, too
  the generator
    msg TEXT, rx TEXT      a message from it; bytes from it as they are
    ack MS|off             it acknowledges each command after MS
    reply TEXT with TEXT after MS      it answers a command; "reply TEXT off" ends that
    simulate [KEY=VALUE...], sim TEXT  the simulated generator; a command for it
    lesson FILE, hint      the machine of a lesson is the generator; the lesson's next hint
    box stands, box goes   in a recording: the box that has just come up stands for what lies between
    wait MS                time passes
    gap MS                 the PC sleeps
    gap MS LINES           in a recording: for MS it could not be written, LINES are missing
  the engineer
    press C, release C [outside], click C, hold C MS
    type C TEXT, select C TEXT, slide C VALUE
    size W H, close, answer yes|no|ok
  looking
    show C..., list OWNER  the state of controls; of all controls of an owner
    call NAME ARG..., set NAME VALUE, get NAME
    store, cat NAME        the user's settings; a file
    mark, expect TEXT, reject TEXT, count N TEXT, quiet event|off

C is OWNER.NAME: "Quillon.cmbConfiguration" is a key of the console, "TorvaneSerial.cmbConfWMUp" one of the
generator's keyboard. "list Quillon" and "list TorvaneSerial" print all names; docs/scenarios.md tells the rest.

  --beyond-gaps  goes on behind a gap in a recording; without it the run of the file ends there
  --record FILE  writes the recording that the program would have made of it; of one file only
  --help, -h     this text
  --version      the version

Ends with 0 when every expect, reject and count held, with 1 when one did not, with 2 when a file is wrong.
)";

constexpr std::array kSwitches{quillon::ProgramSwitch{"--beyond-gaps"},
                               quillon::ProgramSwitch{"--record", true}};

class RecordingFile final : public quillon::TextSink {
public:
    explicit RecordingFile(const std::string& name) : file_(name, std::ios::binary) {}
    [[nodiscard]] bool isOpen() const { return file_.is_open(); }
    bool write(std::string_view text) override { return static_cast<bool>(file_ << text << std::flush); }

private:
    std::ofstream file_;
};

std::optional<std::string> contentOf(const std::string& name) {
    const auto all = [](std::istream& in) {
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    };
    if (name == "-") {
        return all(std::cin);
    }
    std::ifstream file(name, std::ios::binary);
    if (!file || file.peek() == std::ifstream::traits_type::eof()) {
        // A directory opens and can't be read; an empty file is a scenario in which nothing happens.
        return file.is_open() && file.eof() && !file.bad() ? std::optional(std::string{}) : std::nullopt;
    }
    return all(file);
}

struct Wishes {
    bool beyondGaps;
    std::string recording; ///< the file; empty for none
};

int complain(const std::string& name, int line, std::string_view what) {
    std::cout.flush();
    std::cerr << name << ':' << line << ": " << what << '\n';
    return kWrong;
}

int runText(const std::string& name, std::string_view text, const Wishes& wishes) {
    quillon::Script script(text, std::cout, wishes.beyondGaps);
    if (!wishes.recording.empty()) {
        auto file = std::make_unique<RecordingFile>(wishes.recording);
        if (!file->isOpen()) {
            return complain(wishes.recording, 0, "cannot be written");
        }
        script.rig().record(std::move(file));
    }
    try {
        return script.run() ? kHeld : kFailed;
    } catch (const quillon::BadScript& problem) {
        return complain(name, script.line(), problem.what());
    }
}

/// Recordings that one file holds have a fresh start each, as files have.
int runFile(const std::string& name, const Wishes& wishes) {
    const auto content = contentOf(name);
    if (!content) {
        return complain(name, 0, "cannot be read");
    }
    const quillon::RecordingText read = quillon::recordingTextOf(*content);
    if (!read.problem.empty()) {
        std::cerr << name << ": " << read.problem << '\n';
    }
    if (read.text.empty() && !read.problem.empty()) {
        return kWrong;
    }
    const auto recordings = quillon::recordingsIn(read.text);
    int status = kHeld;
    for (std::size_t at = 0; at < recordings.size(); ++at) {
        if (recordings.size() > 1) {
            std::cout << "== " << name << ", session " << at + 1 << '\n';
        }
        status = std::max(status, runText(name, recordings[at], wishes));
    }
    return status;
}

} // namespace

int main(int count, char** arguments) {
    std::ios::sync_with_stdio(false);
    quillon::ProgramArguments read =
        quillon::readArguments({arguments + std::min(count, 1), arguments + count}, kSwitches);
    const Wishes wishes{read.has("--beyond-gaps"), read.value("--record")};
    if (read.error.empty() && !wishes.recording.empty() && read.words.size() > 1) {
        read.error = "one file is recorded at a time";
    }
    if (read.words.empty() && !read.help && !read.version && read.error.empty()) {
        read.error = "a file is needed";
    }
    if (const auto answer = quillon::answerAtOnce(read, "quillon-scenario", kHelp)) {
        return *answer;
    }
    int status = kHeld;
    for (const std::string& name : read.words) {
        if (read.words.size() > 1) {
            std::cout << "== " << name << '\n';
        }
        status = std::max(status, runFile(name, wishes));
    }
    return status;
}
