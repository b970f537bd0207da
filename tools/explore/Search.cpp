#include "Search.h"

#include <algorithm>
#include <array>
#include <utility>

#include "Chance.h"
#include "base/Text.h"
#include "console/KeyReasons.h"
#include "link/LinkSilence.h"

namespace quillon {

namespace {

/// From one situation in so many the way back to Ready is walked; that takes longer than all the moves
/// before.
constexpr std::uint64_t kSampled = 8;
constexpr std::string_view kSoon = "wait 1000";
constexpr std::size_t kRoom = 1U << 20U;
/// Separators in the report of a copy.
constexpr char kBetween = '\x1f';
constexpr char kEnd = '\n';
std::uint64_t hashOf(std::string_view text, std::uint64_t with) {
    for (const char c : text) {
        with = (with ^ static_cast<unsigned char>(c)) * 1099511628211U;
    }
    return with;
}

} // namespace

Search::Search(const std::vector<Ground>& grounds, std::size_t most)
    : most_(most), marks_(Probes::all().size()), told_(kRoom), lines_(kRoom) {
    for (const Ground& ground : grounds) {
        edge_.push_back(addStart(ground));
    }
}

std::size_t Search::addStart(Ground ground) {
    grounds_.push_back(std::move(ground));
    nodes_.push_back({nodes_.size(), grounds_.size() - 1, 0, {}});
    begins_.push_back(nodes_.size() - 1);
    return nodes_.size() - 1;
}

std::size_t Search::addNode(std::size_t before, std::vector<std::string> moves) {
    const Node& from = nodes_[before];
    nodes_.push_back({before, from.ground, from.distance + moves.size(), std::move(moves)});
    return nodes_.size() - 1;
}

/// True for a situation that was not known.
bool Search::learn(std::uint64_t situation, std::size_t node) {
    return seen_.emplace(situation, node).second;
}

Plan Search::planOf(std::size_t node) const {
    std::vector<const Node*> way;
    for (; nodes_[node].before != node; node = nodes_[node].before) {
        way.push_back(&nodes_[node]);
    }
    Plan plan = grounds_[nodes_[node].ground].start;
    for (auto each = way.rbegin(); each != way.rend(); ++each) {
        plan.lines.insert(plan.lines.end(), (*each)->moves.begin(), (*each)->moves.end());
    }
    return plan;
}

void Search::tell(const Session& session) {
    for (const Violation& violation : session.violations()) {
        told_.add(violation.invariant + kBetween + violation.what + kBetween +
                  std::to_string(violation.time) + kEnd);
    }
}

/// The report of a copy: what did not hold, whether it crashed, and whether it reached the wanted probe.
void Search::keep(const Plan& plan, const std::string& broke) {
    std::vector<Violation> all;
    for (const std::string_view line : split(told_.text(), std::string_view(&kEnd, 1))) {
        if (const auto parts = split(line, std::string_view(&kBetween, 1)); parts.size() == 3) {
            all.push_back({std::string(parts[0]), std::string(parts[1]), std::stoll(std::string(parts[2]))});
        }
    }
    if (!broke.empty()) {
        all.push_back({std::string(kBroke), broke, 0});
    }
    if (!wanted_.empty()) {
        all.clear();
        if (marks().reached(wanted_)) {
            all.push_back({std::string(kReached), wanted_, 0});
        }
    }
    for (const Violation& violation : all) {
        const bool known = std::any_of(findings_.begin(), findings_.end(), [&](const Finding& finding) {
            return finding.violation == violation;
        });
        if (!known && !enough()) {
            findings_.push_back({plan, violation});
        }
    }
}

/// Checks the probes that were marked since the last call.
void Search::noteReached(const Plan& plan, const std::vector<std::string>& moves) {
    const std::size_t count = marks().count();
    if (count == std::exchange(noted_, count)) {
        return;
    }
    const Probes& probes = Probes::all();
    for (std::size_t i = 0; i < probes.size(); ++i) {
        const auto known = std::any_of(against_.begin(), against_.end(), [&](const Finding& each) {
            return each.violation.what == probes.name(i);
        });
        if (!probes.reason(i).empty() && marks().reached(i) && !known) {
            Plan way = plan;
            way.lines.insert(way.lines.end(), moves.begin(), moves.end());
            against_.push_back({std::move(way), {std::string(kReached), probes.name(i), 0}});
        }
    }
}

void Search::breadthFirst(std::size_t situations, const std::function<bool()>& stop) {
    while ((!edge_.empty() || !promising_.empty()) && seen_.size() < situations && !enough() &&
           !(stop && stop())) {
        // In turns from the nearest, and from the last that came upon something new.
        std::size_t node = 0;
        if (!promising_.empty() && (edge_.empty() || looked_ % 2 == 1)) {
            node = promising_.back();
            promising_.pop_back();
        } else {
            node = edge_.front();
            edge_.pop_front();
        }
        expand(node);
    }
}

void Search::expand(std::size_t node) {
    const Plan plan = planOf(node);
    Session session(plan, marks());
    session.play(plan.lines);
    noteReached(plan, {});
    ++looked_;
    if (session.ended()) {
        return;
    }
    (void)learn(session.situation(), node);
    for (const std::string& move : movesFrom(session, grounds_[nodes_[node].ground])) {
        visit(session, node, move);
    }
    const ServiceSession& doing = session.application().console().session();
    const bool quiet = session.application().link().silence().quiet();
    const auto place = static_cast<std::uint64_t>(doing.run()) * 64 +
                       static_cast<std::uint64_t>(doing.lastPhase()) + (quiet ? 4096U : 0U);
    KeyReasons& reasons = session.application().indicators().reasons;
    for (const std::string& move : rareMovesFrom(session)) {
        // A press of a key that would do nothing does not count as a try.
        const auto words = split(move, " ");
        const Control* key = session.find(words.at(words.size() > 1 ? 1 : 0));
        const std::uint64_t alive = key != nullptr && reasons.blocks(*key) ? 0 : 1;
        if (tried_.insert(hashOf(move, place * 2 + alive)).second) {
            visit(session, node, move);
        }
    }
}

void Search::visit(Session& session, std::size_t node, const std::string& move) {
    if (enough()) {
        return;
    }
    told_.clear();
    lines_.clear();
    ++moves_;
    const std::size_t before = marks().count();
    const std::string broke = inACopy([&] {
        session.perform(move);
        const std::uint64_t situation = session.ended() ? 0 : session.situation();
        const bool fresh = session.ended() || !seen_.contains(situation);
        if (!session.ended()) {
            lines_.add(std::to_string(situation));
        }
        session.perform(
            std::string(kSoon)); // its command is still to go out, and some situations are left here
        if (fresh && session.violations().empty() && situation % kSampled < 2) {
            lines_.add(" back");
            if (situation % kSampled == 1) {
                session.stand();
            }
            session.leave();
        }
        tell(session);
    });
    noteReached(planOf(node), {move, std::string(kSoon)});
    if (!broke.empty() || !told_.text().empty() || (!wanted_.empty() && marks().reached(wanted_))) {
        Plan plan = planOf(node);
        plan.lines.insert(plan.lines.end(), {move, std::string(kSoon)});
        keep(plan, broke);
        return;
    }
    const std::vector<std::string_view> words = split(lines_.text(), " ");
    waysBack_ += words.size() == 2 ? 1 : 0;
    const bool more = marks().count() > before; // also where the situation is none: its answer is to come
    if (!words[0].empty() && (learn(std::stoull(std::string(words[0])), nodes_.size()) || more)) {
        const std::size_t further = addNode(node, {move});
        if (more) {
            begins_.push_back(further);
            promising_.push_back(further);
        } else {
            edge_.push_back(further);
        }
    }
}

/// A start, something that was new once, or a situation that nobody has gone on from.
std::size_t Search::beginOfWalk(Dice& dice) {
    switch (dice.below(3)) {
    case 0:
        return begins_[dice.below(begins_.size())];
    case 1:
        if (!edge_.empty()) {
            return edge_[dice.below(edge_.size())];
        }
        [[fallthrough]];
    default: {
        const auto start = std::find_if(
            nodes_.begin(), nodes_.end(),
            [&, at = dice.below(grounds_.size())](const Node& node) { return node.ground == at; });
        return static_cast<std::size_t>(start - nodes_.begin());
    }
    }
}

void Search::walk(std::uint32_t seed, int moves) {
    if (enough()) {
        return;
    }
    SeededDice dice(seed);
    std::size_t node = beginOfWalk(dice);
    Plan plan = planOf(node);
    Ground ground = grounds_[nodes_[node].ground];
    Chance chance(ground, dice);
    const bool varies = ground.varies && nodes_[node].before == node;
    if (varies) {
        plan = chance.plan();
    }
    told_.clear();
    lines_.clear();
    const std::size_t before = marks().count();
    const std::string broke = inACopy([&] {
        Session session(plan, marks());
        session.play(plan.lines);
        for (int i = 0; i < moves && !session.ended() && session.violations().empty(); ++i) {
            const std::string move = chance.next(session);
            lines_.add(move + kBetween); // beforehand: it may be what breaks the program
            session.perform(move);
            lines_.add((session.ended() ? std::string() : std::to_string(session.situation())) + kEnd);
        }
        if (seed % 2 == 1) {
            session.stand();
        }
        session.leave();
        tell(session);
    });
    ++walks_;
    std::vector<std::string> made;
    for (const std::string_view line : split(lines_.text(), std::string_view(&kEnd, 1))) {
        if (const auto parts = split(line, std::string_view(&kBetween, 1)); !parts[0].empty()) {
            made.emplace_back(parts[0]);
        }
    }
    noteReached(plan, made);
    if (broke.empty() && told_.text().empty() && (wanted_.empty() || !marks().reached(wanted_))) {
        if (varies) {
            Ground other = ground;
            other.start = plan;
            other.varies = false;
            node = addStart(std::move(other));
        }
        learnWalk(node, marks().count() > before);
        return;
    }
    plan.lines.insert(plan.lines.end(), made.begin(), made.end());
    keep(plan, broke);
}

/// Each new situation on the way of a walk can be gone on from.
void Search::learnWalk(std::size_t node, bool more) {
    std::vector<std::string> moves;
    for (const std::string_view line : split(lines_.text(), std::string_view(&kEnd, 1))) {
        const auto parts = split(line, std::string_view(&kBetween, 1));
        if (parts.size() != 2 || parts[1].empty()) {
            continue;
        }
        ++steps_;
        moves.emplace_back(parts[0]);
        if (learn(std::stoull(std::string(parts[1])), nodes_.size())) {
            node = addNode(node, std::move(moves));
            moves.clear();
            edge_.push_back(node);
        }
    }
    if (more) {
        begins_.push_back(node);
    }
}

std::string Search::told(const Finding& finding) {
    return "# " + finding.violation.text() + "\n" + scenarioOf(story_.of(finding.plan, finding.violation)) +
           "\n";
}

std::string Search::found() {
    std::string text;
    for (const Finding& finding : findings_) {
        text += told(finding);
    }
    return text;
}

std::string Search::reachedAgainstReasons() {
    std::string text;
    for (const Finding& finding : against_) {
        text += "# reached against its reason\n" + told(finding);
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
    constexpr std::array<std::size_t, 7> kDistances{1, 2, 3, 5, 10, 30, 100};
    std::array<std::size_t, kDistances.size() + 1> counts{};
    for (const auto& [situation, node] : seen_) {
        const auto at = std::lower_bound(kDistances.begin(), kDistances.end(), nodes_[node].distance);
        ++counts.at(static_cast<std::size_t>(at - kDistances.begin()));
    }
    std::string text = std::to_string(seen_.size()) + " situations, of which " + std::to_string(looked_) +
                       " were gone on from;";
    for (std::size_t i = 0; i < counts.size(); ++i) {
        text += " " + std::to_string(counts[i]) +
                (i < kDistances.size() ? " within " + std::to_string(kDistances[i]) : " beyond") + ",";
    }
    return text + " moves; " + std::to_string(moves_) + " moves from them, " + std::to_string(steps_) +
           " in " + std::to_string(walks_) + " walks, " + std::to_string(waysBack_ + walks_) + " ways back";
}

} // namespace quillon
