#pragma once

#include <functional>
#include <string_view>

#include <QImage>

#include "runtime/Clock.h"

namespace quillon {

/// Plays a recording and hands out what its window showed in the last `stretch` ms before the console was
/// asked to leave, or before the recording ends, each picture that differs from the one before it. False,
/// with a line on standard error, when a line of it cannot be played or the window never came up.
[[nodiscard]] bool lastScreens(std::string_view recording, Milliseconds stretch,
                               const std::function<void(const QImage&)>& each);

} // namespace quillon
