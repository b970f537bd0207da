#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "link/LinkEvents.h"
#include "link/LinkSettings.h"
#include "link/SendPath.h"
#include "model/ErrorTable.h"
#include "model/GeneratorState.h"
#include "panel/layout/Names.h"
#include "runtime/Operations.h"
#include "runtime/Platform.h"

namespace quillon {

class Commands;
class ErrorsAndWarnings;
enum class Hindrance : std::uint8_t;
class LinkSilence;
class Service;
class StatusPoll;
class Technique;

/// The link control: it owns the port, speaks the protocol, mirrors the generator's state, and carries the
/// operator's panel. This class only puts its parts together; each subject is a class of its own.
///
/// A host connects to events(), sends what commands() has, and reaches the subjects that do more than send.
/// operations() has all that by name, for whoever learns the names only when it runs.
class TorvaneSerialV3_07_QLC1 final : public PanelHost {
public:
    struct Context {
        Schedule& schedule;
        SerialPort& port;
        UserStore& store;
        Folder& folder;
        Desktop& desktop;
        ErrorTable& errorTable;
        std::string commandLine;
    };

    /// Creates the control with all of its panel, reads "temp.ini", and takes the settings that its host's
    /// design holds. The warning of an active log comes up here.
    explicit TorvaneSerialV3_07_QLC1(const Context& context);
    /// Closes the port.
    ~TorvaneSerialV3_07_QLC1() override;

    [[nodiscard]] LinkEvents& events();
    /// Raised instead of GeneratorPhaseChange if the present phase is reported again.
    [[nodiscard]] Signal<>& phaseRepeated();
    /// Raised behind each message, when all of it is done: its mnemonic, its value, and whether it is known.
    [[nodiscard]] Signal<std::string_view, std::string_view, bool>& messageTaken();
    [[nodiscard]] const Operations& operations() const;
    /// The serial settings; they take effect at the next open.
    [[nodiscard]] LinkSettings& settings();
    [[nodiscard]] const InstallationFacts& facts() const;
    /// What the generator last reported.
    [[nodiscard]] const GeneratorState& mirror() const;

    /// The commands that only send.
    [[nodiscard]] const Commands& commands() const;
    /// Configuration, calibration and autocalibration.
    [[nodiscard]] Service& service();
    /// The exposure values and the technique mode.
    [[nodiscard]] Technique& technique();
    /// Errors, warnings and their reset.
    [[nodiscard]] ErrorsAndWarnings& errors();
    /// Why a press of the panel's key would do nothing now.
    [[nodiscard]] Hindrance hindrance(const Control& key) const;
    /// The line as the machine sees it: which device it is, whether it is there, why it did not open.
    [[nodiscard]] const SerialPort& line() const;
    /// The device of a port that had not opened has come, and the port stands open.
    [[nodiscard]] Signal<>& portArrived();
    /// Whether it answers.
    [[nodiscard]] LinkSilence& silence();
    /// The requests for phase and heat.
    [[nodiscard]] StatusPoll& poll();

    [[nodiscard]] bool PortOpen() const;
    void setPortOpen(bool open);
    /// Closes the port for good: what still waits goes out before, and the generator may expose again.
    void leavePort();
    [[nodiscard]] bool StatusUpdateEnable() const;
    void setStatusUpdateEnable(bool enable);
    /// The generator is asked for its phase, now and again.
    [[nodiscard]] bool polls() const;
    /// The poll goes on, whatever has paused it.
    void pollAgain();
    void setEventEnabled(bool enabled);
    void setHandshaking(bool asked);
    void setDebugActive(bool active);
    /// True: the panel is embedded in the console, which is in charge of its navigation.
    void setFromGUI(bool embedded);
    void setRXEnable(bool enable);
    /// The machine is lent to its users for a while. Writing True works in operating phase 6 only, writing
    /// False in 2 only.
    [[nodiscard]] bool TempUserMode() const;
    void setTempUserMode(bool lent);
    [[nodiscard]] static std::string_view SoftVersion() { return "TorvaneSerial_V3_07_QLC1"; }

    /// Whether the present phase lets a command of this mnemonic out.
    [[nodiscard]] bool allows(std::string_view mnemonic) const;
    /// The operator's answer to the question whether to autocalibrate is on its way to the generator.
    [[nodiscard]] bool answering() const;
    /// If the generator still asks whether to autocalibrate: shows and raises the question again.
    void repeatQuestion();

    /// The embedded panel shows its main menu, or this page of its service menu and no way to another one.
    void showMainMenu();
    void showServicePage(std::int16_t page);

    /// Throws away what waits to be sent.
    void discardWaiting();
    /// Queues a message under a mask of phases.
    void SendMessage(std::string_view message, PhaseMask phases, bool WithACK = false);
    void Flush();
    /// Tells what becomes of each message that is queued.
    void setSendNotices(SendPath::Notices notices);
    /// Routes an inbound mnemonic that the own table does not take to an operation of the host.
    void AddParentMessage(std::string_view message, std::string_view method, const Operations& object);

    void UserControl_Show();

protected:
    void resized() override;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace quillon
