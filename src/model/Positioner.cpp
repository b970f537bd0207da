#include "model/Positioner.h"

#include <string>

#include "base/Fault.h"
#include "base/Numbers.h"
#include "model/Characters.h"

namespace quillon {

Positioner::Positioner(ModelContext& context) : events_(context.events) {
    context.decoder.bind("fmessURS", [this](std::string_view value) { fmessURS(value); });
}

void Positioner::fmessURS(std::string_view value) {
    const std::string_view subMessage = characters(value, 1, 2);
    const std::string_view field = characters(value, 3, 6);
    if (subMessage == "CG") {
        events_.URSCalibrationGet.raise(std::string(characters(value, 3)));
    } else if (subMessage == "RQ") {
        events_.URSRequestADC.raise(std::string(field));
    } else if (subMessage == "SG") {
        events_.URSSidGetResponse.raise(toInt16(leadingNumber(field)));
    } else {
        throw Fault(Fault::kNotFound);
    }
}

} // namespace quillon
