#include "sim/Assembly.h"

#include "sim/Formats.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr double kFluoroHeatMas = 0.1; // what a second of fluoroscopy warms beside an exposure's mAs

/// A poll is answered by its value. There is no AK for it: it would acknowledge whichever command is pending.
bool answeredByValue(std::string_view text) {
    return text == "ST" || text == "HU";
}

} // namespace

Assembly::Assembly(Options options)
    : machine(std::move(options)), plug(machine.options.seed), power(machine, [this] { stopRays(); }),
      tube(machine), technique(machine), exposureControl(machine), records(machine),
      fluoroscopy(machine,
                  [this](double kvp, double ma) {
                      records.addFluoroSecond(kvp, ma);
                      tube.warm(kvp, ma * kFluoroHeatMas);
                  }),
      configuration(machine, [this] { exposureControl.sayFields(); }),
      programs(machine, technique, exposureControl, fluoroscopy, configuration), calibration(machine),
      exposure(machine, surroundings()),
      autocalibration(machine, calibration, [this] { return exposure.expose(); }),
      serviceModes(machine, [this] { autocalibration.leave(); }), positioner(machine),
      faults(
          machine, [this] { return stopForError(); }, [this] { stopRays(); }) {
    commands_.enroll(power, Power::rows());
    commands_.enroll(tube, Tube::rows());
    commands_.enroll(technique, Technique::rows());
    commands_.enroll(exposureControl, ExposureControl::rows());
    commands_.enroll(records, Records::rows());
    commands_.enroll(fluoroscopy, Fluoroscopy::rows(machine.options.kind));
    commands_.enroll(configuration, Configuration::rows());
    commands_.enroll(programs, Programs::rows());
    commands_.enroll(calibration, Calibration::rows());
    commands_.enroll(exposure, Exposure::rows());
    commands_.enroll(autocalibration, Autocalibration::rows());
    commands_.enroll(serviceModes, ServiceModes::rows());
    commands_.enroll(positioner, Positioner::rows());
    commands_.enroll(faults, Faults::rows());

    machine.onEnter(Phase::NormalOperation, [this](Phase from) {
        if (from == Phase::Calibration) {
            // The displays showed the calibration list; now they show what an exposure would be made with.
            technique.report();
        }
        if (from == Phase::Initialization) {
            faults.sayLamps();
        }
        tube.check();
    });
    machine.onEnter(Phase::Calibration, [this](Phase from) {
        if (from == Phase::NormalOperation) {
            calibration.reread();
        }
        calibration.report();
    });
    machine.onEnter(Phase::Configuration, [this](Phase) { configuration.report(); });
}

void Assembly::takeFrame(std::string_view text) {
    if (text.empty() || machine.phase() == kOff) {
        return;
    }
    const Verdict verdict = commands_.run(text, machine.phase());
    if (onFrame) {
        onFrame(text, verdict);
    }
    power.heard();
    switch (verdict) {
    case Verdict::Taken:
        ++tally_.taken;
        if (!answeredByValue(text)) {
            machine.outbox.acknowledge(machine.now());
        }
        break;
    case Verdict::WrongPhase:
        ++tally_.wrongPhase;
        break;
    case Verdict::BadArgument:
        ++tally_.badArgument;
        break;
    case Verdict::Unknown:
        ++tally_.unknown;
        break;
    }
    if (verdict != Verdict::Taken) {
        tally_.lastRefused = text;
    }
    machine.outbox.release(machine.now());
}

void Assembly::powerOn() {
    coldStart();
    if (machine.options.startPhase == Phase::Initialization) {
        power.start();
    } else {
        power.standIn(machine.options.startPhase);
        // It is found in that phase once; after a power cut it starts cold.
        machine.options.startPhase = Phase::Initialization;
    }
}

void Assembly::powerOff() {
    halt();
    machine.agenda.clear();
    machine.outbox.clear();
    parser.reset();
    machine.setPhase(kOff);
}

void Assembly::halt() {
    exposure.halt();
    fluoroscopy.halt();
    autocalibration.halt();
    serviceModes.halt();
}

void Assembly::stopRays() {
    exposure.interrupt();
    if (machine.phase() == Phase::FluoroExposure) {
        fluoroscopy.stop();
    }
}

Phase Assembly::stopForError() {
    // A service mode is not left by an error; what ran in it is over.
    const Phase phase = exposure.phaseBehind();
    const bool autocalibrating = phase == Phase::Autocalibration || quillon::kAsksOrTells.has(phase);
    if (autocalibrating) {
        autocalibration.leave();
    }
    halt();
    if (autocalibrating || phase == Phase::Calibration) {
        return Phase::Calibration;
    }
    return phase == Phase::Configuration ? Phase::Configuration : Phase::NormalOperation;
}

void Assembly::coldStart() {
    technique.powerUp();
    exposureControl.powerUp();
    fluoroscopy.powerUp();
    faults.powerUp();
    machine.readDipSwitch();
}

Exposure::Surroundings Assembly::surroundings() {
    return {.hindrance = [this] { return hindrance(); },
            .plan = [this] { return plan(); },
            .measured = [this](const Shot& shot) { measured(shot); },
            .over =
                [this](bool complete) {
                    if (machine.phase() == Phase::Autocalibration) {
                        autocalibration.exposureOver(complete);
                    }
                    tube.check();
                }};
}

void Assembly::reseed() {
    machine.random = Random(machine.options.seed);
    machine.outbox.reseed(machine.options.seed);
    plug.reseed(machine.options.seed);
}

std::string Assembly::hindrance() const {
    if (!power.raysAllowed()) {
        return "the console has not enabled X-rays (RX)";
    }
    if (const std::string_view lamp = faults.hindrance(); !lamp.empty()) {
        return std::string(lamp);
    }
    if (tube.tooHot()) {
        return "the tube is too hot";
    }
    return {};
}

Shot Assembly::plan() {
    if (!exposure.inServiceMode()) {
        Shot shot{technique.kvp(), technique.ma(), technique.ms()};
        if (exposureControl.active()) {
            // The chamber cuts the exposure before its back-up time, by as much as the patient needs.
            shot.ms = std::max(1.0, shot.ms * (40 + machine.random.below(50)) / 100);
        }
        return shot;
    }
    return calibration.shot();
}

void Assembly::measured(const Shot& shot) {
    tube.warm(shot.kvp, shot.mas());
    records.record(configuration.tube(), shot);
    if (!exposure.inServiceMode()) {
        machine.say("MXS" + milliampSecondsText(shot.mas()));
    }
}

} // namespace simulator
