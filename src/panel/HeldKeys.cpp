#include "panel/HeldKeys.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "base/Numbers.h"
#include "link/OutboundTable.h"
#include "link/SendQueue.h"

namespace quillon {

namespace {

constexpr std::int16_t kSlowTicks = 10;

// Another station has another calibration value; what is shown would be taken for its own.
constexpr std::array<PanelControl, 2> kStationKeys{"cmbMACalUp", "cmbMACalDown"};

// They make single steps, and their release stops whatever repeats.
constexpr std::array<PanelControl, 2> kStoppingKeys{"cmbKVPCalUp", "cmbKVPCalDown"};

template <int kBy> void stepsDensity(const PanelSubjects& subjects, int /*index*/) {
    subjects.exposureControl.stepLocally(kBy);
}

} // namespace

/// The condition for a press; otherwise it does nothing.
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

    PanelControl key;
    PanelControl twin; ///< empty for none
    /// Beginning of the names of the press and release routines, which end in "MouseDown" and "MouseUp";
    /// empty for keys that have no public routines.
    std::string_view routine;
    Condition condition;
    Pace pace;
    KeyAct firstStep;
    KeyWork slowRoutine; ///< the first ten ticks
    KeyWork fastRoutine;
    bool sendsDensity = false; ///< at the release: the generator hears of a held density key only once
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
        Row{"cmbKVPUp", {}, "KVPUp", Always, kKVP,
            sends<command("KVPOneUp")>, sends<command("KVPUp")>, sends<command("KVPUpUp")>},
        Row{"cmbKVPDown", {}, "KVPDown", Always, kKVP,
            sends<command("KVPOneDown")>, sends<command("KVPDown")>, sends<command("KVPDownDown")>},
        Row{"cmbMAUp", "cmbMACalUp", "MAUp", Always, kMA,
            sends<command("MAOneUp")>, sends<command("MAUp")>, sends<command("MAUp")>},
        Row{"cmbMADown", "cmbMACalDown", "MADown", Always, kMA,
            sends<command("MAOneDown")>, sends<command("MADown")>, sends<command("MADown")>},
        Row{"cmbMSUp", {}, "MSUp", Always, kMS,
            sends<command("MSOneUp")>, sends<command("MSUp")>, sends<command("MSUp")>},
        Row{"cmbMSDown", {}, "MSDown", Always, kMS,
            sends<command("MSOneDown")>, sends<command("MSDown")>, sends<command("MSDown")>},
        Row{"cmbMASUp", "cmbMASCalUp", "MASUp", Always, kMAS,
            sends<command("MASOneUp")>, sends<command("MASUp")>, sends<command("MASUp")>},
        Row{"cmbMASDown", "cmbMASCalDown", "MASDown", Always, kMA,
            sends<command("MASOneDown")>, sends<command("MASDown")>, sends<command("MASDown")>},
        Row{"cmbFlKVPUp", {}, "FlKVPUp", NormalPhase, kFlKVP,
            does<&Fluoroscopy::FlKVPOneUp>.asking("FLKU"), sends<command("FlKVPUp")>, sends<command("FlKVPUpUp")>},
        Row{"cmbFlKVPUp", {}, "FlKVPUp", Always, kFlStep,
            does<&Fluoroscopy::FlKVPOneUp>.asking("FLKU"), does<&Fluoroscopy::FlKVPOneUp>, does<&Fluoroscopy::FlKVPOneUp>},
        Row{"cmbFlKVPDown", {}, "FlKVPDown", NormalPhase, kFlKVP,
            does<&Fluoroscopy::FlKVPOneDown>.asking("FLKD"), sends<command("FlKVPDown")>, sends<command("FlKVPDownDown")>},
        Row{"cmbFlKVPDown", {}, "FlKVPDown", Always, kFlStep,
            does<&Fluoroscopy::FlKVPOneDown>.asking("FLKD"), does<&Fluoroscopy::FlKVPOneDown>, does<&Fluoroscopy::FlKVPOneDown>},
        Row{"cmbFlPPSUp", {}, "FLPPSUp", Always, kPPS,
            sends<command("FlPPSOneUp")>, sends<command("FlPPSUp")>, sends<command("FlPPSUp")>},
        Row{"cmbFlPPSDown", {}, "FLPPSDown", Always, kPPS,
            sends<command("FlPPSOneDown")>, sends<command("FlPPSDown")>, sends<command("FlPPSDown")>},
        Row{"cmbDAECBrightnessUp", "cmbAECBrightnessUp", "BrightnessUp", DigitalMode, kBright,
            sends<command("BrightnessOneUp")>, sends<command("BrightnessUp")>, sends<command("BrightnessUpUp")>},
        Row{"cmbDAECBrightnessDown", {}, "BrightnessDown", DigitalMode, kBright,
            sends<command("BrightnessOneDown")>, sends<command("BrightnessDown")>, sends<command("BrightnessDownDown")>},
        Row{"cmbAECDensityUp", "cmbDAECDensityUp", "AECDensityUp", FieldOn, kDensity,
            {stepsDensity<1>, "FN"}, stepsDensity<1>, stepsDensity<1>, true},
        Row{"cmbAECDensityDown", "cmbDAECDensityDown", "AECDensityDown", FieldOn, kDensity,
            {stepsDensity<-1>, "FN"}, stepsDensity<-1>, stepsDensity<-1>, true},
        Row{"cmbCalValueUp", {}, "", CalibratingParameter, kParameter,
            sends<command("CalibrationValueUp")>, sends<command("CalibrationValueUp")>, sends<command("CalibrationValueUp")>},
        Row{"cmbCalValueUp", {}, "", Calibrating, kStation,
            sends<command("CalibrationValueUp")>, sends<command("CalibrationValueUp")>, sends<command("CalibrationValueUp")>},
        Row{"cmbCalValueDown", {}, "", CalibratingParameter, kParameter,
            sends<command("CalibrationValueDown")>, sends<command("CalibrationValueDown")>, sends<command("CalibrationValueDown")>},
        Row{"cmbCalValueDown", {}, "", Calibrating, kStation,
            sends<command("CalibrationValueDown")>, sends<command("CalibrationValueDown")>, sends<command("CalibrationValueDown")>},
    };
    // clang-format on
    return kTable;
}

