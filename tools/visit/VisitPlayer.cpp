#include "VisitPlayer.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <ostream>
#include <string>

#include "VisitWatcher.h"
#include "base/Text.h"
#include "shell/RecordingReader.h"
#include "tools/scenario/Script.h"

namespace quillon {

namespace {

std::string_view takeLine(std::string_view& text) {
    const auto end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

/// The wall clock at the beginning of a recording, where it tells one.
std::optional<WallTime> beginOf(std::string_view recording) {
    constexpr std::string_view kRemark = "\n# ";
    constexpr std::string_view kClock = " clock ";
    for (auto found = recording.find(kClock); found != std::string_view::npos;
         found = recording.find(kClock, found + 1)) {
        const auto start = recording.rfind('\n', found);
        std::string_view line = recording.substr(start == std::string_view::npos ? 0 : start);
        Milliseconds at = 0;
        if (!line.starts_with(kRemark)) {
            continue;
        }
        line.remove_prefix(kRemark.size());
        const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), at);
        line.remove_prefix(static_cast<std::size_t>(end - line.data()));
        if (error != std::errc{} || !line.starts_with(kClock)) {
            continue;
        }
        line.remove_prefix(kClock.size());
        auto wall = wallTimeOf(trim(takeLine(line)));
        if (wall) {
            wall->sinceEpoch -= at;
        }
        return wall;
    }
    return std::nullopt;
}

void play(Visit& visit, std::string_view recording, Milliseconds begins) {
    std::ostream nowhere(nullptr);
    std::optional<VisitWatcher> watcher; // hears the end of the program as well
    Script script(recording, nowhere);
    watcher.emplace(visit, script.rig(), begins);
    script.onLine = [&watcher](std::string_view line) { watcher->line(line); };
    try {
        (void)script.run();
    } catch (const BadScript& problem) {
        visit.trust.problem = "line " + std::to_string(script.line()) + ": " + problem.what();
    }
    watcher->finish();
}

} // namespace

Visit visitOf(std::string_view content) {
    Visit visit;
    std::optional<WallTime> first;
    for (const std::string_view recording : recordingsIn(content)) {
        const auto wall = beginOf(recording);
        Milliseconds begins = visit.end;
        if (visit.sessions.empty()) {
            first = wall;
        } else if (wall && first) {
            begins = std::max(begins, wall->sinceEpoch - first->sinceEpoch);
        }
        play(visit, recording, begins);
    }
    return visit;
}

} // namespace quillon
