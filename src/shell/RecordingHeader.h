#pragma once

#include <string>
#include <string_view>

#include "runtime/Platform.h"

namespace quillon {

/// What a recorded session started from, as the head of a scenario: the small files of the installation, the
/// command line and the screen.
[[nodiscard]] std::string recordingHeader(const Folder& folder, const Desktop& desktop,
                                          std::string_view commandLine);

} // namespace quillon
