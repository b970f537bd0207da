#include "sim/Fluoroscopy.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace simulator {

namespace {

constexpr int kLowestKvp = 40;
constexpr int kHighestKvp = 110;
constexpr int kLowestMaTenths = 5;
constexpr int kHighestMaTenths = 60;
constexpr int kHighestContrast = 2;
constexpr int kMagnifications = 4;
constexpr int kCurves = 8;
constexpr int kAlarmSeconds = 300;
constexpr int kReportSeconds = 5;

/// Pulses a second; 0 is continuous.
constexpr int kPulses[] = {0, 1, 2, 3, 4, 6, 8, 12, 15, 25, 30};

bool whole(double value, int low, int high) {
    return value == std::floor(value) && value >= low && value <= high;
}

std::string flag(std::string_view mnemonic, bool on) {
    return std::string(mnemonic) + (on ? "1" : "0");
}

} // namespace

std::span<const Row<Fluoroscopy>> Fluoroscopy::rows(GeneratorKind kind) {
    using F = Fluoroscopy;
    // clang-format off
    static constexpr Row<Fluoroscopy> withFluoroscopy[] = {
        {"FLF",   kReadyOrFluoro, Takes::Nothing,         &F::refresh},
        {"FLK",   kReadyOrFluoro, Takes::Number,          &F::setKvp},
        {"FLK?",  kReadyOrFluoro, Takes::Nothing,         &F::tellKvp},
        {"FLK+",  kReadyOrFluoro, Takes::Nothing,         &F::stepKvp, 1},
        {"FLK++", kReady,         Takes::Nothing,         &F::stepKvp, 5},
        {"FLKU",  kReadyOrFluoro, Takes::Nothing,         &F::stepKvp, 1},
        {"FLK-",  kReadyOrFluoro, Takes::Nothing,         &F::stepKvp, -1},
        {"FLK--", kReady,         Takes::Nothing,         &F::stepKvp, -5},
        {"FLKD",  kReadyOrFluoro, Takes::Nothing,         &F::stepKvp, -1},
        {"FLT",   kReadyOrFluoro, Takes::Nothing,         &F::tellTime},
        {"FLT?",  kReadyOrFluoro, Takes::Nothing,         &F::tellTime},
        {"FLR",   kReadyOrFluoro, Takes::Nothing,         &F::resetTime},
        {"FLAR",  kReadyOrFluoro, Takes::Nothing,         &F::resetAlarm},
        {"FLP",   kReadyOrFluoro, Takes::NumberOrNothing, &F::setPulses},
        {"FLP?",  kReadyOrFluoro, Takes::Nothing,         &F::tellPulses},
        {"FLP+",  kReadyOrFluoro, Takes::Nothing,         &F::stepPulses, 1},
        {"FLPU",  kReadyOrFluoro, Takes::Nothing,         &F::stepPulses, 1},
        {"FLP-",  kReadyOrFluoro, Takes::Nothing,         &F::stepPulses, -1},
        {"FLPD",  kReadyOrFluoro, Takes::Nothing,         &F::stepPulses, -1},
        {"FLA",   kReadyOrFluoro, Takes::NumberOrNothing, &F::setStabilisation},
        {"ABC",   kReadyOrFluoro, Takes::NumberOrNothing, &F::setStabilisation},
        {"FLA?",  kReadyOrFluoro, Takes::Nothing,         &F::tellStabilisation},
        {"FLM",   kReadyOrFluoro, Takes::Number,          &F::setMagnification},
        {"FLHD",  kReadyOrFluoro, Takes::NumberOrNothing, &F::setHighDose},
        {"FLMA+", kReadyOrFluoro, Takes::Nothing,         &F::stepMa, 1},
        {"FLMAU", kReadyOrFluoro, Takes::Nothing,         &F::stepMa, 1},
        {"FLMA-", kReadyOrFluoro, Takes::Nothing,         &F::stepMa, -1},
        {"FLMAD", kReadyOrFluoro, Takes::Nothing,         &F::stepMa, -1},
        {"FLC",   kReadyOrFluoro, Takes::Number,          &F::setContrast},
        {"FLC+",  kReadyOrFluoro, Takes::Nothing,         &F::stepContrast, 1},
        {"FLC-",  kReadyOrFluoro, Takes::Nothing,         &F::stepContrast, -1},
        {"KVT",   kReadyOrFluoro, Takes::Number,          &F::setTracking},
        {"KVT+",  kReadyOrFluoro, Takes::Nothing,         &F::stepTracking, 1},
        {"KVT-",  kReadyOrFluoro, Takes::Nothing,         &F::stepTracking, -1},
        {"KVTF",  kReadyOrFluoro, Takes::Text,            &F::defineCurve},
    };
    static constexpr Row<Fluoroscopy> without[] = {
        {"FLF",   kReady, Takes::Nothing,         &F::refreshWithout},
    };
    // clang-format on
    if (kind == GeneratorKind::Rad) {
        return without;
    }
    return withFluoroscopy;
}

