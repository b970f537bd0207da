#pragma once

#include <string_view>

#include "ui/ControlTable.h"

namespace quillon {

/// The key that steps a value up, drawn as an arrow.
constexpr ControlRow upKey(std::string_view name, std::string_view container, Place place) {
    return {Kind::Button, name, -1, container, place, 10, "", true, "up"};
}

/// Its counterpart.
constexpr ControlRow downKey(std::string_view name, std::string_view container, Place place) {
    return {Kind::Button, name, -1, container, place, 10, "", true, "down"};
}

} // namespace quillon
