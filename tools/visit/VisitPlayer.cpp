#include "VisitPlayer.h"

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>

#include "VisitWatcher.h"
#include "shell/RecordingFacts.h"
#include "shell/RecordingReader.h"
#include "tools/scenario/Script.h"

namespace quillon {

namespace {

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
        const auto wall = factsOf(recording).begun;
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
