#include "Recordings.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <numeric>
#include <utility>

#ifndef _WIN32
#include <fcntl.h>
#include <sys/file.h>
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
bool settle([[maybe_unused]] const std::filesystem::path& file) {
#ifndef _WIN32
    const int opened = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    if (opened < 0) {
        return false;
    }
    const bool settled = ::fsync(opened) == 0 || errno == EINVAL; // no disk stands behind it
    ::posix_fadvise(opened, 0, 0, POSIX_FADV_DONTNEED);
    ::close(opened);
    return settled;
#else
    return true;
#endif
}

} // namespace

std::int64_t RecordedVisit::bytes() const {
    return std::accumulate(sessions.begin(), sessions.end(), std::int64_t{0},
                           [](std::int64_t sum, const RecordedSession& each) { return sum + each.bytes(); });
}

Recordings::Recordings(std::filesystem::path folder)
    : folder_(std::move(folder)), sessions_(sessionsIn(filesOf(folder_))) {}

bool Recordings::refresh() {
    const auto looks = [](const std::vector<RecordedSession>& sessions) {
        std::vector<std::pair<std::string, std::int64_t>> all;
        for (const RecordedSession& session : sessions) {
            for (const RecordingPart& part : session.parts) {
                all.emplace_back(part.name, part.bytes);
            }
        }
        return all;
    };
    const auto before = looks(sessions_);
    sessions_ = sessionsIn(filesOf(folder_));
    return looks(sessions_) != before;
}

std::size_t Recordings::sessionsBefore(const RecordedVisit& visit) const {
    return static_cast<std::size_t>(std::ranges::count_if(
        sessions_, [&visit](const RecordedSession& each) { return each.number < visit.number(); }));
}

std::int64_t Recordings::bytes() const {
    return std::accumulate(sessions_.begin(), sessions_.end(), std::int64_t{0},
                           [](std::int64_t sum, const RecordedSession& each) { return sum + each.bytes(); });
}

std::filesystem::path Recordings::folderBeside(const std::filesystem::path& program) {
    std::error_code error;
    const auto real = std::filesystem::read_symlink("/proc/self/exe", error);
    return recordingsFolder(
        homeFolders((error ? std::filesystem::absolute(program, error) : real).parent_path()));
}

const RecordingFacts& Recordings::facts(std::size_t session) {
    const RecordedSession& wanted = sessions_.at(session);
    const auto found = known_.find(wanted.number);
    if (found != known_.end() && found->second.bytes == wanted.bytes()) {
        return found->second.facts;
    }
    const RecordingText read = readSession(folder_, wanted);
    Known& known = known_[wanted.number];
    known = {factsOf(read.text), wanted.bytes(), read.problem};
    return known.facts;
}

std::string Recordings::list() {
    std::string text = "number  day         from   to      minutes  presses      kB\n";
    for (std::size_t at = sessions_.size(); at-- > 0;) {
        const RecordingFacts& facts = this->facts(at);
        const std::string& problem = known_.at(sessions_[at].number).problem;
        std::array<char, 128> row{};
        std::snprintf(row.data(), row.size(), "%s  %s  %s  %s  %8lld  %7d  %6.1f",
                      sessionName(sessions_[at].number).c_str(), dayOf(facts.begun).c_str(),
                      minuteOf(facts.begun).c_str(), minuteOf(facts.ended).c_str(),
                      static_cast<long long>((facts.length + kMinute - 1) / kMinute), facts.presses,
                      static_cast<double>(sessions_[at].bytes()) / 1000);
        text += row.data();
        text += facts.spoke ? "" : "  no generator";
        text += facts.gaps > 0 ? "  gaps: " + std::to_string(facts.gaps) : "";
        text += problem.empty() ? "" : "  " + problem;
        text += '\n';
    }
    return text;
}

RecordedVisit Recordings::visitOf(std::size_t first, std::size_t end) {
    RecordedVisit visit;
    for (std::size_t at = first; at < end; ++at) {
        const RecordingFacts& facts = this->facts(at);
        visit.sessions.push_back(sessions_[at]);
        visit.begun = at == first ? facts.begun : visit.begun;
        visit.ended = facts.ended;
        visit.length += facts.length;
        visit.spoke = visit.spoke || facts.spoke;
        visit.presses += facts.presses;
        visit.gaps += facts.gaps;
        visit.device = facts.device;
    }
    return visit;
}

RecordedVisit Recordings::visitBefore(std::size_t end) {
    return visitOf(visitBegin(end, [this](std::size_t at) -> const RecordingFacts& { return facts(at); }),
                   end);
}

std::optional<RecordedVisit> Recordings::visit(int number) {
    const auto sessions = visitAmong(
        sessions_.size(), [this](std::size_t at) -> const RecordingFacts& { return facts(at); }, number);
    return sessions.empty() ? std::nullopt : std::optional(visitOf(sessions.front(), sessions.back() + 1));
}

RecordingText Recordings::textOf(const RecordedVisit& visit) const {
    RecordingText whole;
    for (const RecordedSession& session : visit.sessions) {
        const RecordingText read = readSession(folder_, session);
        whole.text += read.text;
        whole.problem += (whole.problem.empty() || read.problem.empty() ? "" : "; ") + read.problem;
    }
    return whole;
}

bool Recordings::isRunning([[maybe_unused]] const RecordedVisit& visit) const {
#ifndef _WIN32
    // Its writer holds the part from before the first byte to its end.
    const RecordingPart& newest = visit.sessions.back().parts.back();
    if (newest.packed || newest.bytes == 0) {
        return false;
    }
    const int file = ::open((folder_ / newest.name).c_str(), O_RDONLY | O_CLOEXEC);
    const bool held = file >= 0 && ::flock(file, LOCK_SH | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (file >= 0) {
        ::close(file);
    }
    return held;
#else
    return false;
#endif
}

std::string visitName(const RecordedVisit& visit) {
    if (!visit.begun) {
        return "quillon-" + sessionName(visit.number());
    }
    const std::string minute = minuteOf(visit.begun);
    return "quillon-" + dayOf(visit.begun) + "-" + minute.substr(0, 2) + minute.substr(3);
}

std::filesystem::path nameAt(const std::filesystem::path& place, const RecordedVisit& visit) {
    std::error_code error;
    return std::filesystem::is_directory(place, error)
               ? place / (visitName(visit) + (canPack() ? ".scn.gz" : ".scn"))
               : place;
}

std::string saveWhole(const std::filesystem::path& file, std::string_view bytes) {
    std::filesystem::path half = file;
    half += ".part";
    std::error_code error;
    const auto give = [&](const char* why) {
        std::filesystem::remove(half, error);
        return std::string(why);
    };
    {
        std::ofstream out(half, std::ios::binary | std::ios::trunc);
        out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (!out.flush()) {
            out.close();
            return give("it cannot be written");
        }
    }
    if (!settle(half)) {
        return give("the disk has not taken it");
    }
    std::ifstream in(half, std::ios::binary);
    const std::string back((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    in.close();
    if (back != bytes) {
        return give("what was written is not what is read");
    }
    std::filesystem::rename(half, file, error);
    if (error) {
        return give("it cannot be put in its place");
    }
    settle(file.has_parent_path() ? file.parent_path() : std::filesystem::path("."));
    return {};
}

std::string savePacked(const std::filesystem::path& file, std::string_view text) {
    Packer packer;
    std::string bytes = packer.add(text);
    bytes += packer.finish();
    return saveWhole(file, bytes);
}

} // namespace quillon
