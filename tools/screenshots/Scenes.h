#pragma once

#include <span>
#include <string_view>

#include "Stage.h"

namespace quillon {

/// One look of the program: where it is set up, and what happens until the picture is taken.
struct Scene {
    std::string_view name;
    void (*play)(Stage& stage);
    Installation installation = {};
};

/// Every screen, page, dialog and state, in the order in which an engineer meets them.
[[nodiscard]] std::span<const Scene> scenes();

} // namespace quillon
