#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "console/ServiceSession.h"
#include "console/panels/ModalPanel.h"

namespace quillon {

/// What the console does when a panel reports. Results are read while the panel still stands.
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
    ConsolePanels(ConsoleContext& context, ServiceSession& session);

    /// Opens the panel of a key: "SelWSCal", "SelWSAutocal", "AutocalSelFocusOrParameter", "AutocalWarning".
    /// The lamps' keys are enabled after every report, whatever the handler did.
    void open(std::string_view key, PanelHandler handler);
    /// Takes the panel away; allowed inside its own handler.
    void remove(std::string_view key);
    /// Ends what is on the screen and tells the operator of a failure, by one of ErrorCode's numbers. The
    /// buttons come back by the refresh wait that begins with the operator's acknowledgement.
    /// `belied`: the phase whose report shows that the message is not so.
    void ErrorMessage(std::int16_t code, Phase missed = Phase::None);
    /// What to tell of a mode that was not reached.
    [[nodiscard]] std::int16_t failureCode() const;
    /// Tells of a protocol error, if there was one.
    void tellProtocolError();

    /// The names by which the dialogs' texts can be replaced, such as "ctrAWarning.sWarning1". A dialog gets
    /// its texts when it opens.
    [[nodiscard]] std::vector<std::string> textNames() const;

private:
    struct Row;
    static std::span<const Row> table();
    static const Row* find(std::string_view key);
    void addTexts(const Row& row);

    ModalPanel* create(const Row& row, PanelHandler handler);
    ModalPanel* add(std::string_view className, std::string_view key);
    void show(const Row& row, ModalPanel& panel);

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsoleScreen screen_;
    ControlFactory factory_;
    /// The replaced texts by class and member; nothing where the dialog's own text stands.
    std::map<std::string_view, std::map<std::string_view, std::optional<std::string>>> texts_;
};

} // namespace quillon
