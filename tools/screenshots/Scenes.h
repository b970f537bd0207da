#pragma once

#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "Stage.h"

namespace quillon {

/// One look of the program: where it is set up, and what happens until the picture is taken.
struct Scene {
    std::string_view name;
    void (*play)(Stage& stage);
    Installation installation = {};

    /// Plays it with the operator's texts replaced by those of a file; by none when it is empty.
    [[nodiscard]] std::unique_ptr<Stage> staged(QSize window, std::string_view texts = {}) const;
};

/// Every screen, page, dialog and state.
[[nodiscard]] std::vector<Scene> scenes();
[[nodiscard]] Scene sceneNamed(std::string_view name);

// What scenes() is put together from.
[[nodiscard]] std::span<const Scene> modeScenes();       ///< rest, modes, errors, the end
[[nodiscard]] std::span<const Scene> panelScenes();      ///< the pages of the generator's own keyboard
[[nodiscard]] std::span<const Scene> positionerScenes(); ///< calibration of the positioners
[[nodiscard]] std::span<const Scene> signScenes();       ///< what is shown beside the controls
[[nodiscard]] std::span<const Scene> statusScenes();     ///< the status bar, and keys that would do nothing

} // namespace quillon
