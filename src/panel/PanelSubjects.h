#pragma once

#include <cstdint>

#include "model/Commands.h"
#include "model/ErrorsAndWarnings.h"
#include "model/ExposureControl.h"
#include "model/Fluoroscopy.h"
#include "model/Service.h"

namespace quillon {

/// What the panel's keys work on.
struct PanelSubjects {
    ModelContext& context;
    Service& service;
    ErrorsAndWarnings& errors;
    ExposureControl& exposureControl;
    Fluoroscopy& fluoroscopy;
};

/// What a key does; `index` is its element, 0 for a key that is alone.
using KeyWork = void (*)(const PanelSubjects& subjects, int index);

/// Sends a command.
template <CommandId kId> void sends(const PanelSubjects& subjects, int /*index*/) {
    subjects.context.commands.send(CommandFor<>::of<kId>());
}

/// Sends a command with the key's index.
template <CommandId kId> void sendsIndex(const PanelSubjects& subjects, int index) {
    subjects.context.commands.send(CommandFor<std::int32_t>::of<kId>(), std::int32_t{index});
}

/// Sends the switch that is not set now; while Handshaking is off another command, which only toggles.
template <CommandId kSet, CommandId kToggle, bool (*kIsOn)(const GeneratorState& state)>
void switches(const PanelSubjects& subjects, int /*index*/) {
    if (subjects.context.link.Handshaking) {
        subjects.context.commands.send(CommandFor<bool>::of<kSet>(), !kIsOn(subjects.context.state));
    } else {
        subjects.context.commands.send(CommandFor<>::of<kToggle>());
    }
}

template <void (Fluoroscopy::*kMember)()> void does(const PanelSubjects& subjects, int /*index*/) {
    (subjects.fluoroscopy.*kMember)();
}
template <void (Service::*kMember)()> void does(const PanelSubjects& subjects, int /*index*/) {
    (subjects.service.*kMember)();
}

} // namespace quillon
