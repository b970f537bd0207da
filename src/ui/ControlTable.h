#pragma once

#include <span>
#include <string_view>

#include "ui/ControlHost.h"

namespace quillon {

/// One control of a screen's table. `index` -1 means none; `container` names the frame it lies on, such as
/// "fraMainMenuItem(0)", empty for the surface; `art` is a picture's name; `lamp` as in Control.
struct ControlRow {
    Kind kind;
    std::string_view name;
    int index;
    std::string_view container;
    Place place;
    double fontSize;
    std::string_view caption;
    bool visible = true;
    std::string_view art = {};
    bool lamp = false;
};

/// The row of a lamp.
constexpr ControlRow lamp(ControlRow row) {
    row.lamp = true;
    return row;
}

/// Makes the controls of a table on the host, in the table's order. A container must stand above what it
/// holds.
void addControls(ControlHost& host, std::span<const ControlRow> rows);

/// Splits "name(2)" into name and index; the index is -1 when there is none.
struct IndexedName {
    std::string_view name;
    int index;
};
[[nodiscard]] IndexedName indexedName(std::string_view text);

} // namespace quillon
