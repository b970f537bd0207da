#include "console/Exposures.h"

#include <algorithm>
#include <utility>

namespace quillon {

Exposures::Exposures(ConsoleContext& context, const ServiceSession& session) {
    LinkEvents& events = context.link.events();
    events.GeneratorPhaseChange.connect([this, &context, &session](Phase phase) {
        if (std::exchange(lent_, session.lent()) != lent_) {
            beforeLoan_ = count_;
        }
        if (phase == Phase::RadExposure) {
            last_.push_front({context.console.schedule().now(), {}});
            last_.resize(std::min(last_.size(), kKept));
            ++count_;
        }
        changed.raise();
    });
    events.PostDisplay.connect(
        [this, &context](const std::string& mA, const std::string& ms, const std::string& mAs) {
            if (!last_.empty() && last_.front().values.empty()) {
                const std::string& kVp = context.state.m_LastKVPDisplay;
                last_.front().values =
                    (kVp.empty() ? "" : kVp + " kVp  ") + mA + " mA  " + ms + " ms  " + mAs + " mAs";
                changed.raise();
            }
        });
}

} // namespace quillon
