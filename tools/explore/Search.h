#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include "Moves.h"

namespace quillon {

/// Looks for moves after which something does not hold: breadth first through the states of a ground, then by
/// walks that go on from there.
class Search {
public:
    explicit Search(const Ground& ground, std::size_t most = 4) : ground_(ground), most_(most) {}

    /// Until so many states are known, all are looked at, or `stop` says so.
    void breadthFirst(std::size_t states, const std::function<bool()>& stop = {});
    /// One walk of that many moves.
    void walk(std::uint32_t seed, int moves);

    /// All that was found, each with the shortest way to it as a scenario file; empty when nothing was.
    [[nodiscard]] std::string found() const;
    [[nodiscard]] bool clean() const { return findings_.empty(); }
    /// A line for each, without its story.
    [[nodiscard]] std::string named() const;
    /// What was done.
    [[nodiscard]] std::string figures() const;

private:
    using Path = std::vector<std::string>;
    struct Finding {
        Plan plan;
        Violation violation;
    };

    void expand(const Path& path);
    void visit(const Path& path);
    [[nodiscard]] Plan planOf(const Path& path) const;
    void keep(const Session& session, const Plan& plan);
    [[nodiscard]] bool enough() const;

    const Ground& ground_;
    std::size_t most_;
    std::unordered_set<std::uint64_t> seen_;
    std::deque<Path> edge_; ///< ways to states that nobody has gone on from
    std::vector<Finding> findings_;
    std::size_t moves_ = 0;
    std::size_t waysBack_ = 0;
    std::size_t walks_ = 0;
    std::size_t depth_ = 0;
};

/// Takes lines out for as long as what is left still fails.
[[nodiscard]] std::vector<std::string>
shortest(std::vector<std::string> lines, const std::function<bool(const std::vector<std::string>&)>& fails);

} // namespace quillon
