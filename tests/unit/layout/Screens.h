#pragma once

#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "console/layout/ConsoleControls.h"
#include "console/layout/PanelLayouts.h"
#include "panel/layout/PanelControls.h"
#include "runtime/Clock.h"
#include "ui/ScalingLayout.h"

namespace quillon {

/// The console with the link control in it and all dialogs, at their design sizes.
class Screens {
public:
    Screens() {
        auto panel = std::make_unique<ControlHost>(Kind::User, "TorvaneSerial", schedule_);
        panel_ = panel.get();
        addPanelControls(*panel);
        panelLayout_.record(*panel, kPanelDesignWidth, kPanelDesignHeight);
        addConsoleControls(console_, std::move(panel));
        consoleLayout_.record(console_, kConsoleDesignWidth, kConsoleDesignHeight);
        console_.setPlace({0, 0, kConsoleDesignWidth, kConsoleDesignHeight});
    }

    [[nodiscard]] ControlHost& console() { return console_; }
    [[nodiscard]] ControlHost& panel() { return *panel_; }
    [[nodiscard]] ControlHost& dialog(std::span<const ControlRow> rows, PanelSize size) {
        dialogs_.push_back(std::make_unique<ControlHost>(Kind::User, "dialog", schedule_));
        dialogs_.back()->setPlace({0, 0, size.width, size.height});
        addControls(*dialogs_.back(), rows);
        return *dialogs_.back();
    }

    /// Lays console and panel out in a window of this many pixels.
    void resize(int width, int height) {
        console_.setPlace({0, 0, width * 15, height * 15});
        consoleLayout_.apply(console_);
        panelLayout_.apply(*panel_);
    }

private:
    VirtualClock clock_;
    Schedule schedule_{clock_};
    ControlHost console_{Kind::User, "Quillon", schedule_};
    ControlHost* panel_ = nullptr;
    ScalingLayout consoleLayout_;
    ScalingLayout panelLayout_{{.parking = 75000, .keepsSize = "Iconized"}};
    std::vector<std::unique_ptr<ControlHost>> dialogs_;
};

} // namespace quillon
