#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "console/ConsoleTexts.h"
#include "console/Runs.h"
#include "console/layout/PanelLayouts.h"

namespace quillon {

// Names of probes that no table of the program has.

// clang-format off
inline constexpr std::array<std::string_view, kStimuli> kStimulusNames{
    "a start anew", "Ready", "an exposure", "calibration", "configuration", "autocalibration", "a loss",
    "the key that closes"};

struct TextRow {
    std::string_view name;
    std::string ConsoleTexts::*text;
};
inline constexpr std::array kBoxes{
    TextRow{"box restart",      &ConsoleTexts::sShutdownQuestion},
    TextRow{"box refused",      &ConsoleTexts::sRestartRefused},
    TextRow{"box no number",    &ConsoleTexts::sNoNumber},
    TextRow{"box no speed",     &ConsoleTexts::sNoBaudrate},
    TextRow{"box no port",      &ConsoleTexts::sNoPort},
    TextRow{"box port",         &ConsoleTexts::sCannotOpenPort},
};

/// Why a key is dead, as its window says it.
inline constexpr std::array kWhys{
    TextRow{"why an error stands",    &ConsoleTexts::sWhyError},
    TextRow{"why no error stands",    &ConsoleTexts::sWhyNoError},
    TextRow{"why an exposure",        &ConsoleTexts::sWhyExposure},
    TextRow{"why nobody answers",     &ConsoleTexts::sWhyUnheard},
    TextRow{"why a question",         &ConsoleTexts::sWhyQuestion},
    TextRow{"why a panel",            &ConsoleTexts::sWhyPanel},
    TextRow{"why a mode",             &ConsoleTexts::sWhyMode},
    TextRow{"why not in a mode",      &ConsoleTexts::sWhyNotIn},
    TextRow{"why not now",            &ConsoleTexts::sWhyNotNow},
    TextRow{"why no action",          &ConsoleTexts::sWhyNoAction},
    TextRow{"why not digital",        &ConsoleTexts::sWhyNotDigital},
    TextRow{"why no field",           &ConsoleTexts::sWhyNoField},
    TextRow{"why no density",         &ConsoleTexts::sWhyNoDensity},
    TextRow{"why no brightness",      &ConsoleTexts::sWhyNoBrightness},
    TextRow{"why a fixed kVp",        &ConsoleTexts::sWhyFixedKVP},
    TextRow{"why no number",          &ConsoleTexts::sWhyNoNumber},
    TextRow{"why a hot tube",         &ConsoleTexts::sStateTubeTooHot},
    TextRow{"why a power-up",         &ConsoleTexts::sPoweringUp},
    TextRow{"why the closing",        &ConsoleTexts::sClosing},
    TextRow{"why a run",              &ConsoleTexts::sPleaseWait},
    TextRow{"why settings",           &ConsoleTexts::sReadingSettings},
};

struct PanelRow {
    std::string_view key;
    std::span<const ControlRow> rows;
};
inline constexpr std::array kPanels{
    PanelRow{"SelWSCal",                   kSelectWorkstationRows},
    PanelRow{"SelWSAutocal",               kSelectWorkstationRows},
    PanelRow{"AutocalSelFocusOrParameter", kSelectFocusRows},
    PanelRow{"AutocalWarning",             kWarningRows},
    PanelRow{"Error",                      kErrorRows},
};

// clang-format on

[[nodiscard]] inline std::string meeting(Run run, Stimulus stimulus) {
    return std::string(rowOf(run).name) + " meets " +
           std::string(kStimulusNames.at(static_cast<std::size_t>(stimulus)));
}

} // namespace quillon
