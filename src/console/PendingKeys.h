#pragma once

#include <cstdint>
#include <functional>
#include <map>

#include "console/ServiceSession.h"
#include "runtime/Signal.h"

namespace quillon {

/// Which controls wait for the generator: those whose message is still in the queue, and the one that began
/// the current run. A message and a run belong to the control whose gesture is being handled when they begin;
/// those that no gesture began belong to none.
class PendingKeys {
public:
    PendingKeys(TorvaneSerialV3_07_QLC1& link, ServiceSession& session);
    ~PendingKeys();
    PendingKeys(const PendingKeys&) = delete;
    PendingKeys& operator=(const PendingKeys&) = delete;

    /// Gives the control whose gesture is being handled.
    void setGestureOwner(std::function<const Control*()> hand) { gestureOwner_ = std::move(hand); }

    [[nodiscard]] bool waits(const Control& control) const;
    /// The key of the workstation that was asked for and is not reported yet; empty for none. It is given up
    /// after some seconds.
    [[nodiscard]] const Control* asked() const { return asked_; }
    /// The workstation that was given up; empty again with the next thing that is sent or reported.
    [[nodiscard]] const Control* neverReported() const { return neverReported_; }
    /// A field, or a key that is lit by a report.
    [[nodiscard]] static bool isReported(const Control& control);
    /// A key that a report lights, and neither it nor another key of its choice was reported yet.
    [[nodiscard]] static bool isUnknown(const Control& control);
    /// A value of the workstation that is being left, or one that was replaced by storing another.
    [[nodiscard]] bool outdated(const Control& control) const;
    /// The control, and what lies on it, is being taken away.
    void forget(const Control& control);

    /// It waits, or waits no more; a value looks old, or does not any more.
    Signal<const Control*> changed;
    Signal<const Control*> sent;       ///< a message of the key was queued
    Signal<const Control*, bool> left; ///< and has left the queue: done, or lost

private:
    void handedOver(std::uint32_t ticket);
    void leftQueue(std::uint32_t ticket, bool done);
    void runChanged();
    void askFor(const Control* workstation);
    void replace(const Control* value);
    void replacedIsReported();
    [[nodiscard]] const Control* gestureOwner() const { return gestureOwner_ ? gestureOwner_() : nullptr; }

    TorvaneSerialV3_07_QLC1& link_;
    ServiceSession& session_;
    std::function<const Control*()> gestureOwner_;
    std::multimap<std::uint32_t, const Control*> waiting_; ///< by ticket: more than one may want the same
    const Control* asked_ = nullptr;
    const Control* neverReported_ = nullptr;
    Timer watchdog_;                    ///< for the report of what was asked for
    const Control* replaced_ = nullptr; ///< shows what was stored before, until the new one is reported
    const Control* began_ = nullptr;
    const Control* shown_ = nullptr; ///< the control that waits for the run, as last reported
};

} // namespace quillon
