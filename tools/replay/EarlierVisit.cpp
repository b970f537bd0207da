#include "EarlierVisit.h"

#include "tools/visit/VisitPlayer.h"

namespace quillon {

std::optional<Visit> earlierVisit(Recordings& recordings, const RecordedVisit& than, const Visit& played) {
    constexpr int kPlayed = 5;
    int left = kPlayed;
    for (std::size_t end = recordings.sessionsBefore(than); end > 0 && left > 0;) {
        const RecordedVisit each = recordings.visitBefore(end);
        end -= each.sessions.size();
        if (each.spoke && each.device == than.device) {
            --left;
            Visit visit = visitOf(recordings.textOf(each).text);
            if (visit.generatorVersion == played.generatorVersion && visit.trust.problem.empty()) {
                return visit;
            }
        }
    }
    return std::nullopt;
}

} // namespace quillon
