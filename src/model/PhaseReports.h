#pragma once

#include <cstdint>
#include <string_view>

#include "model/ModelContext.h"

namespace quillon {

class Service;

/// The generator's phase ("ST"), its status signals ("PS", "SF", "PR", "XS", "XR", "XE") and the tube heat
/// ("HE").
class PhaseReports {
public:
    /// `service`: ends the question of an autocalibration when the generator goes on without an answer.
    PhaseReports(ModelContext& context, Service& service);

    /// "ST": a new phase reconfigures the panel and raises GeneratorPhaseChange; a repeated one only counts
    /// as a sign of life, except the two error phases, which are handled at every report.
    void fmessGeneratorPhase(std::string_view value);
    /// If the generator still asks whether to autocalibrate: shows the keys and raises the event again, and
    /// forgets an answer that was not taken. Nothing in another phase.
    void repeatQuestion();
    /// The present phase was reported again.
    Signal<> repeated;
    /// "HE": percent of the tube's heat capacity. HUUpdate carries what is shown.
    void fmessHU(std::string_view value);

private:
    void enter(Phase phase, Phase old);
    void enterInitialization();
    void enterNormalOperation(Phase old);
    void enterCalibration(Phase old);
    void enterConfiguration();
    void enterConfirmDismiss();
    void updateSoftwareExposureKey();
    void bindSignals();

    ModelContext& context_;
    Service& service_;
    LinkState& link_;
    GeneratorState& state_;
    PanelHost& panel_;
    const bool softwareSync_;
};

} // namespace quillon
