#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "console/ConsoleState.h"
#include "console/ConsoleTexts.h"
#include "console/Indicators.h"
#include "console/PositionerKind.h"
#include "console/layout/Names.h"
#include "link/TorvaneSerial.h"
#include "runtime/EventLoop.h"
#include "runtime/Operations.h"
#include "runtime/Platform.h"

namespace quillon {

class ServiceSession;

/// The service console: what the engineer sees and touches. It owns no protocol; it is the workflows around
/// the generator's modes, each a class of its own, on one screen.
class ctrQuillonConsole final : public ConsoleHost {
public:
    struct Context {
        Schedule& schedule;
        EventLoop& loop;
        Desktop& desktop;
        std::string commandLine;
        std::function<PositionerKind()> positionerToCalibrate;
        std::function<Refusal()> restartPc;
    };

    /// Creates the console with all its controls around the link control.
    ctrQuillonConsole(const Context& context, std::unique_ptr<TorvaneSerialV3_07_QLC1> linkControl);
    ~ctrQuillonConsole() override;

    [[nodiscard]] TorvaneSerialV3_07_QLC1& link();
    /// Where the generator stands and what the console is doing.
    [[nodiscard]] const ServiceSession& session() const;
    /// The same for who listens to it.
    [[nodiscard]] ServiceSession& session();
    /// For a developer: what the console was doing, what it does now, and why.
    [[nodiscard]] Signal<std::string>& runChanged();
    /// What a front end shows beside the controls.
    [[nodiscard]] Indicators indicators();
    /// Public operations, properties and texts by name.
    [[nodiscard]] const Operations& operations() const;
    /// Those of them that are the operator's texts, the dialogs' included.
    [[nodiscard]] std::vector<std::string> textNames() const;
    [[nodiscard]] const ConsoleTexts& texts() const;
    ConsoleEvents events;

    /// The console appears: the wait for the generator begins.
    void UserControl_Show();
    void PortOpen(bool newStatus);
    /// The system wants the program to end: see Closing.
    void LeaveNow();
    /// Hands the path of the error table to the link control.
    void IniErrorDescription(std::string_view sFile);

    [[nodiscard]] std::int16_t StopBits() const;
    void setStopBits(std::int16_t bits);
    [[nodiscard]] std::int16_t DataBits() const;
    void setDataBits(std::int16_t bits);
    void setPort(std::int16_t port);
    /// Kept here alone: the line runs at the link control's own speed.
    void setBaudrate(std::int16_t rate);
    /// Index of the pictures of the two lamps; -1 chooses by the console's size.
    void setIconSize(std::int16_t index);
    void setProjectName(std::string_view name);
    void setResetCounterEnable(bool enable);
    void EnableOrla(bool visible);
    void EnableMultiRoom(bool visible);

protected:
    void resized() override;

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace quillon
