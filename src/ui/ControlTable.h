#pragma once

#include <span>
#include <string_view>

#include "ui/ControlHost.h"

namespace quillon {

/// One control of a screen's table. `index` -1 means none; `container` names the frame it lies on, such as
/// "fraMainMenuItem(0)", empty for the surface; `art` is a picture's name; `role`, `side`, `hold` and `look`
/// as in Control.
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
    Role role = Role::Plain;
    TextSide side = TextSide::Middle;
    int hold = 0; ///< ms
    Look look = Look::Plain;
};

/// The row with another role or side.
constexpr ControlRow withRole(ControlRow row, Role role) {
    row.role = role;
    return row;
}
constexpr ControlRow withSide(ControlRow row, TextSide side) {
    row.side = side;
    return row;
}
constexpr ControlRow lamp(const ControlRow& row) {
    return withRole(row, Role::Lamp);
}
constexpr ControlRow field(const ControlRow& row) {
    return withRole(row, Role::Field);
}
constexpr ControlRow title(const ControlRow& row) {
    return withRole(row, Role::Title);
}
constexpr ControlRow radiation(const ControlRow& row) {
    return withRole(row, Role::Radiation);
}
constexpr ControlRow declines(const ControlRow& row) {
    return withRole(row, Role::Decline);
}
constexpr ControlRow toggle(const ControlRow& row) {
    return withRole(row, Role::Toggle);
}
constexpr ControlRow choice(const ControlRow& row) {
    return withRole(row, Role::Choice);
}
/// A key that has to be held, for so many ms.
constexpr ControlRow heldFor(int hold, ControlRow row) {
    row.hold = hold;
    return row;
}
constexpr ControlRow offWhenEmpty(ControlRow row) {
    row.look = Look::OffWhenEmpty;
    return row;
}
constexpr ControlRow whileOffered(ControlRow row) {
    row.look = Look::WhileOffered;
    return row;
}
constexpr ControlRow warning(const ControlRow& row) {
    return withRole(row, Role::Warning);
}
constexpr ControlRow interlock(const ControlRow& row) {
    return withRole(row, Role::Interlock);
}
constexpr ControlRow alarm(const ControlRow& row) {
    return withRole(row, Role::Alarm);
}
constexpr ControlRow left(const ControlRow& row) {
    return withSide(row, TextSide::Left);
}
constexpr ControlRow prompt(const ControlRow& row) {
    return left(withRole(row, Role::Prompt));
}
constexpr ControlRow phraseStart(const ControlRow& row) {
    return withSide(row, TextSide::PhraseStart);
}
constexpr ControlRow phraseEnd(const ControlRow& row) {
    return withSide(row, TextSide::PhraseEnd);
}

/// A timer of a screen. An interval of 0 says that whoever starts it sets one first.
struct TimerRow {
    std::string_view name;
    int interval;
};

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
