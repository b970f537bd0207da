#pragma once

#include <span>
#include <string_view>

#include "base/Colours.h"
#include "model/ModelContext.h"

namespace quillon {

/// A switch that the generator reports as 0 or another number and that a key shows by its colour.
struct SwitchRow {
    std::string_view handler;
    bool GeneratorState::*member;
    Signal<bool> LinkEvents::*event;
    PanelControl key;
    Colour on = kActiveColour;
    Colour off = kNormalColour;
};

/// Binds a handler for each switch; it acts on a change and lets a repeated report pass. The rows must
/// outlive the decoder.
void bindSwitches(ModelContext& context, std::span<const SwitchRow> rows);

/// Gives a key the colour of a state.
inline void showState(Control& key, bool on) {
    key.setBackColour(on ? kActiveColour : kNormalColour);
}

/// The same state was reported again: nothing changes but its age.
inline void confirmState(Control& key) {
    key.setBackColour(key.backColour());
}

} // namespace quillon
