#include "ui/ControlTable.h"

#include "base/Fault.h"
#include "base/Numbers.h"

namespace quillon {

IndexedName indexedName(std::string_view text) {
    const auto open = text.find('(');
    if (open == std::string_view::npos || !text.ends_with(')')) {
        return {text, -1};
    }
    const std::string_view index = text.substr(open + 1, text.size() - open - 2);
    if (index.empty() || index.find_first_not_of("0123456789") != std::string_view::npos) {
        return {text, -1};
    }
    return {text.substr(0, open), toInt16(index)};
}

void addControls(ControlHost& host, std::span<const ControlRow> rows) {
    for (const ControlRow& row : rows) {
        Control* container = nullptr;
        if (!row.container.empty()) {
            const auto [name, index] = indexedName(row.container);
            container = &host.at(name, index < 0 ? std::nullopt : std::optional(index));
        }
        Control& control =
            host.add(row.kind, row.name, row.index < 0 ? std::nullopt : std::optional(row.index), container);
        if (control.has(Property::Geometry)) {
            control.setPlace(row.place);
            control.setVisible(row.visible);
        }
        if (control.has(Property::Font)) {
            control.setFontSize(row.fontSize);
        }
        if (control.has(Property::Caption)) {
            control.setCaption(row.caption);
        } else if (control.has(Property::Text) && !control.has(Property::Items)) {
            control.setText(row.caption);
        }
        control.setRole(row.role);
        control.setTextSide(row.side);
        control.setHoldTime(row.hold);
        control.setLook(row.look);
        if (control.has(Property::Art)) {
            control.setArt(row.art);
        }
    }
}

} // namespace quillon
