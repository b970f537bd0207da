#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Visit.h"

namespace quillon {

/// Tells the calibration values that the generator has stored from those that it only shows. It shows a
/// stored value where a point is come upon, behind an acknowledged wish to store or to read it, and where it
/// has measured by itself.
class CalibrationBook {
public:
    explicit CalibrationBook(ValueFacts& facts) : facts_(facts) {}

    void sent(std::string_view frame);
    void acknowledged(std::string_view frame, Milliseconds at);
    /// All its transmissions went by without an acknowledgement.
    void unanswered(std::string_view frame);
    /// Calibration is entered from normal operation.
    void modeBegins();
    void autocalibrationBegins();
    /// The mode ends, or nobody knows any more where the list stands.
    void leavePoint() { point_.reset(); }
    /// The station or the parameter is reported.
    void placeReported() { place_ = walking_; }
    void value(const ValueName& point, std::string_view value, bool autocalibration, Milliseconds at);

private:
    void store(std::string_view value, Deed deed, Milliseconds at);

    ValueFacts& facts_;
    std::optional<ValueName> point_;
    std::string shown_;
    bool walking_ = false; ///< it was told to go to another point
    bool place_ = false;   ///< and has said where it stands since
    bool reading_ = false; ///< the next value is the stored one
    bool storing_ = false; ///< the same, as it was just stored
    bool byHand_ = false;  ///< it was told to change the value
};

} // namespace quillon
