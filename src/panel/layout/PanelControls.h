#pragma once

#include "ui/ControlHost.h"

namespace quillon {

/// The size to which all places of the link control's panel refer.
inline constexpr Twips kPanelDesignWidth = 4920;
inline constexpr Twips kPanelDesignHeight = 6960;

/// Makes every control and timer of the link control's panel on it, as the panel stands before anything was
/// heard of the generator: the main menu with its first page.
void addPanelControls(ControlHost& host);

} // namespace quillon
