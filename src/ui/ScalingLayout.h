#pragma once

#include <string_view>
#include <vector>

#include "ui/ControlHost.h"

namespace quillon {

/// Lays the controls of a host out by the ratio of its present size to its design size. The design places are
/// recorded once and every layout starts from them, so no rounding adds up.
class ScalingLayout {
public:
    /// Further rules of one host's layout.
    struct Rules {
        /// A control parked this far to the left of the surface stays parked; 0 for no such rule.
        Twips parking = 0;
        /// A control that moves with the others and keeps its size and font.
        std::string_view keepsSize = {};
    };

    explicit ScalingLayout(Rules rules) : rules_(rules) {}
    ScalingLayout() = default;

    /// Takes the places and fonts (rounded to whole points) of all controls, in enumeration order. A property
    /// that a control does not have counts as 0.
    void record(const ControlHost& host, Twips designWidth, Twips designHeight);

    /// Writes every recorded control; one that refuses a property is passed over. Controls that came after
    /// the recording have no record and keep their place.
    void apply(ControlHost& host) const;

    [[nodiscard]] Twips designWidth() const { return designWidth_; }
    [[nodiscard]] Twips designHeight() const { return designHeight_; }

private:
    struct Record {
        Place place;
        std::int16_t fontSize;
    };

    Rules rules_;
    Twips designWidth_ = 0;
    Twips designHeight_ = 0;
    std::vector<Record> records_;
};

} // namespace quillon
