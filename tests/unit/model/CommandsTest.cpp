#include "model/Commands.h"

#include <algorithm>
#include <bit>
#include <set>

#include "tests/unit/base/Faults.h"
#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

enum class Ack { Never, Mode, Caller };
using enum Ack;

/// What a command does on the wire: its frame without and with handshaking, the phases that allow it, when it
/// waits for its acknowledgement, and how long after the call it leaves.
struct Row {
    std::string_view name;
    std::vector<Value> arguments;
    std::string_view plain;
    std::string_view handshaking; ///< empty: the same
    int phases;
    Ack ack;
    int delay = 350;
};

// clang-format off
const Row kRows[]{
    {"KVPUp",                {},      "KV+",    "",      306,   Never},
    {"KVPUpUp",              {},      "KV++",   "",      50,    Never},
    {"KVPDown",              {},      "KV-",    "",      306,   Never},
    {"KVPDownDown",          {},      "KV--",   "",      50,    Never},
    {"MAUp",                 {},      "MA+",    "",      50,    Never},
    {"MADown",               {},      "MA-",    "",      50,    Never},
    {"MSUp",                 {},      "MS+",    "",      18,    Never},
    {"MSDown",               {},      "MS-",    "",      18,    Never},
    {"MASUp",                {},      "MX+",    "",      274,   Never},
    {"MASDown",              {},      "MX-",    "",      274,   Never},
    {"KVPRequest",           {},      "KV?",    "",      50,    Mode},
    {"MARequest",            {},      "MA?",    "",      50,    Mode},
    {"MSRequest",            {},      "MS?",    "",      34,    Mode},
    {"MASRequest",           {},      "MX?",    "",      50,    Mode},
    {"KVPOneUp",             {},      "KV+",    "KVU",   306,   Mode},
    {"KVPOneDown",           {},      "KV-",    "KVD",   306,   Mode},
    {"MAOneUp",              {},      "MA+",    "MAU",   50,    Mode},
    {"MAOneDown",            {},      "MA-",    "MAD",   50,    Mode},
    {"MASOneUp",             {},      "MX+",    "MXU",   274,   Mode},
    {"MASOneDown",           {},      "MX-",    "MXD",   274,   Mode},
    {"MSOneUp",              {},      "MSU",    "",      18,    Mode},
    {"MSOneDown",            {},      "MSD",    "",      18,    Mode},
    {"RADRefresh",           {},      "RF",     "",      2,     Mode},
    {"FocusRequest",         {},      "FO?",    "",      34,    Mode},
    {"ToggleFocus",          {},      "FO",     "",      34,    Never},
    {"SetFocalSpot",         {0},     "FOS1",   "",      34,    Caller},
    {"SetFocalSpot",         {1},     "FOS2",   "",      34,    Caller},
    {"MaxDensityRequest",    {},      "MD?",    "",      34,    Mode},
    {"AECFieldRequest",      {},      "FI?",    "",      2,     Mode},
    {"AECRefresh",           {},      "AF",     "",      2,     Caller},
    {"ToggleAECFieldLeft",   {},      "FI0",    "",      130,   Never},
    {"ToggleAECFieldCenter", {},      "FI1",    "",      130,   Never},
    {"ToggleAECFieldRight",  {},      "FI2",    "",      130,   Never},
    {"SetAECFieldLeft",      {true},  "FI01",   "",      130,   Mode},
    {"SetAECFieldCenter",    {false}, "FI10",   "",      130,   Mode},
    {"SetAECFieldRight",     {true},  "FI21",   "",      130,   Mode},
    {"SetAECFilmScreen",     {2},     "FS2",    "",      2,     Caller},
    {"ToggleDAEC",           {},      "DA",     "",      2,     Never},
    {"SetDAEC",              {true},  "DA1",    "",      2,     Caller},
    {"TogglePhotomultiplier",{},      "PH",     "",      2,     Never},
    {"SetPhotomultiplier",   {false}, "PH0",    "",      2,     Caller},
    {"SetRoadMapping",       {true},  "RM1",    "",      16383, Caller},
    {"BrightnessUp",         {},      "BR+",    "",      2,     Never},
    {"BrightnessUpUp",       {},      "BR++",   "",      2,     Never},
    {"BrightnessDown",       {},      "BR-",    "",      2,     Never},
    {"BrightnessDownDown",   {},      "BR--",   "",      2,     Never},
    {"BrightnessOneUp",      {},      "BR+",    "BRU",   2,     Mode},
    {"BrightnessOneDown",    {},      "BR-",    "BRD",   2,     Mode},
    {"SetBrightness",        {7},     "BR007",  "",      2,     Mode},
    {"FlKVPUp",              {},      "FLK+",   "",      18,    Never},
    {"FlKVPUpUp",            {},      "FLK++",  "",      2,     Never},
    {"FlKVPDown",            {},      "FLK-",   "",      18,    Never},
    {"FlKVPDownDown",        {},      "FLK--",  "",      2,     Never},
    {"FlKVPRequest",         {},      "FLK?",   "",      18,    Mode},
    {"FlRefresh",            {},      "FLF",    "",      18,    Caller},
    {"FlTimeRequest",        {},      "FLT?",   "",      18,    Mode},
    {"FlTimeReset",          {},      "FLR",    "",      18,    Caller},
    {"FlPPSNext",            {},      "FLP",    "",      18,    Mode},
    {"FlPPSUp",              {},      "FLP+",   "",      18,    Mode},
    {"FlPPSDown",            {},      "FLP-",   "",      18,    Mode},
    {"FlPPSOneUp",           {},      "FLP+",   "FLPU",  18,    Mode},
    {"FlPPSOneDown",         {},      "FLP-",   "FLPD",  18,    Mode},
    {"FlPPSReq",             {},      "FLP?",   "",      18,    Mode},
    {"SetFlPPS",             {3},     "FLP03",  "",      18,    Mode},
    {"FlABSToggle",          {},      "FLA",    "",      18,    Never},
    {"SetFlABS",             {true},  "FLA1",   "",      18,    Caller},
    {"FlABSReq",             {},      "FLA?",   "",      18,    Mode},
    {"FlMagnification",      {3},     "FLM3",   "",      18,    Caller},
    {"FlMAUp",               {},      "FLMA+",  "",      18,    Never},
    {"FlMADown",             {},      "FLMA-",  "",      18,    Never},
    {"FlMAOneUp",            {},      "FLMA+",  "FLMAU", 18,    Mode},
    {"FlMAOneDown",          {},      "FLMA-",  "FLMAD", 18,    Mode},
    {"FlHighDose",           {},      "FLHD",   "",      18,    Caller},
    {"SetFlHighDose",        {true},  "FLHD1",  "",      18,    Caller},
    {"FlAlarmReset",         {},      "FLAR",   "",      18,    Caller},
    {"FlContrastUp",         {},      "FLC+",   "",      18,    Mode},
    {"FlContrastDown",       {},      "FLC-",   "",      18,    Mode},
    {"FlContrast",           {2},     "FLC 2",  "",      18,    Caller},
    {"FlContrast",           {-1},    "FLC-1",  "",      18,    Caller},
    {"FlKVPTracking",        {0},     "KVT0",   "",      18,    Caller},
    {"Configuration",        {true},  "CF1",    "",      130,   Caller},
    {"DefaultConfiguration", {},      "CFD",    "",      128,   Caller},
    {"ConfTubeUp",           {},      "TU+",    "",      128,   Mode},
    {"ConfTubeDown",         {},      "TU-",    "",      128,   Mode},
    {"ConfWorkingModeUp",    {},      "WM+",    "",      128,   Mode},
    {"ConfWorkingModeDown",  {},      "WM-",    "",      128,   Mode},
    {"ConfICUp",             {},      "IC+",    "",      128,   Mode},
    {"ConfICDown",           {},      "IC-",    "",      128,   Mode},
    {"ConfKVTrackingUp",     {},      "KVT+",   "",      146,   Mode},
    {"ConfKVTrackingDown",   {},      "KVT-",   "",      146,   Mode},
    {"Workstation",          {8},     "WS8",    "",      130,   Caller},
    {"calibration",          {true},  "CA1",    "",      290,   Caller, 400},
    {"Autocalibration",      {false}, "CAU0",   "",      7456,  Caller, 1000},
    {"AutocalRetry",         {true},  "CAR1",   "",      288,   Mode},
    {"CalibrationValueUp",   {},      "C+",     "",      288,   Never},
    {"CalibrationValueUpUp", {},      "C++",    "",      288,   Never},
    {"CalibrationValueDown", {},      "C-",     "",      288,   Never},
    {"CalibrationValueDownDown", {},  "C--",    "",      288,   Never},
    {"CalibrationValueStore",{},      "CS",     "",      288,   Caller},
    {"CalibrationValueRead", {},      "CR",     "",      288,   Mode},
    {"CalibrationSetFocus",  {},      "CO",     "",      288,   Caller},
    {"URSEnterServiceMode",  {1},     "URSSO1", "",      16383, Never},
    {"URSCalibrationGet",    {},      "URSCG",  "",      16383, Never},
    {"URSADCRequest",        {},      "URSRQ",  "",      16383, Never},
    {"URSCalibrationSet",    {"0 x"}, "URSCD0 x", "",    16383, Never},
    {"URSSetNewRemoteSID",   {12},    "URSCF0012", "",   16383, Never},
    {"URSGetStoredSID",      {},      "URSSG",  "",      16383, Never},
    {"SoftwareExposure",     {true},  "XR1",    "",      12,    Never},
    {"RatingPercentage",     {},      "RP?",    "",      16383, Mode},
    {"DosemeterReset",       {},      "DOR",    "",      16383, Caller},
    {"LastExposureDose",     {},      "DO?",    "",      16383, Mode},
    {"AccumulatedDose",      {},      "DOA?",   "",      16383, Mode},
    {"ReadExposureCounter",  {3},     "TC3",    "",      2,     Caller},
    {"ResetExposureCounter", {0},     "TCR0",   "",      2,     Caller},
    {"GeneratorSoftwareVersionRequest", {}, "VR?", "",   162,   Mode},
    {"GetLastExposureParameters", {}, "LE",     "",      2,     Caller},
};
// clang-format on

