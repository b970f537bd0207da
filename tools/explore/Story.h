#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "Copy.h"
#include "Session.h"

namespace quillon {

/// The program broke, which no invariant tells.
inline constexpr std::string_view kBroke = "TheProgramGoesOn";
/// A probe was come upon.
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

/// Takes lines out for as long as what is left still fails.
[[nodiscard]] std::vector<std::string>
shortest(std::vector<std::string> lines, const std::function<bool(const std::vector<std::string>&)>& fails);

} // namespace quillon
