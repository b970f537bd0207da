#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>

#include <QDateTime>
#include <QObject>
#include <QPointer>

#include "console/Indicators.h"
#include "qt/FormWindow.h"
#include "qt/SummaryView.h"
#include "runtime/Signal.h"
#include "ui/ControlHost.h"
#include "ui/Input.h"

namespace quillon {

class AccessibilityNotifier;
class InputRouter;
class Keypad;
class RecordsKey;
class StatusBar;

/// The window's mirror of the form: one widget a control. Changes are collected and shown together, once per
/// turn of the event loop, however many there were.
class Screen final : public QObject, public ChangeSink {
public:
    /// The indicators, where there are any, outlive the screen.
    Screen(ControlHost& form, Input& input, FormWindow::Requests requests,
           std::optional<Indicators> indicators = {});
    ~Screen() override;

    /// What the clock on the wall shows at the schedule's time zero.
    void setStart(QDateTime start);

    void controlChanged(Control& control) override;
    void controlAdded(Control& control) override;
    void controlRemoved(Control& control) override;

    /// Shows at once what is waiting to be shown.
    void flush();

    [[nodiscard]] FormWindow& window() { return *window_; }
    /// What is shown of the generator beside the controls; empty for a form without.
    [[nodiscard]] SummaryView* summary() const { return summary_; }
    /// Empty for a control that has no widget (yet).
    [[nodiscard]] ControlView* view(const Control& control) const;
    /// The foot of the window; empty where there are no indicators.
    [[nodiscard]] const StatusBar* bar() const { return bar_; }
    /// What a finger types with; empty where there are no indicators.
    [[nodiscard]] Keypad* keypad() const { return keypad_; }
    /// The key to the records; empty where there are no indicators.
    [[nodiscard]] RecordsKey* recordsKey() const { return records_; }
    [[nodiscard]] const ControlHost& form() const { return form_; }
    /// In the foot, for some seconds.
    void tell(const QString& words);
    /// What is no control has changed: a screen reader is told.
    void lookAgain();
    /// A finger, a key or a screen reader asks for the control: whether a press is handed on. Where nothing
    /// would come of it, the foot says why.
    [[nodiscard]] bool admits(const Control& control);
    /// It has to be held; and it was.
    void tellHold(const Control& control);
    void tellNothing();
    /// The foot says why nothing comes of a touch of the control; an empty reason says nothing.
    void tellWhy(const Control& control, const std::string& why);
    /// Told of each such reason.
    std::function<void(const Control& control, const std::string& why)> onRefused;
    /// It was touched beside its handle.
    void tellHandle(const Control& control);
    /// What a finger at a pixel of the window is on: the front-most visible control, or beside a key that is
    /// smaller than a finger the key. Where two are in reach it is the nearer one.
    [[nodiscard]] Control& controlAt(QPoint place) const;

private:
    void post();
    void connectSigns();
    void mark(Control& control);
    void markAll(Control& control);
    ControlView* make(Control& control);
    /// The console's view comes first, and on it what is no control.
    void makeGlance();
    void restack(const Control& container) const;
    [[nodiscard]] Control& frontMost(QPoint place) const;

    ControlHost& form_;
    Input& input_;
    std::optional<Indicators> indicators_;
    std::unique_ptr<FormWindow> window_;
    std::unique_ptr<InputRouter> router_;
    AccessibilityNotifier* news_; ///< the window's
    QPointer<SummaryView> summary_;
    QDateTime start_;
    StatusBar* bar_ = nullptr;      ///< the window's
    Keypad* keypad_ = nullptr;      ///< the window's
    RecordsKey* records_ = nullptr; ///< the window's
    std::unordered_map<const Control*, ControlView*> views_;
    std::unordered_set<Control*> changed_;
    std::unordered_set<Control*> reordered_;
    Signal<const Control*>::Connection pendingChanged_ = 0;
    RefusedValues::Connection refused_ = 0;
    Signal<>::Connection statusChanged_ = 0;
    Signal<>::Connection exposuresChanged_ = 0;
    Signal<>::Connection glanceChanged_ = 0;
    bool posted_ = false;
};

} // namespace quillon
