#include "model/Fluoroscopy.h"

#include <algorithm>
#include <array>
#include <string>

#include "base/Fault.h"
#include "base/Numbers.h"
#include "base/Text.h"
#include "link/OutboundTable.h"
#include "model/Commands.h"
#include "model/ReportedSwitches.h"

namespace quillon {

namespace {

using State = GeneratorState;
using Events = LinkEvents;

// clang-format off
constexpr std::array kSwitches{
    SwitchRow{"fmessFlABS",      &State::m_FlABS,      &Events::FlABSChange,      "cmbToggleABS"},
    SwitchRow{"fmessFlHighDose", &State::m_FlHighDose, &Events::FlHighDoseChange, "cmbFlHighDose"},
    // The alarm's key is lit while there is no alarm.
    SwitchRow{"fmessFlAlarm",    &State::m_FlAlarm,    &Events::FlAlarmChange,    "cmbFluoroAlarmReset",
              kNormalColour, kActiveColour},
};

/// A value that is shown: kept as the text that came and as a number.
struct ShownValue {
    std::string State::*text;
    std::int16_t State::*number;
    PanelControl field;
};
constexpr ShownValue kKVP{&State::m_FlKVPDisplay,  &State::m_FlKVP,  "txtFlKVP"};
constexpr ShownValue kTime{&State::m_FlTimeDisplay, &State::m_FlTime, "txtFlTime"};
constexpr ShownValue kPPS{&State::m_FlPPSDisplay,  &State::m_FlPPS,  "txtFlPPS"};
// clang-format on

constexpr std::array<std::string_view, 3> kContrasts{"Low", "High", "VeryHigh"};

constexpr std::int32_t kLastCurve = 8;
constexpr int kRetryInterval = 750; // ms
constexpr std::int16_t kRetries = 5;

} // namespace

/// A report of a value.
struct Fluoroscopy::ValueRow {
    enum class Repeated { Handled, OnlyShown };

