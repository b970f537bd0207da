#include "Recordings.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <utility>

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

#include "runtime/HomeFolders.h"
#include "runtime/Packing.h"

namespace quillon {

namespace {

constexpr Milliseconds kMinute = 60'000;

/// "2026-11-25" and "09:04" of a time, or blanks.
std::string dayOf(const std::optional<WallTime>& time) {
    return time ? isoText(*time).substr(0, 10) : "          ";
}

std::string minuteOf(const std::optional<WallTime>& time) {
    return time ? isoText(*time).substr(11, 5) : "     ";
}

/// What was written reaches the disk, and is read from there again: a stick may be pulled then.
void settle([[maybe_unused]] const std::filesystem::path& file) {
#ifndef _WIN32
    const int opened = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (opened >= 0) {
        ::fsync(opened);
        ::posix_fadvise(opened, 0, 0, POSIX_FADV_DONTNEED);
        ::close(opened);
    }
#endif
}

} // namespace

Recordings::Recordings(std::filesystem::path folder)
    : folder_(std::move(folder)), sessions_(sessionsIn(filesOf(folder_))) {}

std::filesystem::path Recordings::folderBeside(const std::filesystem::path& program) {
    std::error_code error;
    const auto real = std::filesystem::read_symlink("/proc/self/exe", error);
    return recordingsFolder(
        homeFolders((error ? std::filesystem::absolute(program, error) : real).parent_path()));
}

const Recordings::Known& Recordings::known(std::size_t session) {
    const auto found = known_.find(session);
    if (found != known_.end()) {
        return found->second;
    }
    RecordingText text = readSession(folder_, sessions_[session]);
    RecordingFacts facts = factsOf(text.text);
    return known_.emplace(session, Known{std::move(text), std::move(facts)}).first->second;
}

std::string Recordings::list() {
    std::string text = "number  day         from   to      minutes  presses      kB\n";
    for (std::size_t at = sessions_.size(); at-- > 0;) {
        const auto& [recording, facts] = known(at);
        std::array<char, 128> row{};
        std::snprintf(row.data(), row.size(), "%s  %s  %s  %s  %8lld  %7d  %6.1f",
                      sessionName(sessions_[at].number).c_str(), dayOf(facts.begun).c_str(),
                      minuteOf(facts.begun).c_str(), minuteOf(facts.ended).c_str(),
                      static_cast<long long>((facts.length + kMinute - 1) / kMinute), facts.presses,
                      static_cast<double>(sessions_[at].bytes()) / 1000);
        text += row.data();
        text += facts.spoke ? "" : "  no generator";
        text += facts.gaps > 0 ? "  gaps: " + std::to_string(facts.gaps) : "";
        text += recording.problem.empty() ? "" : "  " + recording.problem;
        text += '\n';
        known_.erase(at); // one alone may be large
    }
    return text;
}

std::vector<std::size_t> Recordings::sessionsOf(int visit) {
    return visitAmong(
        sessions_.size(), [this](std::size_t at) -> const RecordingFacts& { return known(at).facts; }, visit);
}

RecordingText Recordings::visit(int number) {
    RecordingText whole;
    for (const std::size_t at : sessionsOf(number)) {
        const RecordingText& text = known(at).text;
        whole.text += text.text;
        whole.problem += text.problem;
    }
    return whole;
}

std::filesystem::path Recordings::nameAt(const std::filesystem::path& place, int visit) {
    std::error_code error;
    const auto sessions = sessionsOf(visit);
    if (!std::filesystem::is_directory(place, error) || sessions.empty()) {
        return place;
    }
    std::string name = "quillon-" + sessionName(sessions_[sessions.front()].number);
    if (const auto& begun = known(sessions.front()).facts.begun) {
        const std::string minute = minuteOf(begun);
        name = "quillon-" + dayOf(begun) + "-" + minute.substr(0, 2) + minute.substr(3);
    }
    return place / (name + (canPack() ? ".scn.gz" : ".scn"));
}

std::string savePacked(const std::filesystem::path& file, std::string_view text) {
    Packer packer;
    std::string bytes = packer.add(text);
    bytes += packer.finish();
    std::filesystem::path half = file;
    half += ".part";
    std::error_code error;
    {
        std::ofstream out(half, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!out.flush()) {
            out.close();
            std::filesystem::remove(half, error);
            return "it cannot be written";
        }
    }
    settle(half);
    std::ifstream in(half, std::ios::binary);
    const std::string back((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    in.close();
    if (back != bytes || (std::filesystem::rename(half, file, error), error)) {
        std::filesystem::remove(half, error);
        return back != bytes ? "what was written is not what is read" : "it cannot be put in its place";
    }
    settle(file.has_parent_path() ? file.parent_path() : std::filesystem::path("."));
    return {};
}

} // namespace quillon
