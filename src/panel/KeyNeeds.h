#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string_view>
#include <utility>

#include "ui/Control.h"

namespace quillon {

/// Why a press of a key does nothing.
enum class Hindrance : std::uint8_t {
    None,
    Phase,        ///< the generator takes no such command in its phase
    NoAction,     ///< the generator has none for it
    NotDigital,   ///< the workstation is not digital
    NoField,      ///< no measuring field is on
    NoDensity,    ///< it is not in the generator's range, or that is not known
    NoBrightness, ///< the brightness is not controlled
    FixedKVP,     ///< the station's kVp belongs to the autocalibration
    NoNumber,     ///< the box beside it holds no number
};

/// What each key needs: a phase that allows its command, and the condition of its row. A key that was not
/// added needs nothing.
class KeyNeeds {
public:
    using Condition = std::function<Hindrance()>;

    /// `allows`: whether the present phase lets a command out.
    explicit KeyNeeds(std::function<bool(std::string_view mnemonic)> allows) : allows_(std::move(allows)) {}

    /// `asks` is the mnemonic of its command; empty for a key that sends nothing by itself.
    void add(const Control& key, std::string_view asks, Condition condition = {});
    [[nodiscard]] Hindrance of(const Control& key) const;

private:
    struct Need {
        std::string_view asks;
        Condition condition;
    };

    std::function<bool(std::string_view mnemonic)> allows_;
    std::map<const Control*, Need> needs_;
};

} // namespace quillon
