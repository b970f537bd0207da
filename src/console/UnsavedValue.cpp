#include "console/UnsavedValue.h"

#include <algorithm>
#include <array>

namespace quillon {

namespace {

constexpr std::array<std::string_view, 3> kChanging{"sldCalValue", "cmbCalValueUp", "cmbCalValueDown"};
/// Another point has another value.
constexpr std::array<std::string_view, 6> kStepping{"cmbKVPCalUp",  "cmbKVPCalDown", "cmbMACalUp",
                                                    "cmbMACalDown", "cmbMASCalUp",   "cmbMASCalDown"};
constexpr std::string_view kStoring = "cmbStoreCalValue";
constexpr Phases kOfTheMode{Phase::Calibration,    Phase::Autocalibration, Phase::Error,
                            Phase::ConfirmDismiss, Phase::AutocalError,    Phase::AutocalOk};

template <typename Names> bool isAmong(const Names& names, const Control& key) {
    return std::find(names.begin(), names.end(), key.name()) != names.end();
}

} // namespace

UnsavedValue::UnsavedValue(TorvaneSerialV3_07_QLC1& link, ServiceSession& session, PendingKeys& pending) {
    session.began.connect([this] { set(stands_, false); });
    pending.sent.connect([this](const Control* key) { sent(*key); });
    pending.left.connect([this](const Control* key, bool done) { left(*key, done); });
    link.events().GeneratorPhaseChange.connect([this](Phase phase) {
        if (!kOfTheMode.has(phase)) {
            set(false, stands_ || wasLeft_);
        }
    });
}

void UnsavedValue::sent(const Control& key) {
    if (isAmong(kChanging, key)) {
        set(true, false);
    } else if (isAmong(kStepping, key)) {
        set(false, stands_);
    } else if (wasLeft_) {
        set(false, false);
    }
}

void UnsavedValue::left(const Control& key, bool done) {
    if (key.name() == kStoring && done) {
        set(false, false);
    }
}

void UnsavedValue::set(bool stands, bool wasLeft) {
    if (stands_ != stands || wasLeft_ != wasLeft) {
        stands_ = stands;
        wasLeft_ = wasLeft;
        changed.raise();
    }
}

} // namespace quillon
