#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "console/ctrQuillonConsole.h"
#include "qt/Look.h"
#include "screenshots/Scenes.h"

namespace quillon {
namespace {

TEST(Lamps, StayLitWhileWhatTheyLieOnIsDisabled) {
    const auto stage = sceneNamed("all-lamps").staged(QSize(1024, 768));
    Screen& screen = stage->screen();
    stage->control("cmdPrep").setBackColour(kPreparationColour);
    stage->control("cmdExposure").setBackColour(kExposureColour);
    const Control& value = stage->control("link.txtKVp");
    const auto look = [&screen](const Control& control) {
        screen.flush();
        return screen.view(control)->grab().toImage();
    };
    std::vector<std::pair<const Control*, QImage>> lit{{&value, look(value)}};
    for (ControlHost* host : {&stage->console(), static_cast<ControlHost*>(&stage->application().link())}) {
        for (const auto& control : host->controls()) {
            if (control->lamp() && control->shown()) {
                lit.emplace_back(control.get(), look(*control));
            }
        }
    }
    EXPECT_EQ(lit.size(), 1 + 9U) << "preparation, exposure and the seven conditions of the generator";

    for (const std::string_view frame : {"fraTorvaneSerial", "fraPrepExp"}) {
        stage->control(frame).setEnabled(false);
    }
    for (const auto& [control, before] : lit) {
        EXPECT_EQ(look(*control) == before, control->lamp()) << control->name();
        EXPECT_FALSE(screen.view(*control)->isEnabled());
    }
    EXPECT_EQ(screen.view(stage->control("link.txtDoorOpenWarning"))->words()->ground.rgb(), kLampFace);
}

} // namespace
} // namespace quillon
