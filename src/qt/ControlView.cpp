#include "qt/ControlView.h"

#include <QAccessible>

#include "console/PendingKeys.h"
#include "qt/Convert.h"
#include "qt/KeyView.h"
#include "qt/LabelView.h"
#include "qt/ListView.h"
#include "qt/Look.h"
#include "qt/SliderView.h"
#include "qt/SurfaceViews.h"
#include "qt/TextView.h"

namespace quillon {

ControlView::ControlView(Control& control, QWidget* parent, const Indicators* indicators)
    : control_(control), indicators_(indicators) {
    // Only when it is known as a view: on a disabled background a screen reader is told of it at once.
    setParent(parent);
    setFocusPolicy(Qt::NoFocus);
}

void ControlView::sync() {
    setGeometry(toPixels(control_.place()));
    if (control_.has(Property::Enabled)) {
        setEnabled(control_.enabled());
    }
    if (control_.has(Property::ToolTip)) {
        setToolTip(toQtLines(control_.toolTip()));
    }
    setVisible(control_.visible());
    update();
}

void ControlView::setPressed(bool pressed) {
    if (pressed_ != pressed) {
        pressed_ = pressed;
        update();
    }
}

void ControlView::setFocusMark(bool mark) {
    if (focusMark_ != mark) {
        focusMark_ = mark;
        update();
        if (mark && QAccessible::isActive()) {
            QAccessibleEvent event(editor() != nullptr ? editor() : this, QAccessible::Focus);
            QAccessible::updateAccessibility(&event);
        }
    }
}

bool ControlView::holdsOld() const {
    return control_.old() || (indicators_ != nullptr && indicators_->pending.outdated(control_));
}

void ControlView::paintOld(QPainter& painter, const QRectF& place) {
    painter.fillRect(place, QBrush(QColor::fromRgb(kOldHatch), Qt::BDiagPattern));
}

void ControlView::paintFocusMark(QPainter& painter) const {
    if (focusMark_) {
        paintPlate(painter, QRectF(rect()).adjusted(2, 2, -2, -2), Qt::transparent,
                   QColor::fromRgb(kFocusRing), 2, 3);
    }
}

ControlView* makeView(Control& control, Input& input, const Indicators* indicators, QWidget* parent) {
    switch (control.kind()) {
    case Kind::Form:
    case Kind::User:
        return new SurfaceView(control, parent);
    case Kind::Frame:
        return new FrameView(control, parent, indicators);
    case Kind::Button:
        return new KeyView(control, parent, indicators);
    case Kind::Label:
        return new LabelView(control, parent, indicators);
    case Kind::TextBox:
        return new TextView(control, input, parent, indicators);
    case Kind::List:
        return new ListView(control, input, parent);
    case Kind::Slider:
        return new SliderView(control, parent, indicators);
    case Kind::Picture:
        return new PictureView(control, parent, indicators);
    case Kind::Timer:
    case Kind::Images:
        break;
    }
    return nullptr;
}

} // namespace quillon
