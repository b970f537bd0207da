#include "model/Records.h"

#include <algorithm>
#include <string>

#include "base/Fault.h"
#include "base/Numbers.h"
#include "link/OutboundTable.h"

namespace quillon {

Records::Records(ModelContext& context)
    : context_(context), txtDose_(context.panel["txtDose"]),
      txtExposureCounter_(context.panel["txtExposureCounter"]),
      cmbResetExposureCounter_(context.panel["cmbResetExposureCounter"]) {
    MessageDecoder& decoder = context_.decoder;
    LinkEvents& events = context_.events;
    decoder.bind("fmessDosemeterReset", [this](std::string_view) {
        if (context_.link.EventEnabled) {
            txtDose_.setCaption("");
            context_.events.DoseResetAck.raise();
        }
    });
    decoder.bind("fmessLastExposureDose",
                 [this](std::string_view value) { fmessDose(value, &LinkEvents::LastExposureDose); });
    decoder.bind("fmessAccumulatedDose",
                 [this](std::string_view value) { fmessDose(value, &LinkEvents::AccumulatedDose); });
    decoder.bind("fmessExposureCounter", [this](std::string_view value) { fmessExposureCounter(value); });
    decoder.bind("fmessGeneratorSoftwareVersion", [this, &events](std::string_view value) {
        context_.state.GeneratorSoftwareVersion = value;
        events.GeneratorSoftwareVersion.raise(context_.state.GeneratorSoftwareVersion);
    });
    decoder.bind("fmessRXEnableRequest", [this](std::string_view) {
        context_.send.SendMessageWithDefaults(RXEnable() ? "RX1" : "RX0", kAllPhases);
    });
    decoder.bind("fmessRXEnable", [this, &events](std::string_view value) {
        if (isNumeric(value)) {
            context_.state.RXEnable = toBoolean(value);
            events.RXEnable.raise(context_.state.RXEnable);
        }
    });
    decoder.bind("fmessBeep", [&events](std::string_view value) {
        if (isNumeric(value)) {
            events.Beep.raise(std::string(value));
        }
    });
    context_.operations.addReadOnly("GeneratorSoftwareVersion",
                                    [this] { return context_.state.GeneratorSoftwareVersion; });
    context_.operations.addProperty(
        "RXEnable", [this] { return RXEnable(); }, [this](bool enable) { setRXEnable(enable); });
}

void Records::setRXEnable(bool enable) {
    context_.state.RXEnable = enable;
    context_.send.SendMessageWithDefaults(enable ? "RX1" : "RX0", phasesOf("RX"));
}

void Records::fmessDose(std::string_view value, Signal<std::string> LinkEvents::*event) {
    // The wire packs a number in scientific form without its letter: three characters, then the exponent.
    std::string number(value.substr(0, 3));
    number.append("E").append(value.substr(value.size() - std::min<std::size_t>(value.size(), 3)));
    const std::string dose = oneDecimal(number);
    txtDose_.setCaption(" " + dose + " ");
    if (context_.link.EventEnabled) {
        (context_.events.*event).raise(dose);
    }
}

void Records::fmessExposureCounter(std::string_view value) {
    const std::string count(value.substr(std::min<std::size_t>(value.size(), 1)));
    if (context_.link.m_OperatingPhase != Phase::Calibration) {
        txtExposureCounter_.setCaption(count);
    } else {
        cmbResetExposureCounter_.setBackColour(kNormalColour);
        context_.state.m_ExposureCounterResetPending = false;
    }
    if (context_.link.EventEnabled) {
        context_.events.ExposureCounter.raise(toInt32(value.substr(0, 1)), count);
    }
}

} // namespace quillon
