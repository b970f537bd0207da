#include "console/OrlaPositioner.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "base/Fault.h"
#include "base/Numbers.h"
#include "link/OutboundTable.h"
#include "model/Characters.h"

namespace quillon {

namespace {

struct AxisRow {
    ConsoleControl button;
    ConsoleControl frame;
};

/// The range of a position's value.
enum class Accepts : std::uint8_t { Zero, AboveZero, ZeroAndAbove };

struct PositionRow {
    std::string_view code; ///< axis and sign, as in the message
    Accepts accepts;
    ConsoleControl setKey;
    ConsoleControl valueBox;
    ConsoleControl readingBox;
};

// clang-format off
constexpr std::array kAxes{
    AxisRow{"cmdLongPosition",  "fraLong"},
    AxisRow{"cmdTrayPosition",  "fraTray"},
    AxisRow{"cmdAlfaTubeAngle", "fraAlfa"},
    AxisRow{"cmdBetaTubeAngle", "fraBeta"},
    AxisRow{"cmdSID",           "fraSID"},
};

constexpr std::array kPositions{
    PositionRow{"PS+", Accepts::AboveZero,    "cmdSetOTCLongPlus",   "txtOTCLongPlus",   "txtOTCLongPlusADC"},
    PositionRow{"PS+", Accepts::Zero,         "cmdSetOTCLongZero",   "txtOTCLongZero",   "txtOTCLongZeroADC"},
    PositionRow{"PS-", Accepts::AboveZero,    "cmdSetOTCLongMinus",  "txtOTCLongMinus",  "txtOTCLongMinusADC"},
    PositionRow{"PB+", Accepts::AboveZero,    "cmdSetOTCTrayPlus",   "txtOTCTrayPlus",   "txtOTCTrayPlusADC"},
    PositionRow{"PB+", Accepts::Zero,         "cmdSetOTCTrayZero",   "txtOTCTrayZero",   "txtOTCTrayZeroADC"},
    PositionRow{"PB-", Accepts::AboveZero,    "cmdSetOTCTrayMinus",  "txtOTCTrayMinus",  "txtOTCTrayMinusADC"},
    PositionRow{"AA+", Accepts::AboveZero,    "cmdSetTubeAlfaPlus",  "txtTubeAlfaPlus",  "txtTubeAlfaPlusADC"},
    PositionRow{"AA+", Accepts::Zero,         "cmdSetTubeAlfaZero",  "txtTubeAlfaZero",  "txtTubeAlfaZeroADC"},
    PositionRow{"AA-", Accepts::AboveZero,    "cmdSetTubeAlfaMinus", "txtTubeAlfaMinus", "txtTubeAlfaMinusADC"},
    PositionRow{"AB+", Accepts::AboveZero,    "cmdSetTubeBetaPlus",  "txtTubeBetaPlus",  "txtTubeBetaPlusADC"},
    PositionRow{"AB+", Accepts::Zero,         "cmdSetTubeBetaZero",  "txtTubeBetaZero",  "txtTubeBetaZeroADC"},
    PositionRow{"AB-", Accepts::AboveZero,    "cmdSetTubeBetaMinus", "txtTubeBetaMinus", "txtTubeBetaMinusADC"},
    PositionRow{"SI+", Accepts::AboveZero,    "cmdSetSIDPlus",       "txtSIDPlus",       "txtSIDPlusADC"},
    PositionRow{"SI-", Accepts::ZeroAndAbove, "cmdSetSIDMinus",      "txtSIDMinus",      "txtSIDMinusADC"},
};
// clang-format on

constexpr std::string_view kMnemonic = "URS";
constexpr int kDigits = 3;
constexpr int kHighest = 999;

/// A number too large for any type is too large for a position as well.
double valueOf(std::string_view text) {
    try {
        return toDouble(text);
    } catch (const Fault&) {
        return std::numeric_limits<double>::infinity();
    }
}

int lowestOf(Accepts accepts) {
    return accepts == Accepts::ZeroAndAbove ? 0 : 1;
}

bool accepted(Accepts accepts, std::string_view text) {
    if (accepts == Accepts::Zero) {
        return true;
    }
    const double value = valueOf(text);
    // A value that is rounded to zero is no end position.
    return value >= 0 && value <= kHighest && std::nearbyint(value) >= lowestOf(accepts);
}

} // namespace

OrlaPositioner::OrlaPositioner(ConsoleContext& context, ServiceSession& session)
    : context_(context), session_(session), screen_(context), console_(context.console) {
    console_["cmdOrla"].on.press = [this] { toggle(); };
    for (std::size_t axis = 0; axis < kAxes.size(); ++axis) {
        console_[kAxes[axis].button].on.press = [this, axis] {
            SelectOrlaAxis(static_cast<std::int32_t>(axis));
        };
    }
    for (std::size_t position = 0; position < kPositions.size(); ++position) {
        Control& key = console_[kPositions[position].setKey];
        key.on.press = [this, position] { set(position); };
        context_.needs.add(key, "", [&box = console_[kPositions[position].valueBox]] {
            return isNumeric(box.text()) ? Hindrance::None : Hindrance::NoNumber;
        });
    }
    context_.operations.add("fmessOrla", [this](std::string_view text) { fmessOrla(text); });
}

void OrlaPositioner::toggle() {
    if (m_OrlaActive) {
        session_.restScreen().closeScreen();
    } else if (!session_.is(Run::Closing)) {
        session_.openScreen(console_["cmdOrla"], [this] { show(false); });
        show(true);
    }
}

void OrlaPositioner::show(bool open) {
    m_OrlaActive = open;
    tellBounds();
    console_["fraOrla"].setVisible(open);
    SelectOrlaAxis(0);
}

std::string OrlaPositioner::boundsOf(std::size_t position) const {
    const std::int64_t lowest = lowestOf(kPositions.at(position).accepts);
    return ConsoleTexts::filled(context_.texts.sBounds, {lowest, kHighest});
}

void OrlaPositioner::tellBounds() {
    for (std::size_t position = 0; position < kPositions.size(); ++position) {
        if (kPositions[position].accepts != Accepts::Zero) {
            std::string label(std::string_view(kPositions[position].valueBox));
            label.replace(0, 3, "lbl"); // the one of the box "txt..."
            console_.ControlHost::at(label).setNote(boundsOf(position));
        }
    }
}

void OrlaPositioner::SelectOrlaAxis(std::int32_t axis) {
    const AxisRow& before = kAxes.at(static_cast<std::size_t>(m_SelectedAxis));
    console_[before.frame].bringToFront();
    screen_.off({before.button});
    m_SelectedAxis = axis;
    const AxisRow& now = kAxes.at(static_cast<std::size_t>(axis));
    console_[now.frame].bringToFront();
    screen_.on({now.button});
}

void OrlaPositioner::set(std::size_t position) {
    const PositionRow& row = kPositions.at(position);
    Control& box = console_[row.valueBox];
    const std::string& text = box.text();
    if (!isNumeric(text)) {
        return;
    }
    if (!accepted(row.accepts, text)) {
        box.setText("");
        context_.refused.raise(&box, boundsOf(position));
        return;
    }
    // The sign is part of the code and never of the number.
    std::string message(kMnemonic);
    message.append(row.code).append(fixedDigits(text, kDigits));
    context_.link.SendMessage(message, kAllPhases, true);
}

void OrlaPositioner::fmessOrla(std::string_view text) {
    const std::string_view code = characters(text, 1, 3);
    const bool zero = characters(text, 4, 6) == "000";
    const auto find = [code](bool zeroPosition) {
        return std::find_if(kPositions.begin(), kPositions.end(), [&](const PositionRow& row) {
            return row.code == code && (row.accepts == Accepts::Zero) == zeroPosition;
        });
    };
    // An axis without a zero position, and a minus of 000, belong to the end position.
    auto row = zero ? find(true) : kPositions.end();
    if (row == kPositions.end()) {
        row = find(false);
    }
    if (row != kPositions.end()) {
        console_[row->readingBox].setText(characters(text, 7, 10));
    }
}

} // namespace quillon