HeldKeys::HeldKeys(const PanelSubjects& subjects, KeyNeeds& needs)
    : subjects_(subjects), context_(subjects.context), link_(context_.link),
      tmrAutoRepeat_(context_.panel.timer("tmrAutoRepeat")), txtCalValue_(context_.panel["txtCalValue"]),
      sldCalValue_(context_.panel["sldCalValue"]) {
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
        addNeeds(hold, needs);
    }
    for (const PanelControl name : kStoppingKeys) {
        context_.panel[name].on.release = [this] { stop(); };
    }
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
    for (const PanelControl name : {hold.rows.front().key, hold.rows.front().twin}) {
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

void HeldKeys::addNeeds(const Hold& hold, KeyNeeds& needs) {
    const Row& row = hold.rows.front();
    for (const PanelControl name : {row.key, row.twin}) {
        if (name.empty()) {
            continue;
        }
        const bool station = std::find(kStationKeys.begin(), kStationKeys.end(), name) != kStationKeys.end();
        needs.add(context_.panel[name], row.firstStep.asks, [this, &hold, station] {
            if (station && link_.m_OperatingPhase != Phase::Calibration) {
                return Hindrance::Phase;
            }
            const bool any = std::any_of(hold.rows.begin(), hold.rows.end(),
                                         [this](const Row& each) { return holds(each.condition); });
            if (any && hold.rows.front().sendsDensity && context_.state.m_MaxAECDensity <= 0) {
                return Hindrance::NoDensity;
            }
            return any ? Hindrance::None : hindranceOf(hold.rows.front().condition);
        });
    }
}

Hindrance HeldKeys::hindranceOf(Condition condition) {
    switch (condition) {
    case Condition::DigitalMode:
        return Hindrance::NotDigital;
    case Condition::FieldOn:
        return Hindrance::NoField;
    case Condition::Always:
    case Condition::NormalPhase:
    case Condition::CalibratingParameter:
    case Condition::Calibrating:
        break;
    }
    return Hindrance::Phase;
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
    if (context_.send.allows(phasesOf("MA"))) {
        txtCalValue_.setCaption("");
        sldCalValue_.setValue(0);
        sldCalValue_.setToolTip(decimalText(sldCalValue_.value()));
    }
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
    row->firstStep(subjects_, 0);
    m_AutorepeatFastInterval = intervals_.*row->pace.fast;
    m_AutorepeatTicks = 0;
    tmrAutoRepeat_.start(intervals_.*row->pace.slow);
    m_AutorepeatSlowRoutine = row->slowRoutine;
    m_AutorepeatFastRoutine = row->fastRoutine;
    link_.m_StatusUpdateActive = false;
}

void HeldKeys::release(Hold& hold) {
    stop();
    if (std::exchange(hold.stepped, false) && hold.rows.front().sendsDensity) {
        subjects_.exposureControl.SetAECDensity(context_.state.m_AECDensity);
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
        m_AutorepeatSlowRoutine(subjects_, 0);
    } else {
        if (m_AutorepeatTicks == kSlowTicks) {
            ++m_AutorepeatTicks;
            tmrAutoRepeat_.start(m_AutorepeatFastInterval);
        }
        m_AutorepeatFastRoutine(subjects_, 0);
    }
    // A full queue would lose the step, so the repeat ends; the key has to be pressed again.
    if (context_.send.queueCount() >= SendQueue::kCapacity) {
        tmrAutoRepeat_.stop();
    }
}

} // namespace quillon
