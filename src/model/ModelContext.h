#pragma once

#include <string>

#include "link/LinkEvents.h"
#include "link/LinkSettings.h"
#include "link/LinkState.h"
#include "link/MessageDecoder.h"
#include "link/SendPath.h"
#include "link/StatusPoll.h"
#include "model/GeneratorState.h"
#include "model/PanelRoutines.h"
#include "panel/layout/Names.h"
#include "runtime/Operations.h"

namespace quillon {

class Commands;

/// What each subject of the generator model works with. All of it outlives the subjects.
struct ModelContext {
    LinkState& link;
    GeneratorState& state;
    LinkSettings& settings;
    InstallationFacts& facts;
    LinkEvents& events;
    SendPath& send;
    StatusPoll& poll;
    Commands& commands;
    MessageDecoder& decoder; ///< a subject binds its handlers here
    Operations& operations;  ///< and adds its operations and properties here
    PanelHost& panel;        ///< the fields that show the values
    PanelRoutines& routines;
    const bool& fromGUI; ///< the panel is embedded in the service console
    const bool& TempUserMode;
    std::string commandLine;
};

} // namespace quillon
