#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "Facts.h"

namespace quillon {

/// When something must hold.
enum class When : std::uint8_t {
    Always, ///< at every moment
    Moved,  ///< when a move is over
    Stood,  ///< when nobody has done anything for 130 s
    Frame,  ///< with each frame
    Rest,   ///< when an honest generator and the console's own keys have led back
    Closed, ///< when the window has gone
};

/// One thing that must hold, whatever the operator, the generator and the line do. docs/safety.md names each
/// beside its hazard.
struct Invariant {
    std::string_view name;
    When when;
    /// What is wrong; empty while it holds.
    std::string (*broken)(const Facts& facts);
};
[[nodiscard]] std::span<const Invariant> invariants();

struct Violation {
    std::string invariant;
    std::string what;
    Milliseconds time = 0;
    /// Times differ while moves are taken out; what went wrong does not.
    bool operator==(const Violation& other) const {
        return invariant == other.invariant && what == other.what;
    }
    [[nodiscard]] std::string text() const { return std::to_string(time) + " " + invariant + ": " + what; }
};

} // namespace quillon
