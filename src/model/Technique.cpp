#include "model/Technique.h"

#include <string>

#include "base/Numbers.h"
#include "base/Text.h"
#include "link/OutboundTable.h"
#include "model/Characters.h"
#include "model/Commands.h"

namespace quillon {

namespace {

constexpr std::int32_t kNoTechniqueKeys = 4;

// Which of the operating phases have the service fields in use differs between the messages.
bool serviceOrStart(Phase phase) {
    return phase == Phase::Initialization || isServiceMode(phase);
}
bool notInNormal(Phase phase) {
    return phase != Phase::NormalOperation;
}
bool notInUse(Phase phase) {
    return phase != Phase::Initialization && phase != Phase::NormalOperation;
}

double numberOrZero(std::string_view text) {
    return isNumeric(text) ? toDouble(text) : 0;
}

/// Which texts the handler of a message takes.
enum class Takes : std::uint8_t {
    Numbers,
    NumbersKept, ///< numbers; any other text is kept, and goes no further
    NewTexts,    ///< what stands on the generator's display, unless it is stored already
    AllTexts,
};
using enum Takes;

using State = GeneratorState;
using Events = LinkEvents;
using Self = Technique;

} // namespace

/// One of the four values: its text, and the fields that show it in use and in service.
struct Technique::Quantity {
    std::string State::*text;
    bool (Self::*store)(std::string_view value);
    PanelControl normal;
    PanelControl service;
};

/// A message that reports one of the four values.
struct Technique::Report {
    std::string_view handler;
    const Quantity& quantity;
    Takes takes;
    bool (*toService)(Phase operatingPhase);
    /// Empty where the service field simply shows the text.
    void (Self::*serve)(Control& field, bool repeated);
    Signal<std::string> Events::*event;
};

// clang-format off
constexpr Self::Quantity Self::kKVP{&State::m_KVPDisplay, &Self::storeKVP, "txtKVp", "txtKVPCal"};
constexpr Self::Quantity Self::kMA {&State::m_MADisplay,  &Self::storeMA,  "txtMA",  "txtMACal"};
constexpr Self::Quantity Self::kMS {&State::m_MSDisplay,  &Self::storeMS,  "txtMS",  "txtMSCal"};
constexpr Self::Quantity Self::kMAS{&State::m_MASDisplay, &Self::storeMAS, "txtMAS", "txtMASCal"};

// "MAS" on the wire is the mA display; mAs travels as "MX".
constexpr Self::Report Self::kReports[]{
    {"fmessKVPValue",   kKVP, NumbersKept, notInUse,       &Self::serveKVP, &Events::KVPChangeValue},
    {"fmessKVPDisplay", kKVP, NewTexts,    notInNormal,    &Self::serveKVPDisplay, &Events::KVPChangeDisplay},
    {"fmessMAValue",    kMA,  NumbersKept, serviceOrStart, &Self::serveMA, &Events::MAChangeValue},
    {"fmessMADisplay",  kMA,  NewTexts,    serviceOrStart, &Self::serveMADisplay, &Events::MAChangeDisplay},
    {"fmessMSValue",    kMS,  Numbers,     isServiceMode,      nullptr, &Events::MSChangeValue},
    {"fmessMSDisplay",  kMS,  NewTexts,    serviceOrStart, nullptr, &Events::MSChangeDisplay},
    {"fmessMASValue",   kMAS, Numbers,     isServiceMode,      nullptr, &Events::MASChangeValue},
    {"fmessMASDisplay", kMAS, AllTexts,    isServiceMode,      nullptr, &Events::MASChangeDisplay},
};
// clang-format on

/// One of the two focal spots.
struct Technique::FocalSpot {
    std::string_view handler;
    std::int32_t State::*selected;
    std::int32_t State::*other;
    std::string_view name;
    Signal<std::int32_t> Events::*event;
};

// clang-format off
constexpr Self::FocalSpot Self::kFocalSpots[]{
    {"fmessSmallFocus", &State::m_SmallFocus, &State::m_LargeFocus, "SMALL", &Events::SmallFocusChange},
    {"fmessLargeFocus", &State::m_LargeFocus, &State::m_SmallFocus, "LARGE", &Events::LargeFocusChange},
};
// clang-format on

/// A flag of the generator that is only passed on.
struct Technique::Flag {
    std::string_view handler;
    bool State::*member;
    Signal<bool> Events::*event;
};

// clang-format off
constexpr Self::Flag Self::kFlags[]{
    {"fmessHCFmode",  &State::m_HCFmode,  &Events::HCFmodeChange},
    {"fmessTomoAuto", &State::m_TomoAuto, &Events::TomoAutoChange},
};
// clang-format on

Technique::Technique(ModelContext& context)
    : context_(context), link_(context.link), state_(context.state), item_(context),
      cmbTM_(context.panel.all("cmbTM")), lblWarning_(context.panel["lblWarning"]),
      txtFocus_(context.panel["txtFocus"]), txtFocusCal_(context.panel["txtFocusCal"]),
      txtInfo_(context.panel["txtInfo"]) {
    bindReports();
    addProperties();
}

void Technique::bindReports() {
    MessageDecoder& decoder = context_.decoder;
    for (const Report& row : kReports) {
        Control& normal = context_.panel[row.quantity.normal];
        Control& service = context_.panel[row.quantity.service];
        decoder.bind(row.handler, [this, &row, &normal, &service](std::string_view value) {
            report(row, value, normal, service);
        });
    }
    for (const FocalSpot& row : kFocalSpots) {
        decoder.bind(row.handler, [this, &row](std::string_view value) { fmessFocus(row, value); });
    }
    for (const Flag& row : kFlags) {
        decoder.bind(row.handler, [this, &row](std::string_view value) {
            state_.*row.member = value != "0";
            if (link_.EventEnabled) {
                (context_.events.*row.event).raise(state_.*row.member);
            }
        });
    }
    decoder.bind("fmessTM", [this](std::string_view value) { fmessTM(value); });
    decoder.bind("fmessPostDisplay", [this](std::string_view value) { fmessPostDisplay(value); });
}

void Technique::addProperties() {
    Operations& operations = context_.operations;
    operations.addProperty(
        "KVP", [this] { return state_.m_KVP; }, [this](std::int16_t value) { setKVP(value); });
    operations.addProperty(
        "mA", [this] { return state_.m_MA; }, [this](double value) { setMA(value); });
    operations.addProperty(
        "ms", [this] { return state_.m_MS; }, [this](double value) { setMS(value); });
    operations.addProperty(
        "MAS", [this] { return state_.m_MAS; }, [this](double value) { setMAS(value); });
    operations.addReadOnly("KVPDisplay", [this] { return state_.m_KVPDisplay; });
    operations.addReadOnly("MADisplay", [this] { return state_.m_MADisplay; });
    operations.addReadOnly("MSDisplay", [this] { return state_.m_MSDisplay; });
    operations.addReadOnly("MASDisplay", [this] { return state_.m_MASDisplay; });
    operations.addProperty(
        "TechniqueMode", [this] { return state_.m_TechniqueMode; },
        [this](std::int32_t mode) { setTechniqueMode(mode); });
    // An unknown focus reads as selected: only a reported 0 says that it is not.
    operations.addReadOnly("SmallFocus", [this] { return state_.m_SmallFocus != 0; });
    operations.addReadOnly("LargeFocus", [this] { return state_.m_LargeFocus != 0; });
    operations.addWriteOnly("Focus", [this](std::int32_t focus) { setFocus(focus); });
    operations.addReadOnly("CalibrationType", [this] { return state_.m_CalibrationType; });
    operations.addReadOnly("CalibrationParameter", [this] { return state_.m_CalibrationParameter; });
    operations.add("TMReq", [this] { TMReq(); });
}

void Technique::setKVP(std::int16_t value) {
    state_.m_KVP = value;
    context_.send.SendMessageWithDefaults("KV" + signedText(value), phasesOf("KV"));
}

void Technique::setMA(double value) {
    state_.m_MA = value;
    context_.send.SendMessageWithDefaults("MA" + signedText(value), phasesOf("MA"));
}

void Technique::setMS(double value) {
    state_.m_MS = value;
    context_.send.SendMessageWithDefaults("MS" + signedText(value), phasesOf("MS"));
}

void Technique::setMAS(double value) {
    constexpr double kMicroampereSeconds = 1000;
    state_.m_MAS = value;
    context_.send.SendMessageWithDefaults("MX" + fixedDigits(value * kMicroampereSeconds, 6), phasesOf("MX"));
}

void Technique::setTechniqueMode(std::int32_t mode) {
    context_.send.SendMessageWithDefaults("TM" + decimalText(mode), phasesOf("TM"));
}

void Technique::setFocus(std::int32_t focus) {
    const bool small = focus == 0;
    if ((small ? state_.m_SmallFocus : state_.m_LargeFocus) != 0) {
        return;
    }
    if (link_.Handshaking) {
        context_.commands.send(command("SetFocalSpot"), small ? 0 : 1);
    } else {
        context_.commands.send(command("ToggleFocus"));
    }
}

void Technique::TMReq() {
    if (state_.m_TechniqueMode != kNoTechniqueKeys) {
        context_.send.SendMessageWithDefaults("TM?", phasesOf("TM?"));
    }
}

void Technique::report(const Report& row, std::string_view value, Control& normal, Control& service) {
    std::string& text = state_.*row.quantity.text;
    // A repeated text raises no event, but the field may have been emptied, or another one is in use now.
    const bool repeated = row.takes == NewTexts && value == text;
    if ((row.takes == Numbers || row.takes == NumbersKept) && !isNumeric(value)) {
        if (row.takes == NumbersKept) {
            text = trimLeft(value);
        }
        return;
    }
    if (!repeated && !(this->*row.quantity.store)(value)) {
        return;
    }
    if (!row.toService(link_.m_OperatingPhase)) {
        normal.setCaption(text);
        if (!repeated && link_.EventEnabled) {
            (context_.events.*row.event).raise(text);
        }
    } else if (row.serve != nullptr) {
        (this->*row.serve)(service, repeated);
    } else {
        service.setCaption(text);
    }
}

bool Technique::storeKVP(std::string_view value) {
    state_.m_KVPDisplay = trimLeft(value);
    state_.m_KVP = isNumeric(value) ? toInt16(value) : std::int16_t{0};
    return true;
}

bool Technique::storeMA(std::string_view value) {
    state_.m_MADisplay = trimLeft(value);
    state_.m_MA = numberOrZero(value);
    return true;
}

bool Technique::storeMS(std::string_view value) {
    // Four digits on the wire: the one value that needs five comes as zeros.
    const std::string_view text = value == "0000" ? "10000" : trimLeft(value);
    state_.m_MSDisplay = text;
    state_.m_MS = numberOrZero(text);
    return true;
}

bool Technique::storeMAS(std::string_view value) {
    constexpr double kWholeFrom = 100;
    // Smaller values always have a decimal point; a whole number is the unit of a calibration.
    if (isNumeric(value) && link_.m_Phase != Phase::Calibration && toDouble(value) < kWholeFrom &&
        value.find('.') == std::string_view::npos) {
        state_.m_MAS = 0;
        state_.m_MASDisplay.clear();
        return false;
    }
    state_.m_MAS = numberOrZero(value);
    state_.m_MASDisplay = trimLeft(value);
    return true;
}

void Technique::serveKVP(Control& field, bool /*repeated*/) {
    // Between the request for an autocalibration and its start the generator still reports the old station.
    if (state_.m_AutocalState != 1) {
        field.setCaption(state_.m_KVPDisplay);
    }
}

void Technique::serveKVPDisplay(Control& field, bool repeated) {
    if (link_.m_OperatingPhase != Phase::Autocalibration) {
        return;
    }
    const std::string& text = state_.m_KVPDisplay;
    if (!isNumeric(text)) {
        if (text.empty()) {
            field.setCaption("");
        }
        return;
    }
    if (state_.m_AutocalState != 4 || state_.m_CalibrationType == 2) {
        field.setCaption(text);
    } else if (!repeated && state_.m_CalibrationType == 0 && !endsAutocalibration(link_.m_Phase)) {
        // While a station is calibrated the kVp display counts exposures and tells the filament current.
        constexpr std::int16_t kMostExposures = 10;
        constexpr std::int16_t kLeastFilamentCurrent = 151;
        if (state_.m_KVP <= kMostExposures) {
            txtInfo_.setCaption("Exposure: " + decimalText(state_.m_KVP));
        } else if (state_.m_KVP >= kLeastFilamentCurrent) {
            txtInfo_.setCaption("Fil. Current: " + decimalText(state_.m_KVP));
        }
    }
}

void Technique::serveMA(Control& field, bool /*repeated*/) {
    if (link_.m_OperatingPhase == Phase::Calibration && state_.m_CalibrationType != 0) {
        state_.m_CalibrationType = 0;
        context_.events.CalibrationMA.raise();
        item_.selectStation();
    }
    field.setCaption(state_.m_MADisplay);
}

void Technique::serveMADisplay(Control& field, bool repeated) {
    std::string& item = state_.m_MADisplay;
    // The item may have been forgotten since; then the report counts as new.
    const bool known = repeated && state_.m_CalibrationType >= 0;
    if (!known && link_.m_OperatingPhase == Phase::Calibration && !item.empty()) {
        if (item.starts_with('E')) {
            item_.selectParameter(characters(item, 2, 3));
        } else {
            item_.selectStation();
        }
    }
    item = characters(item, 1, 3);
    field.setCaption(item);
}

void Technique::fmessFocus(const FocalSpot& row, std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    std::int32_t& selected = state_.*row.selected;
    selected = toInt32(value);
    const bool service = isServiceMode(link_.m_OperatingPhase);
    if (!service && link_.EventEnabled) {
        (context_.events.*row.event).raise(selected);
    }
    Control& field = service ? txtFocusCal_ : txtFocus_;
    if (selected == 1) {
        field.setCaption(row.name);
    } else if (state_.*row.other == 0) {
        field.setCaption("");
    }
}

void Technique::fmessTM(std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    const std::int32_t mode = toInt16(value);
    if (isServiceMode(link_.m_OperatingPhase)) {
        return;
    }
    if (link_.EventEnabled) {
        context_.events.TMChangeValue.raise(mode);
    }
    const bool show = !context_.TempUserMode && state_.m_TechniqueMode != kNoTechniqueKeys;
    if (show) {
        lblWarning_.setVisible(true);
    }
    for (Control* key : cmbTM_) {
        if (show) {
            key->setVisible(true);
        }
        key->setBackColour(key->index() == mode ? kActiveColour : kNormalColour);
    }
    state_.m_TechniqueMode = mode;
}

void Technique::fmessPostDisplay(std::string_view value) {
    // Each field is kept as it came before it is read: a field that is no number ends the message there.
    state_.m_PostMA = characters(value, 1, 4);
    state_.m_PostMA = decimalText(toDouble(state_.m_PostMA));
    state_.m_PostMAS = characters(value, 5, 8);
    if (state_.m_PostMAS.starts_with('.')) {
        state_.m_PostMAS.insert(0, 1, '0');
    }
    state_.m_PostMS = characters(value, 9, 13);
    state_.m_PostMS = decimalText(toDouble(state_.m_PostMS));
    if (link_.EventEnabled) {
        context_.events.PostDisplay.raise(state_.m_PostMA, state_.m_PostMS, state_.m_PostMAS);
    }
}

} // namespace quillon