void Fluoroscopy::powerUp() {
    halt();
    kvp_ = 70;
    seconds_ = 0;
    pulses_ = 15;
    magnification_ = 0;
    maTenths_ = 20;
    contrast_ = 0;
    tracking_ = 0;
    stabilised_ = highDose_ = alarm_ = false;
}

std::string Fluoroscopy::start() {
    if (machine_.options.kind == GeneratorKind::Rad) {
        return "this generator has no fluoroscopy";
    }
    if (machine_.phase() != Phase::NormalOperation) {
        return "no fluoroscopy in phase " + std::to_string(quillon::numberOf(machine_.phase()));
    }
    machine_.go(Phase::FluoroExposure);
    machine_.say("FLX1");
    next_ = machine_.after(1000, [this] { tick(); });
    return {};
}

std::string Fluoroscopy::stop() {
    if (machine_.phase() != Phase::FluoroExposure) {
        return "no fluoroscopy runs";
    }
    halt();
    machine_.say("FLX0");
    sayTime();
    machine_.enter(Phase::NormalOperation);
    return {};
}

void Fluoroscopy::halt() {
    machine_.agenda.cancel(next_);
}

void Fluoroscopy::tick() {
    ++seconds_;
    second_(kvp_, maTenths_ / 10.0);
    if (seconds_ % kReportSeconds == 0) {
        sayTime();
    }
    if (seconds_ % kAlarmSeconds == 0 && !alarm_) {
        alarm_ = true;
        sayAlarm();
    }
    next_ = machine_.after(1000, [this] { tick(); });
}

bool Fluoroscopy::chooseKvp(double kvp) {
    kvp_ = static_cast<int>(std::lround(std::clamp<double>(kvp, kLowestKvp, kHighestKvp)));
    sayKvp();
    return true;
}

bool Fluoroscopy::choosePulses(double pulses) {
    const auto found = std::ranges::find_if(kPulses, [pulses](int rate) { return rate == pulses; });
    if (found == std::end(kPulses)) {
        return false;
    }
    pulses_ = *found;
    sayPulses();
    return true;
}

bool Fluoroscopy::chooseStabilisation(double on) {
    stabilised_ = on != 0;
    sayStabilisation();
    return true;
}

bool Fluoroscopy::chooseHighDose(double on) {
    highDose_ = on != 0;
    sayHighDose();
    return true;
}

bool Fluoroscopy::chooseContrast(double step) {
    if (!whole(step, 0, kHighestContrast)) {
        return false;
    }
    contrast_ = static_cast<int>(step);
    sayContrast();
    return true;
}

bool Fluoroscopy::chooseTracking(double curve) {
    if (!whole(curve, 0, kCurves)) {
        return false;
    }
    tracking_ = static_cast<int>(curve);
    sayTracking();
    return true;
}

bool Fluoroscopy::stepKvp(const Request& request) {
    return chooseKvp(kvp_ + request.amount);
}

bool Fluoroscopy::resetTime(const Request&) {
    seconds_ = 0;
    sayTime();
    return true;
}

bool Fluoroscopy::resetAlarm(const Request&) {
    alarm_ = false;
    sayAlarm();
    return true;
}

