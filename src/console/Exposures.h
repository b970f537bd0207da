#pragma once

#include <deque>
#include <string>

#include "console/ServiceSession.h"
#include "runtime/Signal.h"

namespace quillon {

/// An exposure of this session.
struct SessionExposure {
    Milliseconds at = 0; ///< on the schedule's clock
    std::string values;  ///< the actual values; empty until the generator has reported them
};

/// The exposures since the program was started, and those since the machine was lent.
class Exposures {
public:
    static constexpr std::size_t kKept = 20;

    Exposures(ConsoleContext& context, const ServiceSession& session);

    /// The newest first.
    [[nodiscard]] const std::deque<SessionExposure>& last() const { return last_; }
    [[nodiscard]] int count() const { return count_; }
    /// Since the machine was given to its users; 0 while it is not.
    [[nodiscard]] int countLent() const { return lent_ ? count_ - beforeLoan_ : 0; }

    Signal<> changed;

private:
    std::deque<SessionExposure> last_;
    int count_ = 0;
    int beforeLoan_ = 0; ///< as many of them
    bool lent_ = false;
};

} // namespace quillon