using CommandsTest = LinkTest;

int firstPhase(int phases) {
    return std::countr_zero(static_cast<unsigned>(phases)) + 1;
}

TEST_F(CommandsTest, EachIsSentInItsOwnFormAndAcknowledgedByItsOwnRule) {
    put("numretries", 2);
    for (const bool handshaking : {false, true}) {
        for (const Row& row : kRows) {
            link.setHandshaking(handshaking);
            phase(firstPhase(row.phases));
            const std::string_view frame =
                handshaking && !row.handshaking.empty() ? row.handshaking : row.plain;
            SCOPED_TRACE(testing::Message() << row.name << ' ' << frame);
            link.operations().call(row.name, row.arguments);
            advance(row.delay - 1);
            EXPECT_THAT(sent, IsEmpty());
            advance(1);
            EXPECT_THAT(sent, ElementsAre(frame));
            settle();
            if (handshaking && row.ack != Never) {
                // Nobody acknowledged it: its second try, then the empty message of a queue run dry.
                EXPECT_THAT(sent, ElementsAre(frame, frame, ""));
            } else {
                EXPECT_THAT(sent, ElementsAre(frame));
            }
        }
    }
}

TEST_F(CommandsTest, ACallerMayAskForAnAcknowledgement) {
    put("numretries", 2);
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        phase(firstPhase(row.phases));
        std::vector<Value> arguments = row.arguments;
        arguments.emplace_back(true);
        if (row.ack == Caller) {
            link.operations().call(row.name, arguments);
            settle();
            EXPECT_THAT(sent, ElementsAre(row.plain, row.plain, ""));
        } else {
            EXPECT_EQ(faultOf([&] { link.operations().call(row.name, arguments); }),
                      Fault::kArgumentsRefused);
        }
    }
}

