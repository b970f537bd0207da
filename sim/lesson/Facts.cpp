#include "sim/lesson/Facts.h"

#include "base/Text.h"
#include "sim/Faults.h"
#include "sim/Formats.h"

#include <algorithm>
#include <utility>

namespace simulator {

namespace {

constexpr std::string_view kItems[] = {"tube", "mode", "chamber", "interlock", "failsafe", "sync", "curve"};

struct Word {
    std::string_view word;
    int value;
};
constexpr Word kWords[] = {{"off", 0}, {"on", 1}, {"small", 0}, {"large", 1},
                           {"out", 0}, {"in", 1}, {"loose", 2}};

struct PhaseWord {
    std::string_view word;
    Phase phase;
};
constexpr PhaseWord kPhaseWords[] = {{"starting", Phase::Initialization},
                                     {"ready", Phase::NormalOperation},
                                     {"preparation", Phase::Preparation},
                                     {"exposure", Phase::RadExposure},
                                     {"fluoro", Phase::FluoroExposure},
                                     {"calibration", Phase::Calibration},
                                     {"error", Phase::Error},
                                     {"configuration", Phase::Configuration},
                                     {"autocalibration", Phase::Autocalibration},
                                     {"too-hot", Phase::TubeTooHot},
                                     {"asks", Phase::ConfirmDismiss},
                                     {"autocal-error", Phase::AutocalError},
                                     {"autocal-ok", Phase::AutocalOk}};

int numberOf(Plug::State state) {
    return state == Plug::State::Out ? 0 : state == Plug::State::In ? 1 : 2;
}

} // namespace

Facts factsOf(const Gauges& g) {
    Facts facts{{"phase", quillon::numberOf(g.phase)},
                {"error", g.error},
                {"rays", g.raysAllowed},
                {"heat", g.heatPercent},
                {"kvp", g.technique.kvp},
                {"ma", g.technique.ma},
                {"ms", g.technique.ms},
                {"mas", g.technique.mas()},
                {"focus", g.largeFocus},
                {"hand", g.hand},
                {"prepared", g.prepared},
                {"workstation", g.workstation},
                {"dipswitch", g.dipSwitch},
                {"silent", g.silent},
                {"acks", g.acknowledges},
                {"plug", numberOf(g.plug)},
                {"autocal", g.autocalExposures},
                {"stuck", g.fixedValues},
                {"reading", g.reading}};
    for (std::size_t number = 0; number < g.counters.size(); ++number) {
        facts["counter" + std::to_string(number)] = g.counters.at(number);
    }
    facts["exposures"] = g.counters[0] + g.counters[1] + g.counters[3];
    for (std::size_t station = 0; station < g.stations.size(); ++station) {
        for (std::size_t item = 0; item < std::size(kItems); ++item) {
            facts["ws" + std::to_string(station + 1) + "." + std::string(kItems[item])] =
                g.stations.at(station).at(item);
        }
    }
    for (const auto& [place, value] : g.calibration) {
        facts["cal." + place] = value;
    }
    const std::string lamps = Faults::lampNames();
    for (const std::string_view lamp : quillon::split(lamps, " ")) {
        facts[std::string(lamp)] = std::ranges::find(g.lamps, lamp) != g.lamps.end();
    }
    return facts;
}

std::optional<double> valueNamed(std::string_view word) {
    if (const auto* const phase = std::ranges::find(kPhaseWords, word, &PhaseWord::word);
        phase != std::end(kPhaseWords)) {
        return quillon::numberOf(phase->phase);
    }
    const auto* const found = std::ranges::find(kWords, word, &Word::word);
    return found != std::end(kWords) ? std::optional<double>(found->value) : numberIn(word);
}

} // namespace simulator
