#include <algorithm>
#include <cstdio>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <QElapsedTimer>
#include <gtest/gtest.h>

#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "screenshots/Scenes.h"
#include "tests/qt/Inspection.h"

namespace quillon {
namespace {

/// Where everything is and how large its text.
std::vector<std::string> places(Stage& stage) {
    stage.screen().flush();
    std::vector<std::string> all;
    for (ControlHost* host : {static_cast<ControlHost*>(&stage.console()),
                              static_cast<ControlHost*>(&stage.application().link())}) {
        for (const auto& control : host->controls()) {
            if (!control->has(Property::Geometry)) {
                continue;
            }
            std::ostringstream line;
            const Place& place = control->place();
            line << pathOf(*control) << ' ' << place.left << ' ' << place.top << ' ' << place.width << ' '
                 << place.height;
            if (const ControlView* view = stage.screen().view(*control)) {
                line << " at pixel " << view->x() << ' ' << view->y();
            }
            if (control->has(Property::Font)) {
                line << ' ' << control->fontSize();
            }
            all.push_back(line.str());
        }
    }
    return all;
}

void toDesignSize(Stage& stage) {
    constexpr Twips kBelowConsole = 250;
    stage.application().resizeWindow(12180, 9180 + kBelowConsole);
}

TEST(Resize, AThousandTimesAndBackLeavesEverythingInItsPlace) {
    Stage untouched({}, QSize(1024, 768));
    toDesignSize(untouched);
    Stage stage({}, QSize(1024, 768));
    std::mt19937 random(20240229);
    // Down to windows in which the panel is nothing but its icon.
    std::uniform_int_distribution<int> width(40, 1920);
    std::uniform_int_distribution<int> height(40, 1200);
    for (int i = 0; i < 1000; ++i) {
        stage.resize({width(random), height(random)});
    }
    EXPECT_NE(places(stage), places(untouched));
    toDesignSize(stage);
    EXPECT_EQ(places(stage), places(untouched));
    const Control& key = stage.control("cmbConfiguration");
    EXPECT_EQ(key.place(), (Place{9240, 3750, 2700, 840})) << "the place that the table gives it";
}

} // namespace
} // namespace quillon
