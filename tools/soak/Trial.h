#pragma once

#include <cstdint>
#include <functional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "Session.h"

namespace quillon {

/// Random operator actions and generator faults from one seed.
class Chance {
public:
    explicit Chance(std::uint32_t seed) : engine_(seed) {}

    [[nodiscard]] Plan plan();
    /// The next command: a key among those in reach, a wait, something that befalls the generator.
    [[nodiscard]] std::string next(Session& session);

private:
    [[nodiscard]] std::size_t below(std::size_t limit) { return engine_() % limit; }
    template <typename List> [[nodiscard]] auto& oneOf(const List& list) {
        return list[below(std::size(list))];
    }
    [[nodiscard]] std::string hand(Session& session);
    [[nodiscard]] std::string touch(Session& session, const std::string& name);
    [[nodiscard]] std::string mishap();
    [[nodiscard]] std::string report();

    std::mt19937 engine_; // no standard distributions: they differ between libraries
};

/// Why a trial failed and how to see it again.
struct Failure {
    std::uint32_t seed;
    std::vector<std::string> violations;
    Plan plan; ///< the shortest that was found

    /// Violations, seed, and the scenario file.
    [[nodiscard]] std::string text() const;
};

/// A session of that many commands and its end.
[[nodiscard]] std::vector<std::string> violationsOf(std::uint32_t seed, int commands, Plan& played);
/// The same plan again, with its end.
[[nodiscard]] std::vector<std::string> violationsOf(const Plan& plan);
/// Takes lines out for as long as what is left still fails.
[[nodiscard]] std::vector<std::string>
shortest(std::vector<std::string> lines, const std::function<bool(const std::vector<std::string>&)>& fails);
/// The plan without what its first violation does not need.
[[nodiscard]] Failure shrunk(std::uint32_t seed, Plan plan);

} // namespace quillon
