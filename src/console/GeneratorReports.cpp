#include "console/GeneratorReports.h"

#include <cassert>

#include "link/LinkSilence.h"

namespace quillon {

namespace {

constexpr int kArrives = 20000; // ms in which a generator may still go into the mode it was told

} // namespace

void GeneratorReports::setMode(Phase mode) {
    assert(mode == Phase::Initialization || mode == Phase::NormalOperation || isServiceMode(mode));
    if (asked_ == mode) {
        asked_ = Phase::None;
    }
    if (mode_ != mode) {
        exposures_ = 0;
        wanted_ = ExposureRequest::None;
    }
    mode_ = mode;
}

void GeneratorReports::asked(Phase mode) {
    asked_ = mode;
    askedAt_ = context_.console.schedule().now();
}

Phase GeneratorReports::onTheWayTo() const {
    const bool may =
        context_.console.schedule().now() - askedAt_ < kArrives || context_.link.silence().quiet();
    return mode_ == Phase::NormalOperation && may ? asked_ : Phase::None;
}

void GeneratorReports::heard(Phase phase) {
    lost_ = false;
    exitUnheard_ = false;
    poweringUp_ = phase == Phase::Initialization;
    if (phase == Phase::RadExposure) {
        ++exposures_;
    }
}

void GeneratorReports::lost() {
    lost_ = true;
    poweringUp_ = false;
    lastPhase_ = Phase::Initialization;
}

} // namespace quillon
