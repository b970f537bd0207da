#include "console/GeneratorSummary.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Numbers.h"
#include "console/PhaseTable.h"
#include "console/ServiceModes.h"
#include "link/LinkSilence.h"
#include "model/WarningLamps.h"

namespace quillon {

namespace {

// In the order of the lamps.
constexpr std::array<std::string ConsoleTexts::*, kWarningLamps.size()> kWarningWords{
    &ConsoleTexts::sWarnDoor,      &ConsoleTexts::sWarnGenOverload, &ConsoleTexts::sWarnTubeOverload,
    &ConsoleTexts::sWarnRotor,     &ConsoleTexts::sWarnOverheat,    &ConsoleTexts::sWarnTechnique,
    &ConsoleTexts::sWarnCollimator};
static_assert(std::ranges::find(kWarningWords, nullptr) == kWarningWords.end(), "every lamp has its words");

} // namespace

GeneratorSummary::GeneratorSummary(ConsoleContext& context, const ServiceSession& session,
                                   SessionErrors& errors)
    : context_(context), session_(session) {
    listen(errors);
}

void GeneratorSummary::listen(SessionErrors& errors) {
    errors.began.connect([this](const SessionError& error) {
        errors_.push_front(error);
        errors_.resize(std::min(errors_.size(), kErrorsKept));
        ++count_;
        changed.raise();
    });
    LinkEvents& events = context_.link.events();
    events.GeneratorPhaseChange.connect([this](Phase) { changed.raise(); });
    events.HUUpdate.connect([this](std::int16_t heat) {
        if (std::exchange(heat_, heat) != heat) {
            changed.raise();
        }
    });
    context_.link.silence().changed.connect([this] { changed.raise(); });
    for (const WarningLamp& lamp : kWarningLamps) {
        (events.*lamp.event).connect([this](bool) { changed.raise(); });
    }
}

std::string GeneratorSummary::state() const {
    const ConsoleTexts& texts = context_.texts;
    if (session_.generator().isLost()) {
        return texts.sCommError;
    }
    const Phase phase = session_.lastPhase();
    if (const PhaseMeaning meaning = meaningOf(phase); meaning.state != nullptr) {
        return texts.*meaning.state;
    }
    if (const ServiceMode* mode = serviceModeOf(kAsksOrTells.has(phase) ? Phase::Autocalibration : phase)) {
        return context_.console[nameOf(mode->key)].caption();
    }
    return session_.generator().poweringUp() ? texts.sPoweringUp : texts.sStateUnheard;
}

std::string GeneratorSummary::warnings() const {
    std::string all;
    for (std::size_t i = 0; i < kWarningLamps.size(); ++i) {
        if (context_.link[kWarningLamps[i].label].visible()) {
            all.append(all.empty() ? "" : ", ").append(context_.texts.*kWarningWords[i]);
        }
    }
    return all;
}

std::vector<SummaryLine> GeneratorSummary::lines() const {
    const ConsoleTexts& texts = context_.texts;
    std::vector<SummaryLine> all;
    if (context_.link.mirror().m_HU >= 0) {
        all.push_back({texts.sTubeHeat, decimalText(context_.link.mirror().m_HU) + " %", false,
                       context_.link["txtHU"].old(), context_.link.mirror().m_HU});
    }
    if (std::string standing = warnings(); !standing.empty()) {
        all.push_back({texts.sWarnings, std::move(standing), true});
    }
    all.push_back({texts.sErrorsSinceStart, decimalText(count_)});
    return all;
}

} // namespace quillon
