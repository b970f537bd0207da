#pragma once

#include "panel/layout/AecPage.h"
#include "panel/layout/CalibrationPage.h"
#include "panel/layout/CommPage.h"
#include "panel/layout/ConfigurationPage.h"
#include "panel/layout/DaecPage.h"
#include "panel/layout/FluoroPage.h"
#include "panel/layout/Menus.h"
#include "panel/layout/PanelTimers.h"
#include "panel/layout/RadPage.h"
#include "panel/layout/StatusStrip.h"
#include "ui/CheckedName.h"

namespace quillon {

/// The name of a control of the generator's keyboard, and of a timer.
using PanelControl =
    CheckedName<kStatusStripRows, kMenuRows, kRadPageRows, kAecPageRows, kDaecPageRows, kFluoroPageRows,
                kConfigurationPageRows, kCalibrationPageRows, kCommPageRows, kPanelSurfaceRows>;
using PanelTimer = CheckedName<kPanelTimers>;
/// What they are on.
using PanelHost = CheckedHost<PanelControl, PanelTimer>;

} // namespace quillon
