#include "console/Runs.h"
#include "console/ConsoleTexts.h"

namespace quillon {

namespace {

using T = ConsoleTexts;

constexpr Reaction goes = Reaction::GoesOn;
constexpr Reaction ends = Reaction::Ends;
constexpr Reaction asks = Reaction::AskWorkflow;
constexpr CloseKey mode = CloseKey::ByMode;
constexpr CloseKey wait = CloseKey::WaitsForMode;
constexpr CloseKey dead = CloseKey::Nothing;

// A restart and a loss end every run, as it was about the generator of before. A phase ends a run that cannot
// go on in it. A run that began with a command goes on up to its own check of the result.
// clang-format off
constexpr std::array<RunRow, kRuns> kTable{{
    // run                          name                       status bar               last wait           timers                                                      panels                                                          1     2     3-5   6     8     9     lost  Close
    {Run::None,                    "nothing",                  nullptr,                 {},                 {},                                                         {},                                                            {goes, goes, goes, goes, goes, goes, goes}, mode},
    {Run::EnteringConfiguration,   "entering configuration",   &T::sEnterConfiguration, "tmrConfigON",      {"tmrConfigON"},                                            {},                                                            {ends, goes, goes, goes, goes, goes, ends}, mode},
    {Run::LeavingConfiguration,    "leaving configuration",    &T::sExitConfiguration,  "tmrConfigOFF",     {"tmrConfigOFF"},                                           {},                                                            {ends, goes, goes, ends, goes, ends, ends}, mode},
    {Run::ChoosingWorkstation,     "choosing a workstation",   nullptr,                 {},                 {},                                                         {"SelWSCal"},                                                  {ends, goes, goes, goes, goes, goes, ends}, mode},
    {Run::EnteringCalibration,     "entering calibration",     &T::sEnterCalibration,   "tmrCalON",         {"tmrCalON"},                                               {},                                                            {ends, goes, asks, goes, goes, goes, ends}, mode},
    {Run::LeavingCalibration,      "leaving calibration",      &T::sExitCalibration,    {},                 {"tmrCalOFF", "tmrFlRefresh"},                              {},                                                            {ends, goes, goes, asks, ends, ends, ends}, mode},
    {Run::Lending,                 "lending",                  &T::sExitCalibration,    "tmrGotoUserMode",  {"tmrCalOFF", "tmrGotoUserMode", "tmrFlRefresh"},           {},                                                            {ends, goes, goes, asks, ends, ends, ends}, mode},
    {Run::ChoosingAutocalibration, "choosing autocalibration", nullptr,                 {},                 {},                                                         {"SelWSAutocal", "AutocalSelFocusOrParameter", "AutocalWarning"}, {ends, goes, goes, goes, goes, goes, ends}, mode},
    {Run::EnteringAutocalibration, "entering autocalibration", &T::sEnterAutocal,       "tmrDelayAutocal",  {"tmrDelayAutocal", "tmrIniAutocal"},                       {},                                                            {ends, asks, asks, asks, asks, goes, ends}, wait},
    {Run::HandingOver,             "handing over",             &T::sInitAutocal,        "tmrDelayAutocal",  {"tmrDelayAutocal", "tmrIniAutocal"},                       {},                                                            {ends, ends, goes, ends, ends, goes, ends}, mode},
    {Run::LeavingAutocalibration,  "leaving autocalibration",  &T::sExitAutocal,        "tmrAutocalOFF",    {"tmrAutocalOFF", "tmrIniAutocal"},                         {},                                                            {ends, goes, goes, goes, ends, goes, ends}, mode},
    {Run::ReadingCounters,         "reading counters",         &T::sReadingExpCounters, {},                 {"tmrReadExposureCounters"},                                {},                                                            {ends, goes, goes, ends, ends, ends, ends}, mode},
    {Run::ShowingCounters,         "showing counters",         nullptr,                 {},                 {"tmrResetTubeCounter"},                                    {},                                                            {ends, goes, goes, ends, ends, ends, ends}, mode},
    {Run::Closing,                 "closing",                  nullptr,                 {},                 {"tmrGoodbye"},                                             {},                                                            {goes, goes, goes, goes, goes, goes, goes}, dead},
}};
// clang-format on

// clang-format off
constexpr std::array kWaitRows{
    // wait                            ended by phases                                                       a loss  the next run  not while lent
    WaitRow{"tmrDelay",                {Phase::Initialization, Phase::NormalOperation},                      true,   false,        true},
    WaitRow{"tmrDelayAutocal",         {Phase::Initialization, Phase::NormalOperation, Phase::Calibration},  false,  true,         false},
    WaitRow{"tmrIniAutocal",           {Phase::Initialization, Phase::NormalOperation, Phase::Calibration, Phase::Error,
                                        Phase::Configuration, Phase::ConfirmDismiss, Phase::AutocalError,
                                        Phase::AutocalOk},                              true,   true,         false},
    WaitRow{"tmrAutocalON",            {Phase::Initialization},                                              true,   true,         false},
    WaitRow{"tmrReadExposureCounters", Phases{Phase::Initialization} | kServiceModes,                           true,   true,         false},
};
// clang-format on

constexpr bool inOrder() {
    for (std::size_t i = 0; i < kTable.size(); ++i) {
        if (static_cast<std::size_t>(kTable[i].run) != i) {
            return false;
        }
    }
    return true;
}
static_assert(inOrder());

} // namespace

const RunRow& rowOf(Run run) {
    return kTable.at(static_cast<std::size_t>(run));
}

std::span<const WaitRow> waitRows() {
    return kWaitRows;
}

} // namespace quillon
