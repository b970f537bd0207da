#include "console/CalibrationPoint.h"

#include "model/Commands.h"

namespace quillon {

bool CalibrationPoint::reached() const {
    const GeneratorState& mirror = context_.link.mirror();
    const bool onParameter = mirror.m_CalibrationType > 0;
    if (!context_.state.m_SelAutocalmA) {
        return onParameter && mirror.m_CalibrationParameter == context_.state.m_AutocalParameter;
    }
    // A parameter may show the focus of the station before it, so the kind of the point is compared as well.
    const bool onFocus = (context_.state.m_AutocalLargeFocus && mirror.m_LargeFocus == 1) ||
                         (context_.state.m_AutocalSmallFocus && mirror.m_SmallFocus == 1);
    return onFocus && !onParameter;
}

void CalibrationPoint::step() {
    constexpr CommandFor<> kUp = command("MAUp");
    constexpr CommandFor<> kDown = command("MADown");
    const GeneratorState& mirror = context_.link.mirror();
    const bool onStation = mirror.m_CalibrationType == 0;
    if (!context_.state.m_SelAutocalmA) {
        // In the list the parameters come after the stations.
        const bool up = onStation || context_.state.m_AutocalParameter > mirror.m_CalibrationParameter;
        context_.link.commands().send(up ? kUp : kDown);
    } else if (!onStation) {
        context_.link.commands().send(kDown);
    } else if (context_.link.facts().SolapeFocos) {
        // The stations of the focal spots overlap: no number of steps leads from one to the other.
        context_.link.commands().send(command("ToggleFocus"));
    } else {
        context_.link.commands().send(context_.state.m_AutocalSmallFocus ? kDown : kUp);
    }
}

} // namespace quillon
