#include "model/ErrorsAndWarnings.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/Numbers.h"
#include "link/OutboundTable.h"
#include "model/Characters.h"
#include "model/WarnedFields.h"
#include "model/WarningLamps.h"

namespace quillon {

namespace {

using State = GeneratorState;

constexpr int kWarningTime = 3000;
constexpr int kHalfCycle = 500;
constexpr int kBlinkTime = 3000;

constexpr std::int16_t kIgnoredError = 99;
constexpr double kWarningCodes = 22;
constexpr std::int32_t kNoDigital = 21;
constexpr double kLargestRating = 9;

enum Marks : std::uint8_t { none = 0, kVp = 1, mAs = 2, mA = 4, ms = 8, mode = 16 };

// In the order in which the event tells them.
constexpr std::array kFlags{&State::m_WarnKVP, &State::m_WarnMAS, &State::m_WarnMA, &State::m_WarnMS,
                            &State::m_WarnTM};

/// What a warning marks, and whether it goes by itself.
struct WarningRow {
    std::int32_t code;
    int marks;
    bool passes;
};

// clang-format off
constexpr std::array kWarnings{
    WarningRow{ 0, none,          false},
    WarningRow{ 1, mAs,           true},
    WarningRow{ 2, kVp | mAs,     true},
    WarningRow{ 3, kVp,           true},
    WarningRow{ 4, kVp,           true},
    WarningRow{ 5, mA,            true},
    WarningRow{ 6, mA,            true},
    WarningRow{ 7, ms,            true},
    WarningRow{ 8, ms,            true},
    WarningRow{ 9, mAs,           true},
    WarningRow{10, mAs,           true},
    WarningRow{11, kVp | mA,      true},
    WarningRow{12, kVp,           true},
    WarningRow{13, kVp | mA,      true},
    WarningRow{14, kVp | mA | ms, true},
    WarningRow{15, none,          true},
    WarningRow{16, mAs | mode,    true},
    WarningRow{17, none,          false},
    WarningRow{18, none,          true},
    WarningRow{19, mA | ms,       true},
    WarningRow{20, mA | ms,       true},
};
// clang-format on

std::int16_t flagValue(bool flag) {
    return flag ? -1 : 0;
}

} // namespace

ErrorsAndWarnings::ErrorsAndWarnings(ModelContext& context, const ErrorTable& errors)
    : context_(context), link_(context.link), state_(context.state), errors_(errors),
      lblWarning_(context.panel["lblWarning"]), cmbTM3_(context.panel.at("cmbTM", kWarnedTechniqueMode)),
      Iconized_(context.panel["Iconized"]), tmrWarning_(context.panel.timer("tmrWarning")),
      tmrBlinking_(context.panel.timer("tmrBlinking")),
      tmrBlinkingOff_(context.panel.timer("tmrBlinkingOff")) {
    MessageDecoder& decoder = context_.decoder;
    decoder.bind("fmessERROR", [this](std::string_view value) { fmessERROR(value); });
    decoder.bind("fmessWarningMessage", [this](std::string_view value) { fmessWarningMessage(value); });
    decoder.bind("fmessWarningRatingPercentage",
                 [this](std::string_view value) { fmessWarningRatingPercentage(value); });
    decoder.bind("fmessERRORAEC", [this](std::string_view value) { fmessERRORAEC(value); });
    decoder.bind("fmessInfo", [&txtInfo = context_.panel["txtInfo"]](std::string_view value) {
        txtInfo.setCaption(value);
    });
    for (const WarningLamp& lamp : kWarningLamps) {
        Control& label = context_.panel[lamp.label];
        decoder.bind(lamp.handler,
                     [this, &lamp, &label](std::string_view value) { fmessLamp(lamp, value, label); });
    }
    tmrWarning_.setTick([this] { warningTick(); });

    context_.operations.add("ResetError", [this](bool WithACK) { ResetError(WithACK); }, {false});
}

void ErrorsAndWarnings::ResetError(bool WithACK) {
    state_.m_LastError = 0;
    context_.send.SendMessage("AR", phasesOf("AR"), link_.Handshaking || WithACK);
}

void ErrorsAndWarnings::fmessERROR(std::string_view value) {
    if (isNumeric(value)) {
        const std::int16_t code = toInt16(value);
        if (code == kIgnoredError) {
            return;
        }
        if (code != 0) {
            state_.m_LastError = code;
        }
        if (link_.EventEnabled) {
            context_.events.GeneratorERROR.raise(
                state_.m_LastError, errors_.Description(state_.m_LastError),
                static_cast<std::int16_t>(errors_.ErrorType(state_.m_LastError)));
        }
        return;
    }
    const std::string_view interlock = characters(value, 2, 3);
    if (value.starts_with('L') && isNumeric(interlock) && link_.EventEnabled) {
        context_.events.GeneratorWSInterlockERROR.raise(toInt16(interlock));
    }
}

void ErrorsAndWarnings::fmessWarningMessage(std::string_view value) {
    if (!isNumeric(value) || toDouble(value) >= kWarningCodes) {
        return;
    }
    const std::int32_t code = toInt32(value);
    clearWarning();
    if (code == kNoDigital) {
        context_.events.NoDigitalWarning.raise(true);
        return;
    }
    reportWarning(code);
    startBlinking();
}

void ErrorsAndWarnings::clearWarning() {
    tmrWarning_.stop();
    lblWarning_.setCaption("");
    for (bool State::*const flag : kFlags) {
        state_.*flag = false;
    }
    // A blink may have left them dark.
    for (const WarnedField& warned : kWarnedFields) {
        context_.panel[warned.field].restoreCaption(state_.*warned.text);
    }
    if (state_.m_TechniqueMode == kWarnedTechniqueMode) {
        cmbTM3_.setBackColour(kActiveColour);
    }
}

void ErrorsAndWarnings::reportWarning(std::int32_t code) {
    const auto row = std::find_if(kWarnings.begin(), kWarnings.end(),
                                  [code](const WarningRow& each) { return each.code == code; });
    if (row != kWarnings.end()) {
        for (std::size_t i = 0; i < kFlags.size(); ++i) {
            state_.*kFlags[i] = (row->marks >> i & 1) != 0;
        }
        if (row->passes) {
            tmrWarning_.start(kWarningTime);
        }
    }
    if (code != 0) {
        lblWarning_.setCaption("Warning " + decimalText(code));
    }
    if (!link_.EventEnabled) {
        return;
    }
    if (code == 0) {
        context_.events.WarningMessageReset.raise();
    } else {
        context_.events.WarningMessage.raise(code, flagValue(state_.m_WarnKVP), flagValue(state_.m_WarnMAS),
                                             flagValue(state_.m_WarnMA), flagValue(state_.m_WarnMS),
                                             flagValue(state_.m_WarnTM));
    }
}

void ErrorsAndWarnings::startBlinking() {
    const bool marked =
        std::any_of(kFlags.begin(), kFlags.end(), [this](bool State::*flag) { return state_.*flag; });
    // The fields of a minimised panel cannot be seen.
    if (marked && !Iconized_.visible()) {
        state_.m_BlinkOff = false;
        tmrBlinking_.start(kHalfCycle);
        tmrBlinkingOff_.start(kBlinkTime);
    }
}

void ErrorsAndWarnings::warningTick() {
    tmrWarning_.stop();
    if (link_.EventEnabled) {
        context_.events.WarningMessageReset.raise();
    }
    lblWarning_.setCaption("");
}

void ErrorsAndWarnings::fmessWarningRatingPercentage(std::string_view value) {
    if (isNumeric(value) && toDouble(value) <= kLargestRating && link_.EventEnabled) {
        context_.events.WarningMessageRP.raise(toInt16(value));
    }
}

void ErrorsAndWarnings::fmessERRORAEC(std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    const std::int16_t code = toInt16(value);
    if (!link_.EventEnabled) {
        return;
    }
    if (code != 0) {
        context_.events.GeneratorAECError.raise(code);
    } else {
        context_.events.GeneratorERRORResetAck.raise();
    }
}

void ErrorsAndWarnings::fmessLamp(const WarningLamp& lamp, std::string_view value, Control& label) {
    if (!isNumeric(value)) {
        return;
    }
    const bool on = toBoolean(value);
    if (lamp.member != nullptr) {
        state_.*lamp.member = on;
    }
    if (link_.EventEnabled) {
        (context_.events.*lamp.event).raise(on);
    }
    if (!on) {
        label.setVisible(false);
    } else if (!lamp.darkOnceConfirmed || state_.m_AutocalState != 2) {
        label.setCaption(lamp.caption);
        label.setVisible(true);
    }
}

} // namespace quillon
