#include "FingerStyle.h"

#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QPainter>
#include <QStyleOption>

#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

namespace {

constexpr double kFinger = 9.3; // mm
constexpr double kLetter = 2.9;
constexpr int kSmallestLetter = 10;
constexpr int kMiddle = 128; // between dark and light

void paintRing(QPainter& painter, const QRectF& place, QRgb colour) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor::fromRgb(colour), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(place.adjusted(1, 1, -1, -1), 3, 3);
    painter.restore();
}

} // namespace

PanelSizes::PanelSizes(QSize screen)
    : finger(static_cast<int>(std::ceil(panelPixels(kFinger, screen)))),
      text(std::max(kSmallestLetter, static_cast<int>(std::lround(panelPixels(kLetter, screen))))) {}

FingerStyle::FingerStyle(const PanelSizes& sizes) : QProxyStyle(QStringLiteral("fusion")), sizes_(sizes) {}

void FingerStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    if (element == PE_FrameFocusRect) {
        const auto* focus = qstyleoption_cast<const QStyleOptionFocusRect*>(option);
        const bool dark = focus != nullptr && focus->backgroundColor.lightness() < kMiddle;
        paintRing(*painter, option->rect, dark ? kFace : kFocusRing);
        return;
    }
    if (element != PE_PanelButtonCommand) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    const bool on = option->state.testFlag(State_On);
    const bool down = option->state.testFlag(State_Sunken);
    const QRectF place(option->rect);
    if (!option->state.testFlag(State_Enabled)) {
        paintPlate(*painter, place.adjusted(0, 0, 0, -2), QColor::fromRgb(kSurface),
                   QColor::fromRgb(kFaintEdge), 1);
        return;
    }
    paintPlate(*painter, place,
               QColor::fromRgb(down ? kStrongEdge
                               : on ? kActiveMark
                                    : kEdge),
               Qt::transparent, 0);
    paintPlate(*painter, place.adjusted(1, down ? 3 : 1, -1, down ? -1 : -3),
               QColor::fromRgb(down ? kPressedFace
                               : on ? kLampFace
                                    : kFace),
               Qt::transparent, 0, 3);
    if (option->state.testFlag(State_HasFocus)) {
        paintRing(*painter, place, kFocusRing);
    }
}

int FingerStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_ScrollBarExtent:
        return sizes_.finger * 2 / 3;
    case PM_ScrollBarSliderMin:
        return sizes_.finger;
    case PM_ButtonShiftHorizontal:
        return 0;
    case PM_HeaderMargin:
    case PM_FocusFrameHMargin: // beside what stands in a cell
        return sizes_.text / 2;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int FingerStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* data) const {
    switch (hint) {
    case SH_UnderlineShortcut: // a letter that presses a key unasked belongs to no key here
        return 0;
    case SH_ItemView_ActivateItemOnSingleClick:
        return 1;
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

QSize FingerStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                    const QWidget* widget) const {
    QSize result = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_PushButton) {
        return result.expandedTo({sizes_.finger * 2, sizes_.finger});
    }
    if (type == CT_ItemViewItem) {
        return result.expandedTo({0, sizes_.finger}) + QSize(sizes_.text, 0);
    }
    if (type == CT_HeaderSection) {
        return result + QSize(0, sizes_.text / 2);
    }
    return result;
}

void applyFingerStyle(const PanelSizes& sizes) {
    QApplication::setStyle(new FingerStyle(sizes));
    QApplication::setPalette(consolePalette());
    QFont font = consoleFont(1);
    font.setPixelSize(sizes.text);
    QApplication::setFont(font);
}

} // namespace quillon
