#include "Story.h"

#include <algorithm>
#include <utility>

#include "base/Text.h"

namespace quillon {

namespace {

constexpr std::size_t kRoom = 1U << 20U;

bool saw(const Session& session, const Violation& violation) {
    const auto& all = session.violations();
    return std::find(all.begin(), all.end(), violation) != all.end();
}

/// The plan, with its end if it takes that.
void playWithEnd(Session& session, const Plan& plan, const Violation& violation) {
    session.play(plan.lines);
    if (!saw(session, violation) && violation.invariant == "AKeyLeadsOn") {
        session.stand();
    }
    if (!saw(session, violation)) {
        session.leave();
    }
}

} // namespace

Story::Story() : shown_(kRoom), lines_(kRoom) {}

bool Story::shows(const Plan& plan, const Violation& violation, bool end) {
    shown_.clear();
    lines_.clear();
    const std::string broke = inACopy([&] {
        std::vector<std::uint8_t> marks(Probes::all().size());
        Session session(plan, Marks(marks));
        if (end) {
            playWithEnd(session, plan, violation);
        } else {
            session.play(plan.lines);
        }
        for (const std::string& line : session.done()) {
            lines_.add(line + "\n"); // what the end adds is part of the story
        }
        if (saw(session, violation) ||
            (violation.invariant == kReached && Marks(marks).reached(violation.what))) {
            shown_.add("yes");
        }
    });
    return violation.invariant == kBroke ? broke == violation.what : shown_.text() == "yes";
}

Plan Story::of(Plan plan, const Violation& violation) {
    const auto shorten = [&](bool end) {
        plan.lines = shortest(plan.lines, [&](const std::vector<std::string>& lines) {
            Plan less = plan;
            less.lines = lines;
            return shows(less, violation, end);
        });
    };
    shorten(true);
    if (shows(plan, violation, true) && violation.invariant != kBroke) {
        plan.lines.clear();
        for (const std::string_view line : split(lines_.text(), "\n")) {
            if (!line.empty()) {
                plan.lines.emplace_back(line);
            }
        }
        if (shows(plan, violation, false)) {
            shorten(false); // it needs some of the end only
        }
    }
    return plan;
}

std::vector<std::string> shortest(std::vector<std::string> lines,
                                  const std::function<bool(const std::vector<std::string>&)>& fails) {
    for (std::size_t size = lines.size(); size > 0; size /= 2) {
        for (std::size_t at = 0; at < lines.size();) {
            std::vector<std::string> less = lines;
            const auto first = less.begin() + static_cast<std::ptrdiff_t>(at);
            less.erase(first, first + static_cast<std::ptrdiff_t>(std::min(size, lines.size() - at)));
            if (fails(less)) {
                lines = std::move(less);
            } else {
                at += size;
            }
        }
    }
    return lines;
}

} // namespace quillon
