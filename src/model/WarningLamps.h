#pragma once

#include <array>
#include <string_view>

#include "link/LinkEvents.h"
#include "model/GeneratorState.h"
#include "panel/layout/Names.h"

namespace quillon {

/// A condition that lasts, and the label that stands for it.
struct WarningLamp {
    std::string_view handler;
    PanelControl label;
    std::string_view caption;
    Signal<bool> LinkEvents::*event;
    bool GeneratorState::*member = nullptr; ///< where the state is kept besides
    bool darkOnceConfirmed = false;         ///< not lit in an autocalibration that the operator confirmed
};

// clang-format off
inline constexpr std::array kWarningLamps{
    WarningLamp{"fmessWARNINGDoorOpen",     "txtDoorOpenWarning",          "Door",       &LinkEvents::WARNINGDoorOpen,
                &GeneratorState::m_DoorOpen},
    WarningLamp{"fmessWARNINGGenOverload",  "txtGeneratorOverloadWarning", "Gen. Over.", &LinkEvents::WARNINGGenOverload},
    WarningLamp{"fmessWARNINGTubeOverload", "txtTubeOverloadWarning",      "Tube Over.", &LinkEvents::WARNINGTubeOverload,
                nullptr, true},
    WarningLamp{"fmessWARNINGRotor",        "txtRotorWarning",             "Rotor",      &LinkEvents::WARNINGRotor},
    WarningLamp{"fmessWARNINGOverheat",     "txtOverheatWarning",          "Overheat",   &LinkEvents::WARNINGOverheat},
    WarningLamp{"fmessWARNINGTechnique",    "txtTechniqueWarning",         "Technique",  &LinkEvents::WARNINGTechnique},
    WarningLamp{"fmessWARNINGCollimator",   "txtCollimatorWarning",        "Collimator", &LinkEvents::WARNINGCollimator},
};
// clang-format on

} // namespace quillon
