#include "shell/RecordingReader.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>

#include "runtime/Packing.h"

namespace quillon {

namespace {

constexpr std::string_view kHead = "# Recorded by ";

std::string_view takeLine(std::string_view& text) {
    const auto end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

/// Follows the lines of a recording and knows which are those of a file in its head.
class FileBlocks {
public:
    /// Whether the line belongs to a file, the lines around it too.
    bool holds(std::string_view line) {
        if (inside_) {
            inside_ = line != "end";
            return true;
        }
        return inside_ = line.starts_with("file ");
    }

private:
    bool inside_ = false;
};

Milliseconds numberIn(std::string_view text) {
    Milliseconds number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

} // namespace

RecordingText recordingTextOf(std::string_view content) {
    Unpacked read = unpacked(content);
    if (read.whole) {
        return {std::move(read.text), {}};
    }
    read.text.resize(read.text.rfind('\n') + 1);
    return {std::move(read.text), canPack() ? "it is cut short or broken" : "this program cannot unpack it"};
}

bool isRecording(std::string_view text) {
    return text.starts_with(kHead);
}

std::vector<std::string_view> recordingsIn(std::string_view text) {
    std::vector<std::string_view> found;
    if (!isRecording(text)) {
        return {text};
    }
    FileBlocks files;
    std::size_t begin = 0;
    for (std::string_view rest = text; !rest.empty();) {
        const auto at = static_cast<std::size_t>(rest.data() - text.data());
        const std::string_view line = takeLine(rest);
        if (!files.holds(line) && line.starts_with(kHead) && at > 0) {
            found.push_back(text.substr(begin, at - begin));
            begin = at;
        }
    }
    found.push_back(text.substr(begin));
    return found;
}

void forEachRecordedLine(std::string_view recording, const std::function<void(std::string_view)>& each) {
    FileBlocks files;
    while (!recording.empty()) {
        const std::string_view line = takeLine(recording);
        if (!files.holds(line)) {
            each(line);
        }
    }
}

Milliseconds recordedTime(std::string_view line) {
    constexpr std::string_view kWait = "wait ";
    constexpr std::string_view kGap = "gap ";
    return line.starts_with(kWait)  ? numberIn(line.substr(kWait.size()))
           : line.starts_with(kGap) ? numberIn(line.substr(kGap.size()))
                                    : 0;
}

std::optional<Milliseconds> partBegin(std::string_view part) {
    Milliseconds since = 0;
    while (!part.empty()) {
        const std::string_view line = takeLine(part);
        if (line.starts_with("# ")) { // the first remark with a time
            return numberIn(line.substr(2)) - since;
        }
        since += recordedTime(line);
    }
    return std::nullopt;
}

FileList filesOf(const std::filesystem::path& folder) {
    FileList found;
    std::error_code error;
    for (std::filesystem::directory_iterator at(folder, error), end; !error && at != end;
         at.increment(error)) {
        std::error_code gone;
        const auto bytes = at->file_size(gone);
        if (!gone) {
            found.push_back({at->path().filename().string(), static_cast<std::int64_t>(bytes)});
        }
    }
    return found;
}

RecordingText readSession(const std::filesystem::path& folder, const RecordedSession& session) {
    RecordingText whole;
    Milliseconds time = 0;
    std::int64_t next = 0;
    for (const RecordingPart& part : session.parts) {
        std::ifstream file(folder / part.name, std::ios::binary);
        RecordingText read = recordingTextOf(
            std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
        read.text.resize(read.text.rfind('\n') + 1); // what is written just now may end within a line
        if (part.number != next) {
            const Milliseconds ms = std::max<Milliseconds>(partBegin(read.text).value_or(time) - time, 0);
            whole.text += "gap " + std::to_string(ms) + " 0\n";
            time += ms;
        }
        if (!read.problem.empty() || !file) {
            whole.problem += (whole.problem.empty() ? "" : "; ") + part.name + ": " +
                             (file ? read.problem : std::string("it cannot be read"));
        }
        forEachRecordedLine(read.text, [&time](std::string_view line) { time += recordedTime(line); });
        whole.text += read.text;
        next = part.number + 1;
    }
    return whole;
}

} // namespace quillon
