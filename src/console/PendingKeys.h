#pragma once

#include <cstdint>
#include <functional>
#include <map>

#include "console/ServiceSession.h"
#include "runtime/Signal.h"

namespace quillon {

/// Which controls wait for the generator: those whose message still stands in the queue, and the one that
/// began what the console is doing. A message and a run belong to the control whose gesture is being handled
/// when they begin; what nobody's hand began, no control waits for.
class PendingKeys {
public:
    PendingKeys(TorvaneSerialV3_07_QLC1& link, ServiceSession& session);
    ~PendingKeys();
    PendingKeys(const PendingKeys&) = delete;
    PendingKeys& operator=(const PendingKeys&) = delete;

    /// Who knows the control whose gesture is being handled.
    void setHand(std::function<const Control*()> hand) { hand_ = std::move(hand); }

    [[nodiscard]] bool waits(const Control& control) const;
    /// The control, and what lies on it, is being taken away.
    void forget(const Control& control);

    /// It waits, or waits no more.
    Signal<const Control*> changed;

private:
    void handedOver(std::uint32_t ticket);
    void left(std::uint32_t ticket);
    void runChanged();
    [[nodiscard]] const Control* hand() const { return hand_ ? hand_() : nullptr; }

    TorvaneSerialV3_07_QLC1& link_;
    ServiceSession& session_;
    std::function<const Control*()> hand_;
    std::multimap<std::uint32_t, const Control*> sent_; ///< by ticket: more than one may want the same
    const Control* began_ = nullptr;
    const Control* shown_ = nullptr; ///< waits for the run as it was told last
};

} // namespace quillon