    std::string_view handler;
    ShownValue value;
    Signal<std::string> LinkEvents::*event;
    bool needsNumber;
    Repeated repeated;
    void (Fluoroscopy::*reported)(bool numeric) = nullptr;
};

Fluoroscopy::Fluoroscopy(ModelContext& context)
    : context_(context), link_(context.link), state_(context.state),
      tmrAutorepFlKVP_(context.panel.timer("tmrAutorepFlKVP")), cmbFlMag_(context.panel.all("cmbFlMag")),
      cmbFlContinuous_(context.panel["cmbFlContinuous"]),
      cmbFlKVPTracking_(context.panel["cmbFlKVPTracking"]),
      txtFlKVPTracking_(context.panel["txtFlKVPTracking"]),
      txtCfgKVTracking_(context.panel["txtCfgKVTracking"]), txtFlMA_(context.panel["txtFlMA"]),
      txtFlContrast_(context.panel["txtFlContrast"]), txtRAD_RF_(context.panel["txtRAD_RF"]) {
    tmrAutorepFlKVP_.setTick([this] { repeatStep(); });
    bindValues();
    bindHandlers();
    addOperations();
}

void Fluoroscopy::bindValues() {
    using enum ValueRow::Repeated;
    using Self = Fluoroscopy;
    // clang-format off
    static constexpr std::array kValues{
        ValueRow{"fmessFlKVPValue",    kKVP,  &Events::FlKVPChangeValue,    true,  Handled,
                 &Self::kVpReported},
        ValueRow{"fmessFlKVPDisplay",  kKVP,  &Events::FlKVPChangeDisplay,  false, OnlyShown},
        ValueRow{"fmessFlTimeValue",   kTime, &Events::FlTimeChangeValue,   true,  OnlyShown},
        ValueRow{"fmessFlTimeDisplay", kTime, &Events::FlTimeChangeDisplay, false, OnlyShown},
        ValueRow{"fmessFlPPSValue",    kPPS,  &Events::FLPPSChangeValue,    true,  Handled,
                 &Self::ppsReported},
        ValueRow{"fmessFlPPSDisplay",  kPPS,  &Events::FlPPSChangeDisplay,  false, Handled,
                 &Self::ppsReported},
    };
    // clang-format on
    for (const ValueRow& row : kValues) {
        Control& field = context_.panel[row.value.field];
        context_.decoder.bind(
            row.handler, [this, &row, &field](std::string_view value) { fmessValue(row, field, value); });
    }
}

void Fluoroscopy::bindHandlers() {
    bindSwitches(context_, kSwitches);
    MessageDecoder& decoder = context_.decoder;
    decoder.bind("fmessFlMAG", [this](std::string_view value) { fmessFlMAG(value); });
    decoder.bind("fmessFlMA", [this](std::string_view value) {
        // Reported in tenths.
        showMA(toInt16(toInt16(value) / 10.0), value, context_.events.FlMAChangeValue);
    });
    decoder.bind("fmessFlMADisplay", [this](std::string_view value) {
        showMA(isNumeric(value) ? toInt16(value) : std::int16_t{0}, value, context_.events.FlMAChangeDisplay);
    });
    decoder.bind("fmessFlContrast", [this](std::string_view value) { fmessFlContrast(value); });
    decoder.bind("fmessFLKVPTracking", [this](std::string_view value) { fmessFLKVPTracking(value); });
    decoder.bind("fmessFlDetected", [this](std::string_view value) { fmessFlDetected(value); });
}

void Fluoroscopy::addOperations() {
    Operations& operations = context_.operations;
    operations.add("FlKVPOneUp", [this] { FlKVPOneUp(); });
    operations.add("FlKVPOneDown", [this] { FlKVPOneDown(); });
    operations.add("FlKVPToggleKVPTracking", [this] { FlKVPToggleKVPTracking(); });
    operations.add("FlKVPTrackingUp", [this] { FlKVPTrackingUp(); });
    operations.add("FlKVPTrackingDown", [this] { FlKVPTrackingDown(); });
    operations.add("FlContinuousToggle", [this] { FlContinuousToggle(); });
    operations.add("KVPTrackingFormula",
                   [this](std::int16_t formula, std::int16_t A, std::int16_t B, std::int16_t mA,
                          std::int16_t ms) { KVPTrackingFormula(formula, A, B, mA, ms); });

    operations.addProperty(
        "FlKVP", [this] { return state_.m_FlKVP; }, [this](std::int16_t value) { setFlKVP(value); });
    operations.addReadOnly("FlKVPDisplay", [this] { return state_.m_FlKVPDisplay; });
    operations.addReadOnly("FlTime", [this] { return state_.m_FlTime; });
    operations.addReadOnly("FlTimeDisplay", [this] { return state_.m_FlTimeDisplay; });
    operations.addReadOnly("FlPPS", [this] { return state_.m_FlPPS; });
    operations.addReadOnly("FlPPSDisplay", [this] { return state_.m_FlPPSDisplay; });
    operations.addReadOnly("FlKVPTrackingActive", [this] { return FlKVPTrackingActive(); });
    operations.addMember("FLKVPDoubleHandshaking", FLKVPDoubleHandshaking_);
}

void Fluoroscopy::setFlKVP(std::int16_t value) {
    state_.m_FlKVP = value;
    context_.send.SendMessageWithDefaults("FLK" + fixedDigits(value, 3), phasesOf("FLK"));
}

void Fluoroscopy::FlKVPOneUp() {
    stepOnce(link_.Handshaking ? "FLKU" : "FLK+", m_FlKVPRetryUp);
}

void Fluoroscopy::FlKVPOneDown() {
    stepOnce(link_.Handshaking ? "FLKD" : "FLK-", m_FlKVPRetryDown);
}

void Fluoroscopy::stepOnce(std::string_view mnemonic, bool& armed) {
    context_.send.SendMessageWithDefaults(mnemonic, phasesOf(mnemonic));
    if (link_.Handshaking && FLKVPDoubleHandshaking_ && !armed) {
        armed = true;
        m_FlKVPRetryCount = kRetries;
        tmrAutorepFlKVP_.start(kRetryInterval);
    }
}

void Fluoroscopy::repeatStep() {
    if (m_FlKVPRetryCount == 0) {
        // The step stays armed, so that a generator that does not report is not asked again without end.
        tmrAutorepFlKVP_.stop();
        return;
    }
    --m_FlKVPRetryCount;
    if (m_FlKVPRetryDown) {
        FlKVPOneDown();
    } else if (m_FlKVPRetryUp) {
        FlKVPOneUp();
    }
}

void Fluoroscopy::FlKVPToggleKVPTracking() {
    context_.commands.send(command("FlKVPTracking"),
                           state_.m_FlKVPTrackingActive ? std::int32_t{0} : state_.m_FlKVPTrackingCurve);
}

void Fluoroscopy::FlKVPTrackingUp() {
    stepTracking(command("ConfKVTrackingUp"), 1);
}

void Fluoroscopy::FlKVPTrackingDown() {
    stepTracking(command("ConfKVTrackingDown"), -1);
}

void Fluoroscopy::stepTracking(CommandFor<> command, std::int32_t by) {
    if (state_.m_FlKVPTrackingActive) {
        context_.commands.send(command);
        return;
    }
    state_.m_FlKVPTrackingCurve = std::clamp(state_.m_FlKVPTrackingCurve + by, 1, kLastCurve);
    txtFlKVPTracking_.setCaption(decimalText(state_.m_FlKVPTrackingCurve));
}

std::int32_t Fluoroscopy::FlKVPTrackingActive() const {
    return state_.m_FlKVPTrackingActive ? state_.m_FlKVPTrackingCurve : 0;
}

void Fluoroscopy::KVPTrackingFormula(std::int16_t formula, std::int16_t A, std::int16_t B, std::int16_t mA,
                                     std::int16_t ms) {
    const std::string message = "KVTF" + decimalText(formula) + "A" + fixedDigits(A, 3) + "B" +
                                fixedDigits(B, 2) + "MA" + fixedDigits(mA, 5) + "MS" + fixedDigits(ms, 5);
    context_.poll.holdBack();
    context_.send.SendMessageWithDefaults(message, phasesOf("KVTF"));
}

void Fluoroscopy::FlContinuousToggle() {
    if (!state_.m_FlContinuous) {
        context_.commands.send(command("SetFlPPS"), std::int32_t{0});
    } else if (state_.m_FlPPS != 0) {
        context_.commands.send(command("SetFlPPS"), std::int32_t{state_.m_FlPPS});
    } else {
        context_.commands.send(command("FlPPSNext"));
    }
}

void Fluoroscopy::fmessValue(const ValueRow& row, Control& field, std::string_view value) {
    const bool numeric = isNumeric(value);
    std::string& text = state_.*row.value.text;
    if (row.needsNumber && !numeric) {
        return;
    }
    if (row.repeated == ValueRow::Repeated::OnlyShown && value == text) {
        // A working mode without fluoroscopy has emptied the field meanwhile.
        field.setCaption(text);
        return;
    }
    text = trimLeft(value);
    state_.*row.value.number = numeric ? toInt16(value) : std::int16_t{0};
    if (row.reported != nullptr) {
        (this->*row.reported)(numeric);
    }
    field.setCaption(text);
    if (link_.EventEnabled) {
        (context_.events.*row.event).raise(std::string(value));
    }
}

void Fluoroscopy::kVpReported(bool) {
    if (FLKVPDoubleHandshaking_ && (m_FlKVPRetryUp || m_FlKVPRetryDown)) {
        tmrAutorepFlKVP_.stop();
        m_FlKVPRetryUp = false;
        m_FlKVPRetryDown = false;
    }
}

void Fluoroscopy::ppsReported(bool numeric) {
    state_.m_FlContinuous = numeric && state_.m_FlPPS == 0;
    showState(cmbFlContinuous_, state_.m_FlContinuous);
}

void Fluoroscopy::showMA(std::int16_t mA, std::string_view value, Signal<std::string>& event) {
    state_.m_FlMA = mA;
    if (link_.EventEnabled) {
        event.raise(std::string(value));
    }
    txtFlMA_.setCaption(decimalText(mA));
}

void Fluoroscopy::fmessFlMAG(std::string_view value) {
    const std::int32_t Mag = toInt32(value.substr(0, 1));
    const bool on = toBoolean(value.substr(1, 1));
    const auto index = static_cast<std::size_t>(Mag);
    if (index >= state_.m_FlMagnification.size()) {
        throw Fault(Fault::kSubscript);
    }
    if (state_.m_FlMagnification[index] == on) {
        if (index < cmbFlMag_.size()) {
            confirmState(*cmbFlMag_[index]);
        }
        return;
    }
    state_.m_FlMagnification[index] = on;
    if (link_.EventEnabled) {
        context_.events.FlMagChange.raise(Mag, on);
    }
    if (index < cmbFlMag_.size()) {
        showState(*cmbFlMag_[index], on);
    }
}

void Fluoroscopy::fmessFlContrast(std::string_view value) {
    const std::string_view first = value.substr(0, 1);
    const std::string_view flag = value.substr(first.size());
    if (!isNumeric(first) || !isNumeric(flag)) {
        return;
    }
    const std::int32_t step = toInt32(first);
    const bool repeated = step == state_.m_FlContrast;
    state_.m_FlContrast = step;
    contrastShown_ = repeated ? contrastShown_ : toBoolean(flag);
    if (!contrastShown_ || !toBoolean(flag)) {
        return;
    }
    if (!repeated && link_.EventEnabled) {
        context_.events.FlContrastChange.raise(step);
    }
    if (const auto index = static_cast<std::size_t>(step); index < kContrasts.size()) {
        txtFlContrast_.setCaption(kContrasts[index]);
    }
}

void Fluoroscopy::fmessFLKVPTracking(std::string_view value) {
    const std::int16_t curve = toInt16(value);
    const std::string shown = curve == 0 ? "" : decimalText(curve);
    if (link_.m_OperatingPhase == Phase::Configuration) {
        txtCfgKVTracking_.setCaption(shown);
    }
    if (link_.m_OperatingPhase != Phase::NormalOperation) {
        return;
    }
    state_.m_FlKVPTrackingActive = curve != 0;
    if (curve != 0) {
        // Kept when tracking is switched off, as tracking starts with it again.
        state_.m_FlKVPTrackingCurve = curve;
    }
    txtFlKVPTracking_.setCaption(shown);
    showState(cmbFlKVPTracking_, state_.m_FlKVPTrackingActive);
    if (link_.EventEnabled) {
        context_.events.FlKVPTracking.raise(curve);
    }
}

void Fluoroscopy::fmessFlDetected(std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    const bool detected = toBoolean(value);
    context_.settings.GeneratorType = detected ? 1 : 0;
    if (link_.EventEnabled) {
        context_.events.GeneratorTypeChange.raise(context_.settings.GeneratorType);
    }
    if (link_.m_OperatingPhase == Phase::Configuration) {
        txtRAD_RF_.setCaption(detected ? "RF" : "RAD");
    }
}

} // namespace quillon
