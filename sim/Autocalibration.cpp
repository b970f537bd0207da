#include "sim/Autocalibration.h"

#include "sim/Formats.h"

#include <string>

namespace simulator {

namespace {

// How long a person would take, for the machine that exposes by itself.
constexpr std::int64_t kFirstPressMs = 6000;
constexpr std::int64_t kNextPressMs = 2000;

constexpr int kFilamentBase = 3000; // mA, well above anything that could be a kVp

} // namespace

std::span<const Row<Autocalibration>> Autocalibration::rows() {
    static constexpr Phases kInIt{Phase::Calibration, Phase::Autocalibration, Phase::ConfirmDismiss,
                                  Phase::AutocalError, Phase::AutocalOk};
    static constexpr Row<Autocalibration> rows[] = {
        {"CAU", kInIt, Takes::Number, &Autocalibration::onOff},
        {"CAR", kCalibratingEither, Takes::Number, &Autocalibration::retry},
    };
    return rows;
}

bool Autocalibration::onOff(const Request& request) {
    const bool on = *request.number != 0;
    if (!on) {
        dismiss();
    } else if (machine_.phase() == Phase::Calibration) {
        ask();
    } else if (quillon::kAsksOrTells.has(machine_.phase())) {
        confirm();
    } else {
        machine_.say("CAU1");
    }
    return true;
}

bool Autocalibration::retry(const Request& request) {
    machine_.say(*request.number != 0 ? "CAR1" : "CAR0");
    return true;
}

void Autocalibration::ask() {
    if (waiting_ || !machine_.serviceAllowed()) {
        return;
    }
    // The question comes only after the machine has had a look at itself. A console that missed the
    // acknowledgement asks again in that time, and its second request must not count as the answer.
    waiting_ = true;
    next_ = machine_.after(machine_.options.questionMs, [this] {
        waiting_ = false;
        if (machine_.phase() == Phase::Calibration) {
            machine_.go(Phase::ConfirmDismiss);
        }
    });
}

void Autocalibration::confirm() {
    machine_.say("CAU1");
    if (!waiting_) {
        waiting_ = true;
        next_ = machine_.after(machine_.options.beginMs, [this] { begin(); });
    }
}

void Autocalibration::begin() {
    waiting_ = false;
    exposures_ = 0;
    machine_.go(Phase::Autocalibration);
    calibration_.reportShot();
    if (machine_.options.autoExpose) {
        pressLater(kFirstPressMs);
    }
}

void Autocalibration::dismiss() {
    const bool stands = machine_.phase() != Phase::Calibration;
    leave();
    if (stands) {
        waiting_ = true;
        next_ = machine_.after(machine_.options.modeMs, [this] {
            waiting_ = false;
            machine_.enter(Phase::Calibration);
        });
    }
}

void Autocalibration::leave() {
    halt();
    machine_.say("CAU0");
}

void Autocalibration::halt() {
    machine_.agenda.cancel(next_);
    waiting_ = false;
}

void Autocalibration::pressLater(std::int64_t ms) {
    next_ = machine_.after(ms, [this] {
        if (machine_.phase() == Phase::Autocalibration && !press_().empty()) {
            pressLater(kNextPressMs);
        }
    });
}

void Autocalibration::exposureOver(bool complete) {
    if (complete) {
        ++exposures_;
        tellProgress();
        if (machine_.options.autocalSucceeds) {
            calibration_.adopt(calibration_.value() + machine_.random.below(5) - 2);
        }
    }
    if (exposures_ >= machine_.options.autocalExposures) {
        next_ = machine_.after(machine_.options.endMs, [this] { end(); });
    } else if (machine_.options.autoExpose) {
        pressLater(kNextPressMs);
    }
}

void Autocalibration::tellProgress() {
    // The kVp display carries it: a small number is the exposure's, one above any kVp is the filament
    // current.
    if (!calibration_.onParameter()) {
        machine_.say("KVS" + std::to_string(exposures_));
        machine_.say("KVS" + std::to_string(kFilamentBase + 10 * exposures_ + machine_.random.below(10)));
    } else {
        machine_.say("KVS" + shortNumber(calibration_.shot().kvp, 0));
    }
}

void Autocalibration::end() {
    if (machine_.phase() == Phase::Autocalibration) {
        machine_.go(machine_.options.autocalSucceeds ? Phase::AutocalOk : Phase::AutocalError);
    }
}

} // namespace simulator
