#pragma once

#include <array>
#include <string>

#include "model/GeneratorState.h"
#include "panel/layout/Names.h"

namespace quillon {

/// A technique field that a warning can make blink: its flag, the text that it shows, and the field.
struct WarnedField {
    bool GeneratorState::*flag;
    std::string GeneratorState::*text;
    PanelControl field;
};

// clang-format off
inline constexpr std::array kWarnedFields{
    WarnedField{&GeneratorState::m_WarnKVP, &GeneratorState::m_KVPDisplay, "txtKVp"},
    WarnedField{&GeneratorState::m_WarnMAS, &GeneratorState::m_MASDisplay, "txtMAS"},
    WarnedField{&GeneratorState::m_WarnMA,  &GeneratorState::m_MADisplay,  "txtMA"},
    WarnedField{&GeneratorState::m_WarnMS,  &GeneratorState::m_MSDisplay,  "txtMS"},
};
// clang-format on

/// The technique mode whose key can blink, and the key's index.
inline constexpr int kWarnedTechniqueMode = 3;

} // namespace quillon
