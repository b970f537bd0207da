#pragma once

#include <optional>
#include <vector>

#include <QWidget>

#include "console/Indicators.h"
#include "qt/Look.h"
#include "ui/Control.h"
#include "ui/Input.h"

namespace quillon {

/// The widget of one control. It shows what the control's properties say and decides nothing; the operator's
/// hand reaches the control through InputRouter and never through the widget, typed text excepted.
class ControlView : public QWidget {
public:
    ControlView(Control& control, QWidget* parent, const Indicators* indicators = nullptr);

    [[nodiscard]] Control& control() const { return control_; }
    /// Takes the control's properties over and asks to be painted.
    virtual void sync();
    /// What it shows beside its control's own properties may have changed: asks to be painted where it has.
    virtual void reconsider() {}
    /// The text on it as it is painted; empty where there is none.
    [[nodiscard]] virtual std::optional<Words> words() const { return std::nullopt; }
    /// What the window writes beside that, smaller.
    [[nodiscard]] virtual std::vector<Words> notes() const { return {}; }
    /// The child that takes typed text; empty where nothing can be typed.
    [[nodiscard]] virtual QWidget* editor() const { return nullptr; }

    /// A finger or the Space key is on it.
    virtual void setPressed(bool pressed);
    [[nodiscard]] bool pressed() const { return pressed_; }
    /// The keyboard is on it.
    void setFocusMark(bool mark);
    [[nodiscard]] bool focusMark() const { return focusMark_; }
    /// What is shown beside the controls; empty where nothing of it is known.
    [[nodiscard]] const Indicators* indicators() const { return indicators_; }

protected:
    /// What it holds was so before a silence, or before what was just sent, and was not reported since.
    [[nodiscard]] bool holdsOld() const;
    /// Over the background of a plate whose value is old.
    static void paintOld(QPainter& painter, const QRectF& place);
    /// Where keys, fields and lists draw their plate: the same inset for all, so that their edges line up.
    [[nodiscard]] QRectF facePlace() const { return QRectF(rect()).adjusted(1, 1, -1, -1); }
    void paintFocusMark(QPainter& painter) const;

private:
    Control& control_;
    const Indicators* indicators_;
    bool pressed_ = false;
    bool focusMark_ = false;
};

/// Makes the widget for a control; empty for a kind that has nothing to show.
[[nodiscard]] ControlView* makeView(Control& control, Input& input, const Indicators* indicators,
                                    QWidget* parent);

} // namespace quillon
