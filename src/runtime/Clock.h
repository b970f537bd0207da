#pragma once

#include <cstdint>

namespace quillon {

using Milliseconds = std::int64_t;

/// The one source of time. It never goes back, whatever the PC's wall clock does.
class Clock {
public:
    virtual ~Clock() = default;
    /// Milliseconds since some fixed moment.
    [[nodiscard]] virtual Milliseconds now() const = 0;
};

/// A clock that stands still until it is set.
class VirtualClock final : public Clock {
public:
    [[nodiscard]] Milliseconds now() const override { return now_; }
    void set(Milliseconds now) { now_ = now; }

private:
    Milliseconds now_ = 0;
};

} // namespace quillon
