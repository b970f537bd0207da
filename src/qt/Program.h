#pragma once

#include <functional>
#include <memory>

#include <QWidget>

#include "qt/QtRuntime.h"
#include "runtime/Schedule.h"

namespace quillon {

/// Somebody who measures the program from inside, once there is a window; what it returns lives as long.
using Watch =
    std::function<std::shared_ptr<void>(QtScheduleDriver& driver, Schedule& schedule, QWidget& window)>;

/// The window program, from its arguments to its exit status.
int runProgram(int argc, char** argv, const Watch& watch = {});

} // namespace quillon
