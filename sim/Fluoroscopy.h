#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <functional>
#include <span>
#include <string>

namespace simulator {

/// Fluoroscopy: its values and switches, the foot switch, and the time it has run.
class Fluoroscopy {
public:
    /// `second` is told of every second of radiation, with kVp and mA.
    Fluoroscopy(Machine& machine, std::function<void(double kvp, double ma)> second)
        : machine_(machine), second_(std::move(second)) {}

    /// The commands of a machine with fluoroscopy, or of one without.
    [[nodiscard]] static std::span<const Row<Fluoroscopy>> rows(GeneratorKind kind);
    void powerUp();

    // The foot switch; each returns why it had no effect, or nothing.
    std::string start();
    std::string stop();
    void halt();

    // Values of a program; each reports what it took. False: there is no such value.
    bool chooseKvp(double kvp);
    bool choosePulses(double pulses);
    bool chooseStabilisation(double on);
    bool chooseHighDose(double on);
    bool chooseContrast(double step);
    bool chooseTracking(double curve);

private:
    bool tellKvp(const Request&) { return sayKvp(), true; }
    bool setKvp(const Request& request) { return chooseKvp(*request.number); }
    bool stepKvp(const Request& request);
    bool tellTime(const Request&) { return sayTime(), true; }
    bool resetTime(const Request& request);
    bool resetAlarm(const Request& request);
    bool tellPulses(const Request&) { return sayPulses(), true; }
    bool setPulses(const Request& request);
    bool stepPulses(const Request& request);
    bool tellStabilisation(const Request&) { return sayStabilisation(), true; }
    bool setStabilisation(const Request& request);
    bool setMagnification(const Request& request);
    bool setHighDose(const Request& request);
    bool stepMa(const Request& request);
    bool setContrast(const Request& request) { return chooseContrast(*request.number); }
    bool stepContrast(const Request& request);
    bool setTracking(const Request& request) { return chooseTracking(*request.number); }
    bool stepTracking(const Request& request);
    bool defineCurve(const Request& request);
    bool refresh(const Request& request);
    bool refreshWithout(const Request& request);

    void tick();
    void sayKvp();
    void sayTime();
    void sayPulses();
    void sayStabilisation();
    void sayMagnification(int step);
    void sayHighDose();
    void sayAlarm();
    void sayMa();
    void sayContrast();
    void sayTracking();

    Machine& machine_;
    std::function<void(double, double)> second_;
    Agenda::Ticket next_ = Agenda::kNone;
    int kvp_ = 0;
    int seconds_ = 0;
    int pulses_ = 0;
    int magnification_ = 0;
    int maTenths_ = 0;
    int contrast_ = 0;
    int tracking_ = 0;
    bool stabilised_ = false;
    bool highDose_ = false;
    bool alarm_ = false;
};

} // namespace simulator
