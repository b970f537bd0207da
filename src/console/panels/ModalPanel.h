#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "base/Colours.h"
#include "console/layout/PanelLayouts.h"
#include "runtime/Operations.h"
#include "ui/ControlHost.h"
#include "ui/ControlLock.h"
#include "ui/ScalingLayout.h"

namespace quillon {

/// A dialog that lies on the console. While it is shown nothing else on its host can be used, whatever is
/// enabled there meanwhile; the host is free again just before it reports. Its members are reached by name.
class ModalPanel : public ControlHost {
public:
    /// Told of the key that closed the panel: the event's name and its parameter, 0 where it has none.
    using Report = std::function<void(ModalPanel& panel, std::string_view event, std::int16_t parameter)>;

    /// A public text and the control whose caption it is, or several of them with a blank between.
    struct TextRow {
        std::string_view member;
        std::string_view controls;
    };

    void setReport(Report report) { report_ = std::move(report); }
    /// The panel was made visible: its host becomes modal, but for one control that is left to the operator.
    void UserControl_Show(std::string_view spared = {});

    [[nodiscard]] const Operations& operations() const { return operations_; }
    template <typename T> [[nodiscard]] T get(std::string_view member) const {
        return valueTo<T>(operations_.get(member));
    }
    void set(std::string_view member, const Value& value) const { operations_.set(member, value); }
    [[nodiscard]] std::span<const TextRow> texts() const { return texts_; }

protected:
    /// Makes the controls of the rows at their design size. `backColour` is the public name of the surface's
    /// colour.
    ModalPanel(Schedule& schedule, std::span<const ControlRow> rows, PanelSize size,
               std::string_view backColour, std::span<const TextRow> texts);

    /// A key that ends the dialog: results are set, the host's states come back, then the event is reported.
    struct ClosingKey {
        std::string_view name;
        std::string_view event;
        std::function<void()> results = {};
        std::function<std::int16_t()> parameter = {};
    };
    void closes(const ClosingKey& key);
    /// A number between 1 and a maximum that two keys move and a label shows.
    struct Stepper {
        std::string_view member;
        std::string_view label;
        std::string_view up;
        std::string_view down;
        std::int16_t maximum;
    };
    void addStepper(const Stepper& row, std::int16_t& value);

    void resized() override { layout_.apply(*this); }
    void removed() override { lock_.release(); }

    Operations operations_;
    Colour buttonOnColour_ = kActiveColour;
    Colour buttonOffColour_ = kNormalColour;

private:
    void paintButtons();

    std::span<const TextRow> texts_;
    ScalingLayout layout_;
    ControlLock lock_;
    Report report_;
};

} // namespace quillon