TEST_F(CommandsTest, EachIsRefusedOutsideItsPhases) {
    for (int number = 1; number <= 14; ++number) {
        phase(number);
        for (const Row& row : kRows) {
            forget();
            link.operations().call(row.name, row.arguments);
            const bool allowed = (row.phases >> (number - 1) & 1) != 0;
            EXPECT_EQ(
                std::count(events.begin(), events.end(), "WrongPhase(\"" + std::string(row.plain) + "\")"),
                allowed ? 0 : 1)
                << row.name << " in phase " << number;
        }
    }
}

TEST_F(CommandsTest, TheTableHoldsNoOther) {
    std::set<std::string_view> mine;
    std::set<std::string_view> table;
    for (const Row& row : kRows) {
        mine.insert(row.name);
    }
    for (const CommandRow& row : Commands::table()) {
        table.insert(row.name);
    }
    EXPECT_EQ(table, mine);
}

TEST_F(CommandsTest, AnAutocalibrationThrowsAwayWhatWaits) {
    phase(6);
    link.call("CalibrationValueUp");
    link.call("CalibrationValueRead");
    link.call("Autocalibration", {true});
    settle();
    EXPECT_THAT(timeline, ElementsAre("1000 CAU1"));
}

TEST_F(CommandsTest, ModeChangesWaitTwiceTheRetriesInterval) {
    phase(2);
    put("RetriesInterval", 300);
    link.call("CALIBRATION", {true});
    settle();
    EXPECT_THAT(timeline, ElementsAre("600 CA1"));
}

} // namespace
} // namespace quillon
