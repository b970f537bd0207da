#include "console/PendingKeys.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "ui/Input.h"

namespace quillon {

PendingKeys::PendingKeys(TorvaneSerialV3_07_QLC1& link, ServiceSession& session)
    : link_(link), session_(session) {
    link.setSendNotices({.handedOver = [this](std::uint32_t ticket) { handedOver(ticket); },
                         .left = [this](std::uint32_t ticket) { left(ticket); }});
    session_.began.connect([this] { began_ = hand(); });
    session_.changed.connect([this] { runChanged(); });
}

PendingKeys::~PendingKeys() {
    link_.setSendNotices({});
}

bool PendingKeys::waits(const Control& control) const {
    return &control == shown_ || std::any_of(sent_.begin(), sent_.end(), [&control](const auto& sent) {
        return sent.second == &control;
    });
}

void PendingKeys::forget(const Control& control) {
    std::erase_if(sent_, [&control](const auto& sent) { return liesOn(sent.second, control); });
    for (const Control** one : {&began_, &shown_}) {
        *one = liesOn(*one, control) ? nullptr : *one;
    }
}

void PendingKeys::handedOver(std::uint32_t ticket) {
    if (const Control* key = hand()) {
        sent_.emplace(ticket, key);
        changed.raise(key);
    }
}

void PendingKeys::left(std::uint32_t ticket) {
    const auto [first, last] = sent_.equal_range(ticket);
    std::vector<const Control*> keys;
    std::transform(first, last, std::back_inserter(keys), [](const auto& sent) { return sent.second; });
    sent_.erase(first, last);
    for (const Control* key : keys) {
        changed.raise(key);
    }
}

void PendingKeys::runChanged() {
    if (session_.idle()) {
        began_ = nullptr; // what comes by itself is nobody's
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
