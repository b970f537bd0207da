#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Copy.h"
#include "Session.h"

namespace quillon {

/// The name of a finding for a crash, which no invariant covers.
inline constexpr std::string_view kBroke = "TheProgramGoesOn";
/// The name of a finding for a probe that was reached.
inline constexpr std::string_view kReached = "AProbeIsReached";

/// The shortest way to something that was found, each try in a copy of the process.
class Story {
public:
    Story();
    /// Without what is not needed to show it, and with what the end of a session adds.
    [[nodiscard]] Plan of(Plan plan, const Violation& violation);

private:
    [[nodiscard]] bool shows(const Plan& plan, const Violation& violation, bool end);

    SharedText shown_;
    SharedText lines_; ///< what was done
};

/// Removes lines as long as the rest still fails.
[[nodiscard]] std::vector<std::string>
shortest(std::vector<std::string> lines, const std::function<bool(const std::vector<std::string>&)>& fails);

} // namespace quillon
