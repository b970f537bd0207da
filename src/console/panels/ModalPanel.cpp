#include "console/panels/ModalPanel.h"

#include <utility>
#include <vector>

#include "base/Numbers.h"

namespace quillon {

ModalPanel::ModalPanel(Schedule& schedule, std::span<const ControlRow> rows, PanelSize size,
                       std::string_view backColour, std::span<const TextRow> texts)
    : ControlHost(Kind::User, "", schedule), texts_(texts) {
    setPlace({0, 0, size.width, size.height});
    setVisible(false);
    addControls(*this, rows);
    layout_.record(*this, size.width, size.height);
    for (const auto& control : controls()) {
        if (control->kind() == Kind::Button) {
            control->setTag("OFF");
        }
    }
    paintButtons();
    operations_.addWriteOnly(backColour, [this](Colour colour) { setBackColour(colour); });
    operations_.addWriteOnly("ButtonOffColor", [this](Colour colour) {
        buttonOffColour_ = colour;
        paintButtons();
    });
    operations_.addWriteOnly("ButtonOnColor", [this](Colour colour) { buttonOnColour_ = colour; });
    for (const TextRow& row : texts) {
        operations_.addWriteOnly(row.member, [this, controls = row.controls](std::string_view text) {
            for (const std::string_view name : split(controls, " ")) {
                at(name).setCaption(text);
            }
        });
    }
}

void ModalPanel::UserControl_Show(std::string_view spared) {
    std::vector<Control*> behind;
    for (const auto& control : host()->controls()) {
        if (control.get() != this && control->has(Property::Geometry) && control->name() != spared) {
            behind.push_back(control.get());
        }
    }
    lock_ = ControlLock(std::move(behind));
}

void ModalPanel::paintButtons() {
    for (const auto& control : controls()) {
        if (control->kind() == Kind::Button) {
            control->setBackColour(buttonOffColour_);
        }
    }
}

void ModalPanel::closes(const ClosingKey& key) {
    at(key.name).on.click = [this, key] {
        if (key.results) {
            key.results();
        }
        lock_.release();
        // The console takes the panel away in there, so nothing may follow.
        if (const Report report = report_) {
            report(*this, key.event, key.parameter ? key.parameter() : std::int16_t{0});
        }
    };
}

void ModalPanel::addStepper(const Stepper& row, std::int16_t& value) {
    Control& label = at(row.label);
    const auto write = [&label, &value](std::int16_t number) {
        value = number;
        label.setCaption(decimalText(number));
    };
    write(1);
    operations_.addProperty(
        row.member, [&value] { return value; }, write);
    at(row.up).on.click = [&value, write, maximum = row.maximum] {
        if (value < maximum) {
            write(static_cast<std::int16_t>(value + 1));
        }
    };
    at(row.down).on.click = [&value, write] {
        if (value > 1) {
            write(static_cast<std::int16_t>(value - 1));
        }
    };
}

} // namespace quillon
