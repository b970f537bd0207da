#pragma once

#include "sim/Autocalibration.h"
#include "sim/Calibration.h"
#include "sim/Commands.h"
#include "sim/Configuration.h"
#include "sim/Exposure.h"
#include "sim/ExposureControl.h"
#include "sim/Faults.h"
#include "sim/Fluoroscopy.h"
#include "sim/Machine.h"
#include "sim/Plug.h"
#include "sim/Positioner.h"
#include "sim/Power.h"
#include "sim/Programs.h"
#include "sim/Records.h"
#include "sim/ServiceModes.h"
#include "sim/Technique.h"
#include "sim/Tube.h"
#include "sim/Wire.h"

#include <string>
#include <string_view>

namespace simulator {

/// All subjects of one generator, put together.
class Assembly {
public:
    explicit Assembly(Options options);

    /// Handles one frame of the console.
    void takeFrame(std::string_view text);

    void powerOn();
    void powerOff();

    /// Whatever runs stops where it stands.
    void halt();

    /// Everything by chance begins anew, with the seed of the options.
    void reseed();

    /// Why there can be no radiation now; empty when there can.
    [[nodiscard]] std::string hindrance() const;

    /// Told of every frame, and what became of it.
    std::function<void(std::string_view text, Verdict verdict)> onFrame;

    /// How the frames fared.
    struct Tally {
        int taken = 0;
        int wrongPhase = 0;
        int badArgument = 0;
        int unknown = 0;
        std::string lastRefused;
    };
    [[nodiscard]] const Tally& tally() const { return tally_; }

    Machine machine;
    Plug plug;
    FrameParser parser;
    Power power;
    Tube tube;
    Technique technique;
    ExposureControl exposureControl;
    Records records;
    Fluoroscopy fluoroscopy;
    Configuration configuration;
    Programs programs;
    Calibration calibration;
    Exposure exposure;
    Autocalibration autocalibration;
    ServiceModes serviceModes;
    Positioner positioner;
    Faults faults;

private:
    void coldStart();
    void stopRays();
    [[nodiscard]] Phase stopForError();
    [[nodiscard]] Exposure::Surroundings surroundings();
    [[nodiscard]] Shot plan();
    void measured(const Shot& shot);

    CommandTable commands_;
    Tally tally_;
};

} // namespace simulator
