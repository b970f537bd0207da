#include "qt/LabelView.h"

#include <algorithm>
#include <array>
#include <span>
#include <string_view>

#include <QFontMetrics>

#include "qt/Convert.h"
#include "qt/Look.h"

namespace quillon {

namespace {

constexpr bool startsWithOneOf(std::string_view name, std::span<const std::string_view> prefixes) {
    return std::any_of(prefixes.begin(), prefixes.end(),
                       [name](std::string_view prefix) { return name.starts_with(prefix); });
}

// Labels that are called like plain texts and show a value.
constexpr auto kValues =
    std::to_array<std::string_view>({"txt", "lblAct", "lblTube1", "lblTube2", "lblTube3", "lblFluoro",
                                     "LblParam", "LblValue", "lblWS", "lblAutocalParameter"});
constexpr auto kTitles = std::to_array<std::string_view>(
    {"lblQuillonConsole", "lblTitle", "lblExposureCounters", "lblSelect", "myCaption"});
constexpr auto kParagraphs =
    std::to_array<std::string_view>({"lblErrorDescription", "lblSoftwareVersion", "lblHelp"});

/// Two labels that are one phrase meet in the middle.
constexpr std::string_view kPhraseStart = "lblFlHighDose";
constexpr std::string_view kPhraseEnd = "Label1";

Qt::Alignment sideOf(std::string_view name) {
    if (name == kPhraseStart) {
        return Qt::AlignRight;
    }
    return name == kPhraseEnd || startsWithOneOf(name, kParagraphs) ? Qt::AlignLeft : Qt::AlignHCenter;
}

} // namespace

LabelView::LabelView(Control& control, QWidget* parent)
    : ControlView(control, parent), role_(roleOf(control)) {}

LabelView::Role LabelView::roleOf(const Control& control) {
    const std::string& name = control.name();
    if (control.lamp()) {
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

bool LabelView::hasPlate() const {
    return role_ == Role::Value || (role_ == Role::Lamp && !control().caption().empty());
}

QColor LabelView::ground() const {
    const bool own = control().backColour() != kNormalColour;
    if (!hasPlate()) {
        return own ? screenColour(control().backColour()) : groundColour(control());
    }
    if (own && control().backColour() != kWindowColour) {
        return screenColour(control().backColour());
    }
    if (looksDisabled()) {
        return groundColour(control());
    }
    return QColor::fromRgb(role_ == Role::Lamp ? kLampFace : kField);
}

std::optional<Words> LabelView::words() const {
    Words words{rect(),
                toQtLines(control().caption()).trimmed(),
                consoleFont(control().fontSize(), role_ != Role::Text),
                QColor::fromRgb(looksDisabled()        ? kMutedInk
                                : role_ == Role::Alarm ? kAlarmInk
                                                       : kInk),
                ground(),
                Qt::AlignVCenter | sideOf(control().name())};
    if (hasPlate()) {
        words.place.adjust(4, 1, -4, -1);
    } else if (role_ == Role::Prompt) {
        words.place.setLeft(10);
    } else {
        // Half a blank of space where a phrase is parted.
        const int gap = QFontMetrics(words.font).horizontalAdvance(QLatin1Char(' ')) / 2;
        words.place.adjust(control().name() == kPhraseEnd ? gap : 0, 0,
                           control().name() == kPhraseStart ? -gap : 0, 0);
    }
    return words;
}

void LabelView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    if (hasPlate()) {
        const bool lamp = role_ == Role::Lamp;
        paintPlate(painter, facePlace(), ground(),
                   QColor::fromRgb(lamp          ? kInk
                                   : isEnabled() ? kEdge
                                                 : kFaintEdge),
                   lamp && height() >= 20 ? 2 : 1, lamp ? 3 : 2);
    } else {
        painter.fillRect(rect(), ground());
        if (role_ == Role::Prompt && !control().caption().empty()) {
            painter.fillRect(QRect(0, 0, 4, height()), QColor::fromRgb(kStrongEdge));
        }
    }
    paintWords(painter, *words());
}

} // namespace quillon
