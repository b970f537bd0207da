#pragma once

#include <cstdint>
#include <string_view>
#include <type_traits>

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

/// The work of a key, and the mnemonic of the command with which it begins.
struct KeyAct {
    KeyWork work = nullptr;
    std::string_view asks = {};
    [[nodiscard]] constexpr KeyAct asking(std::string_view mnemonic) const { return {work, mnemonic}; }
    constexpr operator KeyWork() const { return work; }
};

/// Sends a command.
template <CommandId kId> void sendPlain(const PanelSubjects& subjects, int /*index*/) {
    subjects.context.commands.send(CommandFor<>::of<kId>());
}
template <CommandId kId> inline constexpr KeyAct sends{&sendPlain<kId>, kId.row().mnemonic};

/// Sends a command with the key's index.
template <CommandId kId> void sendIndex(const PanelSubjects& subjects, int index) {
    subjects.context.commands.send(CommandFor<std::int32_t>::of<kId>(), std::int32_t{index});
}
template <CommandId kId> inline constexpr KeyAct sendsIndex{&sendIndex<kId>, kId.row().mnemonic};

/// Sends the switch that is not set now; while Handshaking is off another command, which only toggles.
template <CommandId kSet, CommandId kToggle, bool (*kIsOn)(const GeneratorState& state)>
void sendSwitch(const PanelSubjects& subjects, int /*index*/) {
    if (subjects.context.link.Handshaking) {
        subjects.context.commands.send(CommandFor<bool>::of<kSet>(), !kIsOn(subjects.context.state));
    } else {
        subjects.context.commands.send(CommandFor<>::of<kToggle>());
    }
}
template <CommandId kSet, CommandId kToggle, bool (*kIsOn)(const GeneratorState& state)>
inline constexpr KeyAct switches{&sendSwitch<kSet, kToggle, kIsOn>, kSet.row().mnemonic};

/// Does what a subject does.
template <auto kMember> void doMember(const PanelSubjects& subjects, int /*index*/) {
    if constexpr (std::is_same_v<decltype(kMember), void (Fluoroscopy::*)()>) {
        (subjects.fluoroscopy.*kMember)();
    } else {
        (subjects.service.*kMember)();
    }
}
template <auto kMember> inline constexpr KeyAct does{&doMember<kMember>};

} // namespace quillon
