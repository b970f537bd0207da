#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Scenes.h"
#include "Session.h"

namespace quillon {

/// What becomes of a piece of what travels on the line: a write of the console, or a delivery to it.
enum class Damage : std::uint8_t {
    Lost,
    Garbled, ///< its first byte is another
    Stuck,   ///< the one before comes once more in its place
    Doubled,
    Late, ///< it comes with the next one
};
inline constexpr std::size_t kDamages = 5;

struct LineFault {
    bool toConsole;
    std::size_t piece; ///< of that direction, since the workflow began; from 1
    Damage damage;
    bool lasts; ///< the same with all that follow
    /// As `in:12:lost`, or `out:12:late:on`.
    [[nodiscard]] std::string text() const;
};
[[nodiscard]] std::optional<LineFault> lineFaultOf(std::string_view text);

/// A line that damages what travels on it. The counting begins with it.
class FaultyLine {
public:
    FaultyLine(Session& session, std::vector<LineFault> faults);
    /// What travels from now on arrives.
    void heal() { faults_.clear(); }
    [[nodiscard]] std::size_t pieces(bool toConsole) const { return ways_[toConsole ? 1 : 0].count; }

private:
    struct Way {
        std::size_t count = 0;
        std::string before;
        std::string late;
    };
    std::string pass(std::string_view bytes, bool toConsole);

    std::vector<LineFault> faults_;
    Way ways_[2];
};

/// A workflow from its beginning to its end, by an operator who does not look.
struct Workflow {
    Scene scene;
    std::string_view configuration; ///< a line of the section CONFIG
    std::string_view frames;        ///< beginnings of frames that go out on a whole line, in this order
};
[[nodiscard]] std::span<const Workflow> workflows();
[[nodiscard]] const Workflow* workflowOf(std::string_view name);

/// Carries the workflow out on a line with these faults, lets the operator stand before a line that does not
/// heal, and then leave on one that has. What did not hold, a line each. `ready` gets the session when the
/// workflow is about to begin.
[[nodiscard]] std::string playOnLine(const Workflow& workflow, const std::vector<LineFault>& faults,
                                     const std::function<void(Session& session)>& ready = {});

/// Every workflow, with the damage to each piece of it, in both directions, once and from then on, and with
/// a second one behind it.
class LineSweep {
public:
    /// Every so manieth piece; the seed says which, and what comes second.
    LineSweep(std::size_t step, std::uint32_t seed) : step_(step), seed_(seed) {}
    void sweep(const Workflow& workflow);
    [[nodiscard]] std::size_t rounds() const { return rounds_; }
    /// What did not hold, each once, with the first fault that led to it.
    [[nodiscard]] std::string found() const;

private:
    struct Finding {
        std::string what;
        std::string example;
        std::size_t times;
    };
    [[nodiscard]] std::array<std::size_t, 2> playWhole(const Workflow& workflow);
    void play(const Workflow& workflow, Session& ready, const std::vector<LineFault>& faults);
    void keep(std::string_view complaints, const std::string& example);

    std::size_t step_;
    std::uint32_t seed_;
    std::size_t rounds_ = 0;
    std::vector<Finding> findings_;
};

} // namespace quillon
