#pragma once

#include "console/layout/ConsoleTimers.h"
#include "console/layout/CounterScreen.h"
#include "console/layout/ModeColumn.h"
#include "console/layout/OrlaScreen.h"
#include "console/layout/RemoteScreen.h"
#include "console/layout/WorkingArea.h"
#include "ui/CheckedName.h"

namespace quillon {

/// The name of a control of the console, and of a timer.
using ConsoleControl = CheckedName<kModeColumnRows, kCounterScreenRows, kWorkingAreaRows, kRemoteScreenRows,
                                   kOrlaScreenRows, kFootRows>;
using ConsoleTimer = CheckedName<kConsoleTimers>;
/// What they are on.
using ConsoleHost = CheckedHost<ConsoleControl, ConsoleTimer>;

} // namespace quillon
