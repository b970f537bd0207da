#include "qt/LabelView.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

namespace {

constexpr bool startsWithOneOf(std::string_view name, std::span<const std::string_view> prefixes) {
    return std::any_of(prefixes.begin(), prefixes.end(),
                       [name](std::string_view prefix) { return name.starts_with(prefix); });
}

// Labels that are called like plain texts and show a value.
constexpr auto kValues = std::to_array<std::string_view>(
    {"txt", "lblAct", "lblTube", "lblFluoro", "LblParam", "LblValue", "lblWS", "lblAutocalParameter"});
constexpr auto kTitles = std::to_array<std::string_view>(
    {"lblQuillonConsole", "lblTitle", "lblExposureCounters", "lblSelectWS", "myCaption"});
constexpr auto kParagraphs =
    std::to_array<std::string_view>({"lblErrorDescription", "lblSoftwareVersion", "lblHelp"});

} // namespace

LabelView::LabelView(Control& control, QWidget* parent)
    : ControlView(control, parent), role_(roleOf(control)) {}

LabelView::Role LabelView::roleOf(const Control& control) {
    const std::string& name = control.name();
    if ((name.starts_with("txt") && name.ends_with("Warning")) || name == "lblWarning") {
        return Role::Lamp;
    }
    if (startsWithOneOf(name, kValues)) {
        return Role::Value;
    }
    if (name.starts_with("lblError")) {
        return Role::Alarm;
    }
    if (name == "lblHelp") {
        return Role::Prompt;
    }
    return startsWithOneOf(name, kTitles) ? Role::Title : Role::Text;
}

void LabelView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    const QString text = toQtLines(control().caption()).trimmed();
    if (role_ == Role::Value || (role_ == Role::Lamp && !text.isEmpty())) {
        paintField(painter, text);
        return;
    }
    painter.fillRect(rect(), control().backColour() == kNormalColour ? groundColour(control())
                                                                     : screenColour(control().backColour()));
    const QColor ink = QColor::fromRgb(role_ == Role::Alarm ? kAlarmInk : kInk);
    painter.setPen(isEnabled() ? ink : QColor::fromRgb(kMutedInk));
    QRect place = rect();
    if (role_ == Role::Prompt && !text.isEmpty()) {
        painter.fillRect(QRect(0, 0, 4, height()), QColor::fromRgb(kStrongEdge));
        place.setLeft(10);
    }
    const bool paragraph = startsWithOneOf(control().name(), kParagraphs);
    paintText(painter, place, text, consoleFont(control().fontSize(), role_ != Role::Text),
              Qt::AlignVCenter | (paragraph ? Qt::AlignLeft : Qt::AlignHCenter));
}

void LabelView::paintField(QPainter& painter, const QString& text) const {
    const bool lamp = role_ == Role::Lamp;
    const bool marked = control().backColour() != kNormalColour && control().backColour() != kWindowColour;
    QColor fill = QColor::fromRgb(lamp ? kLampFace : kField);
    if (marked) {
        fill = screenColour(control().backColour());
    } else if (!isEnabled()) {
        fill = groundColour(control());
    }
    paintPlate(painter, rect(), fill, QColor::fromRgb(lamp ? kInk : kEdge), lamp ? 2 : 1, lamp ? 3 : 2);
    painter.setPen(QColor::fromRgb(isEnabled() ? kInk : kMutedInk));
    paintText(painter, rect().adjusted(4, 1, -4, -1), text, consoleFont(control().fontSize(), true),
              Qt::AlignCenter);
}

} // namespace quillon
