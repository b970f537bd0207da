#pragma once

#include <functional>
#include <string>

#include "console/ConsoleKeys.h"
#include "console/ConsoleState.h"
#include "console/ConsoleTexts.h"
#include "console/Indicators.h"
#include "console/PositionerKind.h"
#include "console/layout/Names.h"
#include "link/TorvaneSerial.h"
#include "panel/KeyNeeds.h"
#include "runtime/EventLoop.h"
#include "runtime/Operations.h"
#include "runtime/Platform.h"

namespace quillon {

/// What the workflows of the console work with. All of it outlives them.
struct ConsoleContext {
    ConsoleHost& console;
    TorvaneSerialV3_07_QLC1& link;
    ConsoleState& state;
    ConsoleTexts& texts;
    ConsoleEvents& events;
    Operations& operations; ///< a workflow adds its public operations here
    KeyNeeds& needs;        ///< and what its keys need
    RefusedValues& refused; ///< raised for a value that was not taken
    Desktop& desktop;
    EventLoop& loop;
    std::function<PositionerKind()> positionerToCalibrate;
    std::function<Refusal()> restartPc;
    std::string commandLine;
};

/// Screen operations shared by the workflows.
class ConsoleScreen {
public:
    explicit ConsoleScreen(ConsoleContext& context) : context_(context), console_(context.console) {}

    using Names = std::initializer_list<ConsoleControl>;
    void show(Names names) const { setVisible(names, true); }
    void hide(Names names) const { setVisible(names, false); }
    void show(Keys keys) const { setVisible(keys, true); }
    void hide(Keys keys) const { setVisible(keys, false); }
    /// Paints buttons in the colour of a button at rest, or of the active mode.
    void off(Names names) const;
    void on(Names names) const;

    /// Writes the prompt and shows it. Its rank says how it looks: Prompt, Good, Warning or Alarm.
    void prompt(Role rank, std::string_view text) const;
    /// The same without making it visible.
    void writePrompt(Role rank, std::string_view text) const;
    /// Empties the prompt and hides it.
    void clearPrompt() const;
    /// Shows the number of the error and locks the keys that an error locks; empty for none.
    void setError(std::string_view number) const;
    [[nodiscard]] bool errorOnShow() const;
    /// An error blocks the key: it does nothing, and is drawn so.
    [[nodiscard]] bool blocked(Key key) const { return console_[nameOf(key)].blocked(); }
    /// Empties the four values of the last exposure.
    void clearActualExposure() const;

private:
    void setVisible(Names names, bool visible) const;
    void setVisible(Keys keys, bool visible) const;

    ConsoleContext& context_;
    ConsoleHost& console_;
};

/// Asks the positioner of this installation which of the two positioner buttons to show.
void ShowCalibrationButton(ConsoleContext& context, bool visible);

} // namespace quillon
