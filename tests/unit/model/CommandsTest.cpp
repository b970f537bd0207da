#include "model/Commands.h"

#include <algorithm>
#include <bit>

#include "link/OutboundTable.h"
#include "tests/unit/base/Faults.h"
#include "tests/unit/model/LinkFixture.h"

namespace quillon {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

enum class Ack { Never, Mode, Caller };
using enum Ack;

/// One command of each form: its frame without and with handshaking, the phases that allow it, when it waits
/// for its acknowledgement, and how long after the call it leaves.
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
    {"KVPOneUp",             {},      "KV+",    "KVU",   306,   Mode},
    {"MSOneUp",              {},      "MSU",    "",      18,    Mode},
    {"SetFocalSpot",         {0},     "FOS1",   "",      34,    Caller},
    {"SetFocalSpot",         {1},     "FOS2",   "",      34,    Caller},
    {"SetAECFieldCenter",    {false}, "FI10",   "",      130,   Mode},
    {"SetRoadMapping",       {true},  "RM1",    "",      16383, Caller},
    {"SetBrightness",        {7},     "BR007",  "",      2,     Mode},
    {"FlRefresh",            {},      "FLF",    "",      18,    Caller},
    {"FlPPSNext",            {},      "FLP",    "",      18,    Mode},
    {"FlPPSOneDown",         {},      "FLP-",   "FLPD",  18,    Mode},
    {"SetFlPPS",             {3},     "FLP03",  "",      18,    Mode},
    {"FlContrast",           {2},     "FLC 2",  "",      18,    Caller},
    {"KVPTrackingFormula",   {1, 20, 3, 450, 50}, "KVTF1A020B03MA00450MS00050", "", 18, Caller},
    {"FlContrast",           {-1},    "FLC-1",  "",      18,    Caller},
    {"Configuration",        {true},  "CF1",    "",      130,   Caller},
    {"calibration",          {true},  "CA1",    "",      290,   Caller, 400},
    {"Autocalibration",      {false}, "CAU0",   "",      7456,  Caller, 1000},
    {"URSCalibrationSet",    {"0 x"}, "URSCD0 x", "",    16383, Never},
    {"URSSetNewRemoteSID",   {12},    "URSCF0012", "",   16383, Never},
    {"SoftwareExposure",     {true},  "XR1",    "",      12,    Never},
    {"ResetExposureCounter", {0},     "TCR0",   "",      2,     Caller},
    {"GeneratorSoftwareVersionRequest", {}, "VR?", "",   162,   Mode},
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

} // namespace
} // namespace quillon
