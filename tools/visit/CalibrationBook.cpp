#include "CalibrationBook.h"

#include <algorithm>
#include <array>

namespace quillon {

namespace {

constexpr std::string_view kStore = "CS";
constexpr std::string_view kRead = "CR";
constexpr std::array<std::string_view, 6> kWalks{"MA+", "MA-", "MAU", "MAD", "FO", "CO"};
constexpr std::array<std::string_view, 4> kSteps{"C+", "C++", "C-", "C--"};

template <typename Names> bool isAmong(const Names& names, std::string_view frame) {
    return std::ranges::find(names, frame) != names.end();
}

} // namespace

void CalibrationBook::sent(std::string_view frame) {
    storing_ = storing_ && frame == kStore;
    if (isAmong(kWalks, frame)) {
        walking_ = true;
        place_ = byHand_ = false;
    } else if (isAmong(kSteps, frame) || frame.starts_with("CV")) {
        byHand_ = true;
        reading_ = false;
    }
}

void CalibrationBook::acknowledged(std::string_view frame, Milliseconds at) {
    if (frame == kStore) {
        if (walking_) {
            leavePoint(); // it was stored where the list stands now, of which no value was seen
        } else if (point_) {
            store(shown_, Deed::StoredByHand, at);
        }
        storing_ = true;
    } else if (frame == kRead) {
        reading_ = true;
        byHand_ = false;
    }
}

void CalibrationBook::unanswered(std::string_view frame) {
    if (frame == kStore && point_) {
        ValueFact& fact = facts_[*point_];
        fact.storeInDoubt = true;
        fact.left.reset();
    }
}

void CalibrationBook::modeBegins() {
    point_.reset();
    reading_ = true;
    walking_ = place_ = storing_ = byHand_ = false;
}

void CalibrationBook::autocalibrationBegins() {
    walking_ = place_ = storing_ = byHand_ = reading_ = false;
}

void CalibrationBook::value(const ValueName& point, std::string_view value, bool autocalibration,
                            Milliseconds at) {
    if (walking_ && !place_) {
        leavePoint(); // the list was told to move, and has not said where to
        return;
    }
    // A value that a hand has changed is not the stored one, even where it is the first that is seen.
    const bool read = !byHand_ && !autocalibration && (point_ != point || reading_ || place_);
    point_ = point;
    shown_ = value;
    if (storing_) {
        store(value, Deed::StoredByHand, at);
    } else if (autocalibration && !byHand_) {
        store(value, Deed::Autocalibrated, at);
    } else if (read) {
        ValueFact& fact = facts_[point];
        fact.report(shown_, at);
        fact.storeInDoubt = false;
    } else {
        ValueFact& fact = facts_[point];
        fact.unstored = fact.left == shown_ ? std::nullopt : std::optional(shown_);
    }
    reading_ = walking_ = place_ = false;
}

void CalibrationBook::store(std::string_view value, Deed deed, Milliseconds at) {
    ValueFact& fact = facts_[*point_];
    fact.left = value;
    fact.leftAt = at;
    fact.deed = deed;
    fact.unstored.reset();
    fact.storeInDoubt = false;
    byHand_ = false;
}

} // namespace quillon
