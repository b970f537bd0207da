#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/Text.h"
#include "runtime/Schedule.h"
#include "ui/Control.h"
#include "ui/Phrases.h"
#include "ui/ReportAge.h"

namespace quillon {

/// A timer on a control: it has a name and a place in the enumeration, and nothing that can be seen.
class TimerControl final : public Control {
public:
    TimerControl(std::string_view name, Schedule& schedule)
        : Control(Kind::Timer, name), timer_(schedule, {}, this->name()) {}
    [[nodiscard]] Timer& timer() { return timer_; }
    [[nodiscard]] const Timer& timer() const { return timer_; }

private:
    Timer timer_;
};

class ControlHost;

/// Makes controls by class name, such as "Quillon.ctrSelWS". Names have no case.
class ControlFactory {
public:
    using Make = std::function<std::unique_ptr<ControlHost>()>;
    void add(std::string_view className, Make make);
    /// Fault 5 for a class that nobody added.
    [[nodiscard]] std::unique_ptr<ControlHost> make(std::string_view className) const;

private:
    std::map<std::string, Make, NoCaseLess> makers_;
};

/// A control that owns controls: the form, the console, the link control and the panels. All of them, at any
/// depth of containers, stand in one list in the order in which they were made; the walks of the system go
/// through it.
class ControlHost : public Control {
public:
    ControlHost(Kind kind, std::string_view name, Schedule& schedule);
    ~ControlHost() override;

    /// Makes a control on `container` (the surface when empty), in front of what lies there.
    Control& add(Kind kind, std::string_view name, std::optional<int> index = std::nullopt,
                 Control* container = nullptr);
    /// Makes a timer, stopped.
    Timer& addTimer(std::string_view name, int interval = 0);
    /// Takes a host as a control of this one.
    ControlHost& adopt(std::unique_ptr<ControlHost> child, Control* container = nullptr);

    /// Adds a control made by class name under a key: invisible, on the surface. Fault 5 when the class is
    /// unknown, 457 when the key is in use.
    ControlHost& addByClass(std::string_view className, std::string_view key, const ControlFactory& factory);
    /// The control that was added under the key; empty when there is none.
    [[nodiscard]] ControlHost* keyed(std::string_view key) const;
    /// Takes it off the screen at once; it may be running the handler that asks for this, so it lives until
    /// the present handler has ended. False when there is none.
    bool removeKeyed(std::string_view key);
    /// It is being removed from its host: releases the locks that it has on other controls.
    virtual void removed() {}

    /// Enumeration order.
    [[nodiscard]] const std::vector<std::unique_ptr<Control>>& controls() const { return controls_; }
    /// Empty when there is no such control.
    [[nodiscard]] Control* find(std::string_view name, std::optional<int> index = std::nullopt) const;
    /// Fault 5 when there is no such control.
    [[nodiscard]] Control& at(std::string_view name, std::optional<int> index = std::nullopt) const;
    [[nodiscard]] Control& operator[](std::string_view name) const { return at(name); }
    [[nodiscard]] Timer& timer(std::string_view name) const;
    /// All controls of a name with an index, by their index.
    [[nodiscard]] std::vector<Control*> all(std::string_view name) const;

    [[nodiscard]] Schedule& schedule() const { return schedule_; }

    /// Tells whether its controls are being written by a report. Not owned.
    void setReportAge(const ReportAge* age) { reportAge_ = age; }
    [[nodiscard]] const ReportAge* reportAge() const { return reportAge_; }
    /// Replacements for the words of its controls. Not owned; null for none.
    void setPhrases(const Phrases* phrases) { phrases_ = phrases; }
    [[nodiscard]] const Phrases* phrases() const { return phrases_; }
    /// A silence began: what is old now has to look so.
    void showAge();

    /// Only a form's counts: who is told of changes below it. Not owned.
    void setSink(ChangeSink* sink) { sink_ = sink; }

protected:
    [[nodiscard]] ChangeSink* sink() const override { return sink_ != nullptr ? sink_ : Control::sink(); }

private:
    struct Key {
        std::string name;
        int index; // -1 for none
    };
    struct KeyLess {
        using is_transparent = void;
        bool operator()(const Key& a, const Key& b) const;
    };

    Control& take(std::unique_ptr<Control> control, Control* container);

    Schedule& schedule_;
    std::vector<std::unique_ptr<Control>> controls_;
    std::map<Key, Control*, KeyLess> byName_;
    std::map<std::string, ControlHost*, NoCaseLess> byKey_;
    std::shared_ptr<std::vector<std::unique_ptr<Control>>> removed_;
    const ReportAge* reportAge_ = nullptr;
    const Phrases* phrases_ = nullptr;
    ChangeSink* sink_ = nullptr;
};

/// As a scenario calls the control: "TorvaneSerial.cmbWS(2)", or a form's or a user control's own name.
[[nodiscard]] std::string nameOf(const Control& control);

} // namespace quillon
