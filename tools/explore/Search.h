#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "Copy.h"
#include "Dice.h"
#include "Moves.h"
#include "Story.h"

namespace quillon {

/// Looks for moves after which something does not hold: breadth first through the situations of some grounds,
/// then by walks from there and from wherever a walk came upon something new. Every move is made in a copy of
/// the process, so a state can be left in as many ways as there are, and what breaks the program is found as
/// anything else is.
class Search {
public:
    /// Stops at so many findings.
    explicit Search(const std::vector<Ground>& grounds, std::size_t most = 4);

    /// To come upon this probe counts as the finding, and nothing else does.
    void want(std::string_view probe) { wanted_ = probe; }
    /// Until so many situations are known, all are looked at, or `stop` says so.
    void breadthFirst(std::size_t situations, const std::function<bool()>& stop = {});
    /// One walk of that many moves.
    void walk(std::uint32_t seed, int moves);

    /// All that was found, each with the shortest way to it as a scenario file; empty when nothing was.
    [[nodiscard]] std::string found();
    /// The same for each probe that was reached against its reason.
    [[nodiscard]] std::string reachedAgainstReasons();
    [[nodiscard]] bool clean() const { return findings_.empty(); }
    /// So many were found that it does not go on.
    [[nodiscard]] bool enough() const { return findings_.size() >= most_; }
    /// A line for each, without its story.
    [[nodiscard]] std::string named() const;
    /// What was done.
    [[nodiscard]] std::string figures() const;
    [[nodiscard]] Marks marks() const { return Marks(marks_.bytes()); }

private:
    /// A way to a situation: behind another one, by these moves.
    struct Node {
        std::size_t before; ///< itself for the start of a ground
        std::size_t ground;
        std::size_t distance; ///< in moves from there
        std::vector<std::string> moves;
    };
    struct Finding {
        Plan plan;
        Violation violation;
    };

    std::size_t addStart(Ground ground);
    std::size_t addNode(std::size_t before, std::vector<std::string> moves);
    bool learn(std::uint64_t situation, std::size_t node);
    void expand(std::size_t node);
    void visit(Session& session, std::size_t node, const std::string& move);
    std::size_t beginOfWalk(Dice& dice);
    void learnWalk(std::size_t node, bool more);
    [[nodiscard]] Plan planOf(std::size_t node) const;
    void tell(const Session& session);
    void keep(const Plan& plan, const std::string& broke);
    void noteReached(const Plan& plan, const std::vector<std::string>& moves);
    [[nodiscard]] std::string told(const Finding& finding);

    std::deque<Ground> grounds_; // a walk may be on one while another is added
    std::size_t most_;
    std::string wanted_;
    SharedBytes marks_;
    Story story_;
    SharedText told_;  ///< by a copy: what did not hold
    SharedText lines_; ///< what it did, and where that led
    std::vector<Node> nodes_;
    std::unordered_map<std::uint64_t, std::size_t> seen_; ///< situations, and the way there
    std::unordered_set<std::uint64_t> tried_;             ///< rare moves, and where
    std::deque<std::size_t> edge_;                        ///< nodes that nobody has gone on from
    std::vector<std::size_t> promising_;                  ///< the same, and something new was on the way
    std::vector<std::size_t> begins_;                     ///< of walks
    std::vector<Finding> findings_;
    std::vector<Finding> against_; ///< a probe and its way, where there is a reason against it
    std::size_t noted_ = 0;        ///< marks that `against_` takes account of
    std::size_t looked_ = 0;       ///< situations that were gone on from
    std::size_t moves_ = 0;        ///< made in breadth
    std::size_t steps_ = 0;        ///< made in walks
    std::size_t waysBack_ = 0;
    std::size_t walks_ = 0;
};

} // namespace quillon