bool Fluoroscopy::setPulses(const Request& request) {
    if (request.number) {
        return choosePulses(*request.number);
    }
    const auto next = std::ranges::find(kPulses, pulses_) + 1;
    return choosePulses(next == std::end(kPulses) ? kPulses[0] : *next);
}

bool Fluoroscopy::stepPulses(const Request& request) {
    // The steps stay among the pulsed rates; continuous is chosen as such.
    const auto at = std::ranges::find(kPulses, pulses_) - std::begin(kPulses) + request.amount;
    const auto last = static_cast<std::ptrdiff_t>(std::size(kPulses)) - 1;
    return choosePulses(kPulses[std::clamp<std::ptrdiff_t>(at, 1, last)]);
}

bool Fluoroscopy::setStabilisation(const Request& request) {
    return chooseStabilisation(request.number ? *request.number : !stabilised_);
}

bool Fluoroscopy::setMagnification(const Request& request) {
    if (!whole(*request.number, 0, kMagnifications - 1)) {
        return false;
    }
    const int before = magnification_;
    magnification_ = static_cast<int>(*request.number);
    sayMagnification(before);
    if (before != magnification_) {
        sayMagnification(magnification_);
    }
    return true;
}

bool Fluoroscopy::setHighDose(const Request& request) {
    return chooseHighDose(request.number ? *request.number : !highDose_);
}

bool Fluoroscopy::stepMa(const Request& request) {
    maTenths_ = std::clamp(maTenths_ + request.amount, kLowestMaTenths, kHighestMaTenths);
    sayMa();
    return true;
}

bool Fluoroscopy::stepContrast(const Request& request) {
    return chooseContrast(std::clamp(contrast_ + request.amount, 0, kHighestContrast));
}

bool Fluoroscopy::stepTracking(const Request& request) {
    return chooseTracking(std::clamp(tracking_ + request.amount, 1, kCurves));
}

bool Fluoroscopy::defineCurve(const Request& request) {
    int curve = 0;
    int a = 0;
    int b = 0;
    int ma = 0;
    int ms = 0;
    int length = 0;
    const std::string text(request.argument);
    const int fields =
        std::sscanf(text.c_str(), "%1dA%3dB%2dMA%5dMS%5d%n", &curve, &a, &b, &ma, &ms, &length);
    return fields == 5 && static_cast<std::size_t>(length) == text.size() && whole(curve, 1, kCurves);
}

bool Fluoroscopy::refresh(const Request&) {
    sayKvp();
    sayTime();
    sayPulses();
    sayMa();
    sayStabilisation();
    sayHighDose();
    sayAlarm();
    for (int step = 0; step < kMagnifications; ++step) {
        sayMagnification(step);
    }
    sayContrast();
    sayTracking();
    machine_.say("FLD1");
    return true;
}

bool Fluoroscopy::refreshWithout(const Request&) {
    machine_.say("FLD0");
    return true;
}

void Fluoroscopy::sayKvp() {
    machine_.say("FLK" + std::to_string(kvp_));
}

void Fluoroscopy::sayTime() {
    machine_.say("FLT" + std::to_string(seconds_));
}

void Fluoroscopy::sayPulses() {
    machine_.say("FLP" + std::to_string(pulses_));
}

void Fluoroscopy::sayStabilisation() {
    machine_.say(flag("FLA", stabilised_));
}

void Fluoroscopy::sayMagnification(int step) {
    machine_.say(flag("FLM" + std::to_string(step), step == magnification_));
}

void Fluoroscopy::sayHighDose() {
    machine_.say(flag("FLHD", highDose_));
}

void Fluoroscopy::sayAlarm() {
    machine_.say(flag("FLAR", alarm_));
}

void Fluoroscopy::sayMa() {
    machine_.say("FLMA" + std::to_string(maTenths_));
}

void Fluoroscopy::sayContrast() {
    machine_.say("FLC" + std::to_string(contrast_) + "1");
}

void Fluoroscopy::sayTracking() {
    machine_.say("KVT" + std::to_string(tracking_));
}

} // namespace simulator
