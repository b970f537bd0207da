#pragma once

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/GeneratorState.h"

namespace quillon {

/// How a setting is told to a person.
enum class SettingKind : std::uint8_t { Number, Switch, WorkingMode, Synchronisation, FocalSpot };

/// A setting: its name in facts, which is that of its message, and what it is measured in.
struct SettingRow {
    std::string_view name;
    SettingKind kind = SettingKind::Number;
    std::string_view unit = {};
};

/// Those of a workstation, which are reported in Configuration; and those that are reported in normal
/// operation.
[[nodiscard]] std::span<const SettingRow> configurationRows();
[[nodiscard]] std::span<const SettingRow> readyRows();

using NamedValues = std::vector<std::pair<std::string, std::string>>;

/// What a message of Configuration has reported. The mirror has taken it already.
[[nodiscard]] NamedValues configured(std::string_view key, std::string_view value,
                                     const GeneratorState& mirror);
/// The same in normal operation.
[[nodiscard]] NamedValues readySettings(std::string_view key, std::string_view value,
                                        const GeneratorState& mirror);

} // namespace quillon
