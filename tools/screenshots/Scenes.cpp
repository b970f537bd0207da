#include "Scenes.h"

#include <algorithm>
#include <stdexcept>
#include <string>

namespace quillon {

std::unique_ptr<Stage> Scene::staged(QSize window, std::string_view texts) const {
    Installation replaced = installation;
    replaced.texts = texts;
    auto stage = std::make_unique<Stage>(replaced, window);
    play(*stage);
    return stage;
}

std::vector<Scene> scenes() {
    std::vector<Scene> all;
    for (const std::span<const Scene> some :
         {modeScenes(), panelScenes(), positionerScenes(), signScenes(), statusScenes()}) {
        all.insert(all.end(), some.begin(), some.end());
    }
    return all;
}

Scene sceneNamed(std::string_view name) {
    const std::vector<Scene> all = scenes();
    const auto found =
        std::find_if(all.begin(), all.end(), [name](const Scene& each) { return each.name == name; });
    if (found == all.end()) {
        throw std::runtime_error(std::string(name) + " is no scene");
    }
    return *found;
}

} // namespace quillon
