#pragma once

#include <memory>

#include "ui/ControlHost.h"

namespace quillon {

/// The size to which all places of the console refer: its surface of 12000 by 9000 and 180 more each way.
inline constexpr Twips kConsoleDesignWidth = 12180;
inline constexpr Twips kConsoleDesignHeight = 9180;
/// Where the lowest of them ends; what stands below is shown beside them.
inline constexpr Twips kConsoleFoot = 8985;

/// Makes every control and timer of the console on it, as the console stands before it is shown. The link
/// control is taken in between, hidden and filling its frame.
void addConsoleControls(ControlHost& console, std::unique_ptr<ControlHost> linkControl);

} // namespace quillon
