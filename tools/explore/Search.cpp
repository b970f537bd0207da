#include "Search.h"

#include <algorithm>

namespace quillon {

namespace {

/// From one state in so many the way back is gone; it takes longer than all the moves before it.
constexpr std::uint64_t kSampled = 8;

void play(Session& session, const std::vector<std::string>& lines) {
    for (const std::string& line : lines) {
        session.perform(line);
    }
}

bool saw(const Session& session, const Violation& violation) {
    const auto& all = session.violations();
    return std::find(all.begin(), all.end(), violation) != all.end();
}

/// Plays the plan, with its end if it takes that; says whether it shows the violation.
bool shows(Session& session, const Plan& plan, const Violation& violation) {
    play(session, plan.lines);
    if (!saw(session, violation) && violation.invariant == "AKeyLeadsOn") {
        session.stand();
    }
    if (!saw(session, violation)) {
        session.leave();
    }
    return saw(session, violation);
}

} // namespace

Plan Search::planOf(const Path& path) const {
    Plan plan = ground_.start;
    plan.lines.insert(plan.lines.end(), path.begin(), path.end());
    return plan;
}

bool Search::enough() const {
    return findings_.size() >= most_;
}

void Search::keep(const Session& session, const Plan& plan) {
    for (const Violation& violation : session.violations()) {
        const bool known = std::any_of(findings_.begin(), findings_.end(), [&](const Finding& finding) {
            return finding.violation == violation;
        });
        if (!known && !enough()) {
            findings_.push_back({plan, violation});
        }
    }
}

void Search::breadthFirst(std::size_t states, const std::function<bool()>& stop) {
    if (seen_.empty()) {
        edge_.push_back({});
    }
    while (!edge_.empty() && seen_.size() < states && !enough() && !(stop && stop())) {
        const Path path = std::move(edge_.front());
        edge_.pop_front();
        depth_ = path.size() + 1;
        expand(path);
    }
}

void Search::expand(const Path& path) {
    const Plan plan = planOf(path);
    Session session(plan);
    play(session, plan.lines);
    // A state cannot be copied: each move is made in a console of its own that is led there.
    for (std::string& move : movesFrom(session, ground_)) {
        Path further = path;
        further.push_back(std::move(move));
        visit(further);
    }
}

void Search::visit(const Path& path) {
    const Plan plan = planOf(path);
    Session session(plan);
    play(session, plan.lines);
    ++moves_;
    if (!session.violations().empty()) {
        keep(session, plan);
        return;
    }
    const std::uint64_t state = session.ended() ? 0 : session.state();
    if (!session.ended()) {
        if (!seen_.insert(state).second) {
            return;
        }
        edge_.push_back(path);
    }
    if (state % kSampled < 2) {
        ++waysBack_;
        if (state % kSampled == 1) {
            session.stand();
        }
        session.leave();
        keep(session, plan);
    }
}

void Search::walk(std::uint32_t seed, int moves) {
    if (enough()) {
        return;
    }
    Chance chance(ground_, seed);
    Plan plan = chance.plan();
    if (!plan.generator && !edge_.empty()) {
        plan = planOf(edge_[chance.below(edge_.size())]);
    }
    Session session(plan);
    play(session, plan.lines);
    for (int i = 0; i < moves && !session.ended() && session.violations().empty(); ++i) {
        session.perform(chance.next(session));
    }
    moves_ += session.done().size();
    ++walks_;
    plan.lines = session.done();
    if (seed % 2 == 1) {
        session.stand();
    }
    session.leave();
    keep(session, plan);
}

std::string Search::found() const {
    std::string text;
    for (const Finding& finding : findings_) {
        Plan plan = finding.plan;
        plan.lines = shortest(plan.lines, [&](const std::vector<std::string>& lines) {
            Plan less = plan;
            less.lines = lines;
            Session session(less);
            return shows(session, less, finding.violation);
        });
        Session session(plan);
        (void)shows(session, plan, finding.violation);
        plan.lines = session.done(); // what the end adds is part of the story
        for (const Violation& violation : session.violations()) {
            text += "# " + violation.text() + "\n";
        }
        text += scenarioOf(plan) + "\n";
    }
    return text;
}

std::string Search::named() const {
    std::string text;
    for (const Finding& finding : findings_) {
        text += finding.violation.invariant + ": " + finding.violation.what + "\n";
    }
    return text;
}

std::string Search::figures() const {
    return std::string(ground_.name) + ": " + std::to_string(seen_.size()) + " states to depth " +
           std::to_string(depth_) + ", " + std::to_string(walks_) + " walks, " + std::to_string(moves_) +
           " moves, " + std::to_string(waysBack_ + walks_) + " ways back";
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
