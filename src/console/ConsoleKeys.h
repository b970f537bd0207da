#pragma once

#include <array>
#include <cstdint>
#include <limits>

#include "console/layout/Names.h"

namespace quillon {

/// The console's keys that the workflows give and take. The frame of the link control counts as one.
enum class Key : std::uint8_t {
    Configuration,
    ManualCalibration,
    Autocalibration,
    ReadCounters,
    GoToUserMode,
    Close,
    ResetError,
    LinkControl,
};
inline constexpr std::size_t kKeyCount = static_cast<std::size_t>(Key::LinkControl) + 1;
inline constexpr std::array<ConsoleControl, kKeyCount> kKeyNames{
    "cmbConfiguration",        "cmbManualCalibration", "cmbAutocalibration",
    "cmbReadExposureCounters", "cmbGoToUserMode",      "cmbClose",
    "cmbResetError",           "fraTorvaneSerial"};
static_assert(!kKeyNames.back().empty(), "every key has its name");

[[nodiscard]] constexpr ConsoleControl nameOf(Key key) {
    return kKeyNames[static_cast<std::size_t>(key)];
}

/// A set of keys.
class Keys {
    using Bits = std::uint16_t;
    static_assert(kKeyNames.size() <= std::numeric_limits<Bits>::digits, "every key has its bit");

public:
    constexpr Keys() = default;
    constexpr Keys(Key key) : bits_(static_cast<Bits>(1U << static_cast<unsigned>(key))) {}
    [[nodiscard]] constexpr Keys operator|(Keys other) const {
        Keys both;
        both.bits_ = static_cast<Bits>(bits_ | other.bits_);
        return both;
    }
    [[nodiscard]] constexpr Keys without(Keys taken) const {
        Keys rest;
        rest.bits_ = static_cast<Bits>(bits_ & ~taken.bits_);
        return rest;
    }
    [[nodiscard]] constexpr Keys only(Keys kept) const {
        Keys both;
        both.bits_ = static_cast<Bits>(bits_ & kept.bits_);
        return both;
    }
    /// Calls `work` for each key of the set.
    template <typename Work> void each(Work work) const {
        for (std::size_t i = 0; i < kKeyNames.size(); ++i) {
            if (has(static_cast<Key>(i))) {
                work(static_cast<Key>(i));
            }
        }
    }
    [[nodiscard]] constexpr bool has(Key key) const {
        return (bits_ >> static_cast<unsigned>(key) & 1U) != 0;
    }

private:
    Bits bits_ = 0;
};
[[nodiscard]] constexpr Keys operator|(Key a, Key b) {
    return Keys(a) | Keys(b);
}

/// What does nothing while an error stands.
inline constexpr Keys kBlockedByError =
    Key::Configuration | Key::Autocalibration | Key::ReadCounters | Key::GoToUserMode | Key::Close;

inline constexpr Keys kModeKeys =
    Key::Configuration | Key::ManualCalibration | Key::Autocalibration | Key::ReadCounters;

/// Short names for rows of tables.
namespace keys {

inline constexpr Keys none{};
inline constexpr Keys C = Key::Configuration;
inline constexpr Keys M = Key::ManualCalibration;
inline constexpr Keys A = Key::Autocalibration;
inline constexpr Keys R = Key::ReadCounters;
inline constexpr Keys U = Key::GoToUserMode;
inline constexpr Keys X = Key::Close;
inline constexpr Keys E = Key::ResetError;
inline constexpr Keys F = Key::LinkControl; // the frame of the link control
inline constexpr Keys modes = kModeKeys;

} // namespace keys

} // namespace quillon
