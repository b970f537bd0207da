#include "console/PendingKeys.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>
#include <vector>

#include "ui/Input.h"

namespace quillon {

namespace {

constexpr int kWatchdog = 10000; // ms, for a report
constexpr std::string_view kStoreSID = "cmdSetNewSID";

constexpr std::string_view kWorkstation = "cmbWS";
/// The beginnings of the names of keys that a report lights.
constexpr std::array<std::string_view, 12> kLitByReport{
    kWorkstation,      "cmbAECField",      "cmbAECFilmScreen",   "cmbAECDensity",
    "cmbDAECDensity",  "cmbDigitalAEC",    "cmbPhotomultiplier", "cmbFlMag",
    "cmbFlContinuous", "cmbFlKVPTracking", "cmbToggleABS",       "cmbFlHighDose"};

/// The control shows a value of the workstation.
bool isValue(const Control& control) {
    return control.name() != kWorkstation && PendingKeys::isReported(control);
}

} // namespace

PendingKeys::PendingKeys(TorvaneSerialV3_07_QLC1& link, ServiceSession& session)
    : link_(link), session_(session), watchdog_(link.schedule()) {
    link.setSendNotices({.handedOver = [this](std::uint32_t ticket) { handedOver(ticket); },
                         .left = [this](std::uint32_t ticket, bool done) { leftQueue(ticket, done); }});
    session_.began.connect([this] { began_ = gestureOwner(); });
    session_.changed.connect([this] { runChanged(); });
    link.events().WorkstationChange.connect([this](std::int32_t) { askFor(nullptr); });
    link.events().GeneratorPhaseChange.connect([this](Phase) { askFor(nullptr); });
    link.events().URSSidGetResponse.connect([this](std::int16_t) { replacedIsReported(); });
    watchdog_.setTick([this] {
        const Control* key = asked_;
        askFor(nullptr);
        neverReported_ = key;
    });
}

PendingKeys::~PendingKeys() {
    link_.setSendNotices({});
}

bool PendingKeys::waits(const Control& control) const {
    return &control == shown_ || &control == asked_ ||
           std::any_of(waiting_.begin(), waiting_.end(),
                       [&control](const auto& one) { return one.second == &control; });
}

bool PendingKeys::isReported(const Control& control) {
    return control.role() == Role::Field ||
           (control.kind() == Kind::Button &&
            std::any_of(kLitByReport.begin(), kLitByReport.end(),
                        [&control](std::string_view name) { return control.name().starts_with(name); }));
}

bool PendingKeys::isUnknown(const Control& control) {
    if (control.known() || (control.role() != Role::Toggle && control.role() != Role::Choice)) {
        return false;
    }
    const auto prefix =
        std::find_if(kLitByReport.begin(), kLitByReport.end(),
                     [&control](std::string_view name) { return control.name().starts_with(name); });
    if (prefix == kLitByReport.end()) {
        return false;
    }
    const std::vector<Control*>& row = control.container()->stack();
    return control.role() == Role::Toggle ||
           std::none_of(row.begin(), row.end(), [prefix](const Control* each) {
               return each->name().starts_with(*prefix) && each->known() &&
                      each->backColour() != kNormalColour;
           });
}

bool PendingKeys::outdated(const Control& control) const {
    if (&control == replaced_) {
        return true;
    }
    return isValue(control) && asked_ != nullptr && liesOn(&control, link_) &&
           !liesOn(&control, link_["fraStatus"]);
}

/// A workstation's values look old from the press of another one's key until that is reported, or given up.
void PendingKeys::askFor(const Control* workstation) {
    watchdog_.stop();
    neverReported_ = nullptr;
    if (workstation != nullptr) {
        watchdog_.start(kWatchdog);
    }
    const Control* before = std::exchange(asked_, workstation);
    for (const Control* key : {before, workstation}) {
        if (key != nullptr && before != workstation) {
            changed.raise(key);
        }
    }
    if ((before == nullptr) == (workstation == nullptr)) {
        return;
    }
    for (const auto& control : link_.controls()) {
        if (isValue(*control)) {
            changed.raise(control.get());
        }
    }
}

void PendingKeys::replace(const Control* value) {
    for (const Control* one : {std::exchange(replaced_, value), value}) {
        if (one != nullptr) {
            changed.raise(one);
        }
    }
}

/// A report that comes while the new value is still in the queue is of the value before.
void PendingKeys::replacedIsReported() {
    const bool queued = std::any_of(waiting_.begin(), waiting_.end(),
                                    [](const auto& one) { return one.second->name() == kStoreSID; });
    if (!queued) {
        replace(nullptr);
    }
}

void PendingKeys::forget(const Control& control) {
    std::erase_if(waiting_, [&control](const auto& one) { return liesOn(one.second, control); });
    for (const Control** one : {&asked_, &neverReported_, &replaced_, &began_, &shown_}) {
        *one = liesOn(*one, control) ? nullptr : *one;
    }
}

void PendingKeys::handedOver(std::uint32_t ticket) {
    if (const Control* key = gestureOwner()) {
        waiting_.emplace(ticket, key);
        neverReported_ = nullptr;
        if (key->name() == kWorkstation && key->index().value_or(0) + 1 != link_.mirror().m_Workstation) {
            askFor(key);
        }
        if (key->name() == kStoreSID) {
            replace(&(*key->host())["TxtStoredSID"]);
        }
        changed.raise(key);
        sent.raise(key);
    }
}

void PendingKeys::leftQueue(std::uint32_t ticket, bool done) {
    const auto [first, last] = waiting_.equal_range(ticket);
    std::vector<const Control*> keys;
    std::transform(first, last, std::back_inserter(keys), [](const auto& one) { return one.second; });
    waiting_.erase(first, last);
    for (const Control* key : keys) {
        changed.raise(key);
        left.raise(key, done);
    }
}

void PendingKeys::runChanged() {
    if (session_.idle()) {
        began_ = nullptr; // a run that begins by itself belongs to no key
    }
    const Control* waiting = session_.waits() ? began_ : nullptr;
    const Control* before = std::exchange(shown_, waiting);
    for (const Control* key : {before, waiting}) {
        if (key != nullptr && before != waiting) {
            changed.raise(key);
        }
    }
}

} // namespace quillon
