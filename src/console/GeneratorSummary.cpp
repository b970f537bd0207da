#include "console/GeneratorSummary.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/Numbers.h"
#include "console/PhaseTable.h"
#include "console/ServiceModes.h"
#include "link/GeneratorLost.h"
#include "link/LinkSilence.h"
#include "model/WarningLamps.h"

namespace quillon {

namespace {

// Errors without a code of their own.
constexpr std::int16_t kBackUpTimer = -1;
constexpr std::int16_t kWrongSelection = -2;

// In the order of the lamps.
constexpr std::array<std::string ConsoleTexts::*, kWarningLamps.size()> kWarningWords{
    &ConsoleTexts::sWarnDoor,      &ConsoleTexts::sWarnGenOverload, &ConsoleTexts::sWarnTubeOverload,
    &ConsoleTexts::sWarnRotor,     &ConsoleTexts::sWarnOverheat,    &ConsoleTexts::sWarnTechnique,
    &ConsoleTexts::sWarnCollimator};
static_assert(std::ranges::find(kWarningWords, nullptr) == kWarningWords.end(), "every lamp has its words");

} // namespace

GeneratorSummary::GeneratorSummary(ConsoleContext& context, const ServiceSession& session)
    : context_(context), session_(session) {
    listen();
}

void GeneratorSummary::listen() {
    LinkEvents& events = context_.link.events();
    events.GeneratorPhaseChange.connect([this](Phase phase) {
        if (phase != Phase::Error && phase != Phase::AutocalError) {
            standing_ = 0;
        }
        changed.raise();
    });
    events.HUUpdate.connect([this](std::int16_t heat) {
        if (std::exchange(heat_, heat) != heat) {
            changed.raise();
        }
    });
    events.GeneratorERROR.connect([this](std::int16_t code, const std::string& words, std::int16_t) {
        if (code != kGeneratorLost) {
            note(code, words);
        } else if (session_.generator().isLost()) { // silence is no loss while it starts
            note(code, context_.texts.sCommError);
        }
    });
    events.GeneratorAECError.connect([this](std::int32_t code) {
        if (code == 1) {
            note(kBackUpTimer, context_.texts.sAECBackUpTime);
        } else if (code == 2) {
            note(kWrongSelection, context_.texts.sAECCompensationError);
        }
    });
    events.GeneratorERRORResetAck.connect([this] { standing_ = 0; });
    context_.link.silence().changed.connect([this] { changed.raise(); });
    for (const WarningLamp& lamp : kWarningLamps) {
        (events.*lamp.event).connect([this](bool) { changed.raise(); });
    }
}

void GeneratorSummary::note(std::int16_t code, std::string_view words) {
    if (code == 0 || std::exchange(standing_, code) == code) {
        return;
    }
    errors_.push_front(
        {context_.console.schedule().now(), std::max(code, std::int16_t{0}), std::string(words)});
    errors_.resize(std::min(errors_.size(), kErrorsKept));
    ++count_;
    changed.raise();
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
