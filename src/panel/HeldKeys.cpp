#include "panel/HeldKeys.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "base/Numbers.h"
#include "link/SendQueue.h"

namespace quillon {

namespace {

constexpr std::int16_t kSlowTicks = 10;

// Another station has another calibration value; what is shown would be taken for its own.
constexpr std::array<std::string_view, 2> kStationKeys{"cmbMACalUp", "cmbMACalDown"};

} // namespace

/// What a press must find; otherwise it does nothing.
enum class HeldKeys::Condition : std::uint8_t {
    Always,
    NormalPhase, ///< no exposure is going on
    DigitalMode,
    FieldOn, ///< a measuring field is selected
    CalibratingParameter,
    Calibrating,
};

/// What holding a key does.
struct HeldKeys::Row {
    struct Pace {
        std::int16_t Intervals::*slow; ///< up to the eleventh tick
        std::int16_t Intervals::*fast;
    };

    std::string_view key;
    std::string_view twin;
    /// Beginning of the names of the press and release routines, which end in "MouseDown" and "MouseUp";
    /// empty for keys that have no public routines.
    std::string_view routine;
    Condition condition;
    Pace pace;
    std::string_view firstStep;
    std::string_view slowRoutine; ///< the first ten ticks
    std::string_view fastRoutine;
    /// Called at the release with the density: the generator hears of a held density key only once.
    std::string_view densityRoutine = {};
};

std::span<const HeldKeys::Row> HeldKeys::table() {
    using enum Condition;
    using I = Intervals;
    static constexpr Row::Pace kKVP{&I::KVPAutorepeatSlowInterval, &I::KVPAutorepeatFastInterval};
    static constexpr Row::Pace kMA{&I::MAAutorepeatSlowInterval, &I::MAAutorepeatSlowInterval};
    static constexpr Row::Pace kMAS{&I::MASAutorepeatSlowInterval, &I::MASAutorepeatSlowInterval};
    static constexpr Row::Pace kMS{&I::m_MSAutorepeatInterval, &I::m_MSAutorepeatInterval};
    static constexpr Row::Pace kFlKVP{&I::m_FlKVPSlowInterval, &I::m_FlKVPFastInterval};
    static constexpr Row::Pace kFlStep{&I::m_FlKVPOneStepInterval, &I::m_FlKVPOneStepInterval};
    static constexpr Row::Pace kPPS{&I::FLPPSSlowInterval, &I::FLPPSSlowInterval};
    static constexpr Row::Pace kBright{&I::BrightnessSlowInterval, &I::BrightnessFastInterval};
    static constexpr Row::Pace kDensity{&I::DensitySlowInterval, &I::DensitySlowInterval};
    static constexpr Row::Pace kParameter{&I::calibration, &I::calibration};
    static constexpr Row::Pace kStation{&I::calibration, &I::stationFast};
    // clang-format off
    static constexpr std::array kTable{
        Row{"cmbKVPUp", "", "KVPUp", Always, kKVP,
            "KVPOneUp", "KVPUp", "KVPUpUp"},
        Row{"cmbKVPDown", "", "KVPDown", Always, kKVP,
            "KVPOneDown", "KVPDown", "KVPDownDown"},
        Row{"cmbMAUp", "cmbMACalUp", "MAUp", Always, kMA,
            "MAOneUp", "MAUp", "MAUp"},
        Row{"cmbMADown", "cmbMACalDown", "MADown", Always, kMA,
            "MAOneDown", "MADown", "MADown"},
        Row{"cmbMSUp", "", "MSUp", Always, kMS,
            "MSOneUp", "MSUp", "MSUp"},
        Row{"cmbMSDown", "", "MSDown", Always, kMS,
            "MSOneDown", "MSDown", "MSDown"},
        Row{"cmbMASUp", "cmbMASCalUp", "MASUp", Always, kMAS,
            "MASOneUp", "MASUp", "MASUp"},
        Row{"cmbMASDown", "cmbMASCalDown", "MASDown", Always, kMA,
            "MASOneDown", "MASDown", "MASDown"},
        Row{"cmbFlKVPUp", "", "FlKVPUp", NormalPhase, kFlKVP,
            "FlKVPOneUp", "FlKVPUp", "FlKVPUpUp"},
        Row{"cmbFlKVPUp", "", "FlKVPUp", Always, kFlStep,
            "FlKVPOneUp", "FlKVPOneUp", "FlKVPOneUp"},
        Row{"cmbFlKVPDown", "", "FlKVPDown", NormalPhase, kFlKVP,
            "FlKVPOneDown", "FlKVPDown", "FlKVPDownDown"},
        Row{"cmbFlKVPDown", "", "FlKVPDown", Always, kFlStep,
            "FlKVPOneDown", "FlKVPOneDown", "FlKVPOneDown"},
        Row{"cmbFlPPSUp", "", "FLPPSUp", Always, kPPS,
            "FlPPSOneUp", "FlPPSUp", "FlPPSUp"},
        Row{"cmbFlPPSDown", "", "FLPPSDown", Always, kPPS,
            "FlPPSOneDown", "FlPPSDown", "FlPPSDown"},
        Row{"cmbDAECBrightnessUp", "cmbAECBrightnessUp", "BrightnessUp", DigitalMode, kBright,
            "BrightnessOneUp", "BrightnessUp", "BrightnessUpUp"},
        Row{"cmbDAECBrightnessDown", "", "BrightnessDown", DigitalMode, kBright,
            "BrightnessOneDown", "BrightnessDown", "BrightnessDownDown"},
        Row{"cmbAECDensityUp", "cmbDAECDensityUp", "AECDensityUp", FieldOn, kDensity,
            "AECDensityUpLocal", "AECDensityUpLocal", "AECDensityUpLocal", "SetAECDensity"},
        Row{"cmbAECDensityDown", "cmbDAECDensityDown", "AECDensityDown", FieldOn, kDensity,
            "AECDensityDownLocal", "AECDensityDownLocal", "AECDensityDownLocal", "SetAECDensity"},
        Row{"cmbCalValueUp", "", "", CalibratingParameter, kParameter,
            "CalibrationValueUp", "CalibrationValueUp", "CalibrationValueUp"},
        Row{"cmbCalValueUp", "", "", Calibrating, kStation,
            "CalibrationValueUp", "CalibrationValueUp", "CalibrationValueUp"},
        Row{"cmbCalValueDown", "", "", CalibratingParameter, kParameter,
            "CalibrationValueDown", "CalibrationValueDown", "CalibrationValueDown"},
        Row{"cmbCalValueDown", "", "", Calibrating, kStation,
            "CalibrationValueDown", "CalibrationValueDown", "CalibrationValueDown"},
    };
    // clang-format on
    return kTable;
}

HeldKeys::HeldKeys(ModelContext& context)
    : context_(context), link_(context.link), tmrAutoRepeat_(context.panel.timer("tmrAutoRepeat")),
      txtCalValue_(context.panel["txtCalValue"]), sldCalValue_(context.panel["sldCalValue"]) {
    const auto rows = table();
    for (auto first = rows.begin(); first != rows.end();) {
        const auto last =
            std::find_if(first, rows.end(), [first](const Row& row) { return row.key != first->key; });
        holds_.push_back({std::span(first, last)});
        first = last;
    }
    for (Hold& hold : holds_) {
        addRoutines(hold);
        wireKeys(hold);
    }
    context_.panel["cmbAECBrightnessDown"].on.release = [this] {
        context_.operations.call("BrightnessOneDown");
    };
    tmrAutoRepeat_.setTick([this] { tick(); });
    addIntervals();
}

void HeldKeys::addIntervals() {
    Operations& operations = context_.operations;
    operations.addMember("KVPAutorepeatSlowInterval", intervals_.KVPAutorepeatSlowInterval);
    operations.addMember("KVPAutorepeatFastInterval", intervals_.KVPAutorepeatFastInterval);
    operations.addMember("MAAutorepeatSlowInterval", intervals_.MAAutorepeatSlowInterval);
    operations.addMember("MASAutorepeatSlowInterval", intervals_.MASAutorepeatSlowInterval);
    operations.addMember("FLPPSSlowInterval", intervals_.FLPPSSlowInterval);
    operations.addWriteOnly("BrightnessSlowInterval",
                            [this](std::int16_t ms) { intervals_.BrightnessSlowInterval = ms; });
    operations.addMember("BrightnessFastInterval", intervals_.BrightnessFastInterval);
    operations.addMember("DensitySlowInterval", intervals_.DensitySlowInterval);
}

void HeldKeys::addRoutines(Hold& hold) {
    const std::string routine(hold.rows.front().routine);
    if (!routine.empty()) {
        context_.operations.add(routine + "MouseDown", [this, &hold] { press(hold); });
        context_.operations.add(routine + "MouseUp", [this, &hold] { release(hold); });
    }
}

void HeldKeys::wireKeys(Hold& hold) {
    for (const std::string_view name : {hold.rows.front().key, hold.rows.front().twin}) {
        if (name.empty()) {
            continue;
        }
        ControlHandlers& on = context_.panel[name].on;
        if (std::find(kStationKeys.begin(), kStationKeys.end(), name) == kStationKeys.end()) {
            on.press = [this, &hold] { press(hold); };
        } else {
            on.press = [this, &hold] {
                if (leaveStation()) {
                    press(hold);
                }
            };
        }
        on.release = [this, &hold] { release(hold); };
        on.cancel = [this, &hold] { cancel(hold); };
    }
}

bool HeldKeys::holds(Condition condition) const {
    const GeneratorState& state = context_.state;
    const bool calibrating =
        link_.m_OperatingPhase == Phase::Calibration || link_.m_OperatingPhase == Phase::Autocalibration;
    switch (condition) {
    case Condition::Always:
        return true;
    case Condition::NormalPhase:
        return link_.m_Phase == Phase::NormalOperation;
    case Condition::DigitalMode:
        return state.m_WorkingMode >= kFirstDigitalMode;
    case Condition::FieldOn:
        return state.m_AECFields[0] || state.m_AECFields[1] || state.m_AECFields[2];
    case Condition::CalibratingParameter:
        return calibrating && (state.m_CalibrationType == 1 || state.m_CalibrationType == 2);
    case Condition::Calibrating:
        return calibrating;
    }
    return false;
}

bool HeldKeys::leaveStation() {
    if (link_.m_OperatingPhase != Phase::Calibration) {
        return false;
    }
    txtCalValue_.setCaption("");
    sldCalValue_.setValue(0);
    sldCalValue_.setToolTip(decimalText(sldCalValue_.value()));
    return true;
}

void HeldKeys::press(Hold& hold) {
    const auto row = std::find_if(hold.rows.begin(), hold.rows.end(),
                                  [this](const Row& each) { return holds(each.condition); });
    hold.stepped = row != hold.rows.end();
    if (!hold.stepped) {
        return;
    }
    // Before the timer runs: the first step may still wait for its acknowledgement.
    context_.operations.call(row->firstStep);
    m_AutorepeatFastInterval = intervals_.*row->pace.fast;
    m_AutorepeatTicks = 0;
    tmrAutoRepeat_.start(intervals_.*row->pace.slow);
    m_AutorepeatSlowRoutine = row->slowRoutine;
    m_AutorepeatFastRoutine = row->fastRoutine;
    link_.m_StatusUpdateActive = false;
}

void HeldKeys::release(Hold& hold) {
    stop();
    const std::string_view densityRoutine = hold.rows.front().densityRoutine;
    if (std::exchange(hold.stepped, false) && !densityRoutine.empty()) {
        context_.operations.call(densityRoutine, {context_.state.m_AECDensity});
    }
}

void HeldKeys::cancel(Hold& hold) {
    stop();
    hold.stepped = false;
}

void HeldKeys::stop() {
    tmrAutoRepeat_.stop();
    link_.m_StatusUpdateActive = true;
}

void HeldKeys::tick() {
    if (m_AutorepeatTicks < kSlowTicks) {
        ++m_AutorepeatTicks;
        context_.operations.call(m_AutorepeatSlowRoutine);
    } else {
        if (m_AutorepeatTicks == kSlowTicks) {
            ++m_AutorepeatTicks;
            tmrAutoRepeat_.start(m_AutorepeatFastInterval);
        }
        context_.operations.call(m_AutorepeatFastRoutine);
    }
    // What the queue cannot take would be lost. The key has to be pressed anew.
    if (context_.send.queueCount() >= SendQueue::kCapacity) {
        tmrAutoRepeat_.stop();
    }
}

} // namespace quillon
