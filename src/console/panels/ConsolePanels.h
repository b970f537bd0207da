#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "console/ConsoleContext.h"
#include "console/panels/ModalPanel.h"

namespace quillon {

/// What the console does when a panel reports. Results are read by name while the panel still stands.
using PanelHandler = ModalPanel::Report;

/// What ErrorMessage() tells.
struct ErrorCode {
    static constexpr std::int16_t Protocol = 0;
    static constexpr std::int16_t DipSwitch = 1;
};

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
    /// Ends what is on the screen and tells the operator of a failure, by one of ErrorCode's numbers. The
    /// buttons come back by the refresh wait that begins with the operator's acknowledgement.
    void ErrorMessage(std::int16_t code);

private:
    struct Row;
    static std::span<const Row> table();
    static const Row* find(std::string_view key);

    ModalPanel* create(const Row& row, PanelHandler handler);
    ModalPanel* add(std::string_view className, std::string_view key);
    void show(const Row& row, ModalPanel& panel);

    ConsoleContext& context_;
    ConsoleScreen screen_;
    ControlFactory factory_;
};

} // namespace quillon
