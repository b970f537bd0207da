#include "model/ExposureControl.h"

#include <algorithm>
#include <string>

#include "base/Numbers.h"
#include "link/OutboundTable.h"
#include "model/Commands.h"
#include "model/ReportedSwitches.h"

namespace quillon {

namespace {

using State = GeneratorState;
using Events = LinkEvents;

// clang-format off
constexpr std::array kSwitches{
    SwitchRow{"fmessPhotomultiplier", &State::m_Photomultiplier, &Events::Photomultiplier,
              "cmbPhotomultiplier"},
    SwitchRow{"fmessDigitalAEC",      &State::m_DigitalAEC,      &Events::DigitalAEC,
              "cmbDigitalAEC"},
};

struct FieldRow {
    std::string_view property;
    PanelControl key;
};
constexpr std::array kFields{
    FieldRow{"AECFieldLeft",   "cmbAECFieldLeft"},
    FieldRow{"AECFieldCenter", "cmbAECFieldCenter"},
    FieldRow{"AECFieldRight",  "cmbAECFieldRight"},
};
// clang-format on

constexpr double kLastDensityKey = 8;

/// A report of one element: its number and its state, a digit each.
struct ElementReport {
    std::size_t index;
    bool on;
};

ElementReport elementReport(std::string_view value) {
    const auto index = static_cast<std::size_t>(toInt32(value.substr(0, 1)));
    return {index, toBoolean(value.substr(1, 1))};
}

/// Lights or darkens the key of an element; some elements have none.
void showElement(const std::vector<Control*>& keys, std::size_t index, bool on) {
    if (index < keys.size()) {
        showState(*keys[index], on);
    }
}

} // namespace

double densityOffset(const GeneratorState& state) {
    return (kLastDensityKey - state.m_MaxAECDensity) / 2;
}

ExposureControl::ExposureControl(ModelContext& context)
    : context_(context), state_(context.state), cmbAECDensity_(context.panel.all("cmbAECDensity")),
      cmbDAECDensity_(context.panel.all("cmbDAECDensity")),
      cmbAECFilmScreen_(context.panel.all("cmbAECFilmScreen")),
      txtAECBrightness_(context.panel["txtAECBrightness"]),
      txtDAECBrightness_(context.panel["txtDAECBrightness"]) {
    for (std::size_t field = 0; field < kFields.size(); ++field) {
        fieldKeys_[field] = context.panel.all(kFields[field].key);
    }
    bindHandlers();
    addOperations();
}

void ExposureControl::bindHandlers() {
    bindSwitches(context_, kSwitches);
    MessageDecoder& decoder = context_.decoder;
    decoder.bind("fmessMaxDensity", [this](std::string_view value) {
        if (isNumeric(value)) {
            state_.m_MaxAECDensity = toInt16(value);
        }
    });
    decoder.bind("fmessAECCommand", [this](std::string_view value) { fmessAECCommand(value); });
    decoder.bind("fmessAECField", [this](std::string_view value) { fmessAECField(value); });
    decoder.bind("fmessAECDensity", [this](std::string_view value) { fmessAECDensity(value); });
    decoder.bind("fmessAECFilmScreen", [this](std::string_view value) { fmessAECFilmScreen(value); });
    decoder.bind("fmessBrightness", [this](std::string_view value) { fmessBrightness(value); });
    decoder.bind("fmessRoadMapping", [this](std::string_view value) {
        if (!isNumeric(value)) {
            return;
        }
        state_.m_Roadmapping = toBoolean(value);
        if (context_.link.EventEnabled) {
            context_.events.Roadmapping.raise(state_.m_Roadmapping);
        }
    });
}

void ExposureControl::addOperations() {
    Operations& operations = context_.operations;
    operations.add("SetAECDensity", [this](std::int32_t Density) { SetAECDensity(Density); });
    operations.add("AECCommand",
                   [this](bool left, bool center, bool right, std::int32_t FilmScreen, std::int32_t Density) {
                       AECCommand(left, center, right, FilmScreen, Density);
                   });
    operations.add("AECCommandWithDefaults", [this](bool left, bool center, bool right) {
        AECCommand(left, center, right, kUnchanged, kUnchanged);
    });
    operations.add("AECDensityUp", [this] { stepAndSend(1); });
    operations.add("AECDensityDown", [this] { stepAndSend(-1); });
    operations.add("AECDensityUpLocal", [this] { stepLocally(1); });
    operations.add("AECDensityDownLocal", [this] { stepLocally(-1); });

    for (std::size_t field = 0; field < kFields.size(); ++field) {
        operations.addReadOnly(kFields[field].property, [this, field] { return state_.m_AECFields[field]; });
    }
    operations.addReadOnly("AECDensity", [this] { return state_.m_AECDensity; });
    operations.addReadOnly("AECFilmScreen", [this] { return AECFilmScreen(); });
    operations.addReadOnly("Roadmapping", [this] { return state_.m_Roadmapping; });
    operations.addWriteOnly("MaxAECDensity", [this](std::int32_t value) { setMaxAECDensity(value); });
}

bool ExposureControl::takesDensity(std::int32_t Density) const {
    // Without the range a step has no meaning.
    return state_.m_MaxAECDensity > 0 && Density >= 0 && Density <= state_.m_MaxAECDensity;
}

void ExposureControl::SetAECDensity(std::int32_t Density) {
    if (takesDensity(Density)) {
        context_.send.SendMessageWithDefaults("FN" + decimalText(Density), phasesOf("FN"));
    }
}

void ExposureControl::AECCommand(bool fieldLeft, bool fieldCenter, bool fieldRight, std::int32_t FilmScreen,
                                 std::int32_t Density) {
    std::string message = "AEC";
    for (const bool field : {fieldLeft, fieldCenter, fieldRight}) {
        message.push_back(field ? '1' : '0');
    }
    if (FilmScreen != kUnchanged || Density != kUnchanged) {
        message += decimalText(FilmScreen);
        message += decimalText(toInt32(Density - densityOffset(state_)));
    }
    context_.send.SendMessageWithDefaults(message, phasesOf("AEC"));
}

bool ExposureControl::stepDensity(std::int32_t by) {
    if (state_.m_MaxAECDensity <= 0) {
        return false;
    }
    // A density beyond a range that has shrunk meanwhile goes to its end.
    state_.m_AECDensity = std::clamp(state_.m_AECDensity + by, 0, state_.m_MaxAECDensity);
    return true;
}

void ExposureControl::stepAndSend(std::int32_t by) {
    if (stepDensity(by)) {
        SetAECDensity(state_.m_AECDensity);
    }
}

void ExposureControl::stepLocally(std::int32_t by) {
    if (stepDensity(by)) {
        context_.events.AECDensityChange.raise(state_.m_AECDensity, true);
    }
}

std::int32_t ExposureControl::AECFilmScreen() const {
    for (std::int32_t screen = 2; screen > 0; --screen) {
        if (state_.m_FilmScreens[static_cast<std::size_t>(screen)]) {
            return screen;
        }
    }
    return 0;
}

void ExposureControl::setMaxAECDensity(std::int32_t value) {
    state_.m_MaxAECDensity = toInt32((value - 4.0) * 2);
}

void ExposureControl::takeField(std::size_t field, bool on) {
    state_.m_AECFields[field] = on;
    if (context_.link.EventEnabled) {
        context_.events.AECFieldChange.raise(static_cast<std::int32_t>(field), on);
    }
    if (field < fieldKeys_.size()) {
        const bool configuration = context_.link.m_OperatingPhase == Phase::Configuration;
        showElement(fieldKeys_[field], configuration ? 1 : 0, on);
    }
}

void ExposureControl::fmessAECCommand(std::string_view value) {
    if (value.size() < kFields.size()) {
        return;
    }
    for (std::size_t field = 0; field < kFields.size(); ++field) {
        takeField(field, value[field] == '1');
    }
}

void ExposureControl::fmessAECField(std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    const ElementReport report = elementReport(value);
    if (report.index < state_.m_AECFields.size()) {
        takeField(report.index, report.on);
    }
}

void ExposureControl::fmessAECDensity(std::string_view value) {
    const std::int32_t step = toInt32(value.substr(0, 1));
    if (step > state_.m_MaxAECDensity || state_.m_MaxAECDensity == 0) {
        // The range is not known: ask for it, and for everything that depends on it.
        context_.commands.send(command("MaxDensityRequest"));
        context_.commands.send(command("AECRefresh"));
        return;
    }
    if (!isNumeric(value)) {
        return;
    }
    const bool on = toBoolean(value.substr(1, 1));
    const std::int32_t index = toInt32(step + densityOffset(state_));
    if (context_.link.EventEnabled) {
        context_.events.AECDensityChange.raise(index, on);
    }
    // A range wider than the keys leaves steps without one.
    const std::size_t key = index < 0 ? cmbAECDensity_.size() : static_cast<std::size_t>(index);
    if (on) {
        state_.m_AECDensity = step;
        for (std::size_t each = 0; each < cmbAECDensity_.size(); ++each) {
            showState(*cmbAECDensity_[each], each == key);
        }
    } else {
        showElement(cmbAECDensity_, key, false);
    }
    if (state_.m_WorkingMode >= kFirstDigitalMode) {
        showElement(cmbDAECDensity_, key, on);
    }
}

void ExposureControl::fmessAECFilmScreen(std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    const ElementReport report = elementReport(value);
    if (report.index >= state_.m_FilmScreens.size()) {
        return;
    }
    state_.m_FilmScreens[report.index] = report.on;
    if (context_.link.EventEnabled) {
        context_.events.AECFilmScreenChange.raise(static_cast<std::int32_t>(report.index), report.on);
    }
    showElement(cmbAECFilmScreen_, report.index, report.on);
}

void ExposureControl::fmessBrightness(std::string_view value) {
    if (!isNumeric(value)) {
        return;
    }
    state_.m_Brightness = toInt16(value);
    if (context_.link.EventEnabled) {
        context_.events.Brightness.raise(state_.m_Brightness);
    }
    const std::string shown = state_.m_Brightness == 0 ? "" : decimalText(state_.m_Brightness);
    txtAECBrightness_.setCaption(shown);
    if (state_.m_WorkingMode >= kFirstDigitalMode) {
        txtDAECBrightness_.setCaption(shown);
    }
}

} // namespace quillon
