#pragma once

#include <cstdint>
#include <string_view>

#include "console/ConsoleContext.h"
#include "console/panels/ModalPanel.h"

namespace quillon {

/// What the console does when a panel reports. Results are read by name while the panel still stands.
using PanelHandler = ModalPanel::Report;

/// The console's dialogs: each is made by class name under a key, laid over the place of the link control,
/// and removed when it has reported.
class ConsolePanels {
public:
    explicit ConsolePanels(ConsoleContext& context);

    /// Opens the panel of a key: "SelWSCal", "SelWSAutocal", "AutocalSelFocusOrParameter", "AutocalWarning".
    /// The lamps' keys are enabled after every report, whatever the handler did.
    void open(std::string_view key, PanelHandler handler);
    /// Takes the panel away; allowed inside its own handler.
    void remove(std::string_view key);
    /// Ends what is on the screen and tells the operator of a failure: 0 the line, 1 the dip switch. The
    /// buttons come back by the refresh wait that begins with the operator's acknowledgement.
    void ErrorMessage(std::int16_t code);

private:
    struct Row;
    static const Row* find(std::string_view key);

    ModalPanel* create(const Row& row, PanelHandler handler);
    ModalPanel* add(std::string_view className, std::string_view key);
    void show(const Row& row, ModalPanel& panel);

    ConsoleContext& context_;
    ConsoleScreen screen_;
    ControlFactory factory_;
};

} // namespace quillon
