#pragma once

#include "sim/Commands.h"
#include "sim/Configuration.h"
#include "sim/ExposureControl.h"
#include "sim/Fluoroscopy.h"
#include "sim/Machine.h"
#include "sim/Technique.h"

#include <span>

namespace simulator {

/// Anatomical programs: a whole set of values in one message, taken as a whole or not at all.
class Programs {
public:
    Programs(Machine& machine, Technique& technique, ExposureControl& control, Fluoroscopy& fluoroscopy,
             Configuration& configuration)
        : machine_(machine), technique_(technique), control_(control), fluoroscopy_(fluoroscopy),
          configuration_(configuration) {}

    [[nodiscard]] static std::span<const Row<Programs>> rows();

private:
    struct Tag;

    bool take(const Request& request);

    Machine& machine_;
    Technique& technique_;
    ExposureControl& control_;
    Fluoroscopy& fluoroscopy_;
    Configuration& configuration_;
};

} // namespace simulator
