#include "ProbeReasons.h"

#include <array>

namespace quillon {

namespace {

// clang-format off
constexpr std::string_view kHost = "a host sends it by an operation, and no key of the console does";
constexpr std::string_view kLent = "the keys are hidden while the machine is lent, and their page is when it is not";
constexpr std::string_view kDigitalPage = "the way to its page is barred while the machine is lent, and hidden when it is not";
constexpr std::string_view kOwnWays = "the console leads through the pages of the panel and takes its own ways away";
constexpr std::string_view kShort = "it holds the poll at first, and is over before a silence is long enough for a loss";
constexpr std::array kReasons{
    Reason{"command KV?", kHost},
    Reason{"command MA?", kHost},
    Reason{"command MS?", kHost},
    Reason{"command MX?", kHost},
    Reason{"command FO?", kHost},
    Reason{"command FI?", kHost},
    Reason{"command FN?", kHost},
    Reason{"command FS?", kHost},
    Reason{"command FLK?", kHost},
    Reason{"command FLT?", kHost},
    Reason{"command FLP?", kHost},
    Reason{"command FLA?", kHost},
    Reason{"command SA", kHost},
    Reason{"command SB", kHost},
    Reason{"command SC", kHost},
    Reason{"command SD", kHost},
    Reason{"command SE", kHost},
    Reason{"command AEC", kHost},
    Reason{"command KV", kHost},
    Reason{"command MS", kHost},
    Reason{"command MX", kHost},
    Reason{"command MA", kHost},
    Reason{"command FLK", kHost},
    Reason{"command FLT", kHost},
    Reason{"command KVTF", kHost},
    Reason{"command ABC", kHost},
    Reason{"command FLC", kHost},
    Reason{"command RM", kHost},
    Reason{"command BR", kHost},
    Reason{"command FLMA+", kHost},
    Reason{"command FLMA-", kHost},
    Reason{"command LE", kHost},
    Reason{"command RP?", kHost},
    Reason{"command C++", kHost},
    Reason{"command C--", kHost},
    Reason{"command CAR", kHost},
    Reason{"command TM", kLent},
    Reason{"command DOR", kLent},
    Reason{"command DO?", kLent},
    Reason{"command DOA?", kLent},
    Reason{"key TorvaneSerial.cmbDose*", kLent},
    Reason{"key TorvaneSerial.comboReadExposureCounter", kLent},
    Reason{"key TorvaneSerial.cmbReadExposureCounter", kLent},
    Reason{"key TorvaneSerial.cmbTM*", kLent},
    Reason{"command PH", kDigitalPage},
    Reason{"command BR-", kDigitalPage},
    Reason{"command BR--", kDigitalPage},
    Reason{"command DA", kDigitalPage},
    Reason{"key TorvaneSerial.cmbMainMenu(2)", kDigitalPage},
    Reason{"key TorvaneSerial.cmbDigitalAEC", kDigitalPage},
    Reason{"key TorvaneSerial.cmbPhotomultiplier", kDigitalPage},
    Reason{"key TorvaneSerial.cmbDAEC*", kDigitalPage},
    Reason{"key TorvaneSerial.cmbMinimize", kOwnWays},
    Reason{"key TorvaneSerial.Iconized", kOwnWays},
    Reason{"key TorvaneSerial.cmbGotoServiceMenu", kOwnWays},
    Reason{"key TorvaneSerial.cmbGotoMainMenu", kOwnWays},
    Reason{"key TorvaneSerial.cmbServiceMenu*", kOwnWays},
    Reason{"key TorvaneSerial.cmbConfiguration", kOwnWays},
    Reason{"key TorvaneSerial.cmbCalibration", kOwnWays},
    Reason{"key TorvaneSerial.cmbAutocalibration", kOwnWays},
    Reason{"key TorvaneSerial.comboResetExposureCounter", kOwnWays},
    Reason{"key TorvaneSerial.cmbResetExposureCounter", kOwnWays},
    Reason{"key TorvaneSerial.cmbComm*", kOwnWays},
    Reason{"key TorvaneSerial.cmbToggleDebug", kOwnWays},
    Reason{"key TorvaneSerial.lstExtendedPosition", "it is made hidden and shown by nobody"},
    Reason{"key Quillon.cmdSoftwareUpgrade", "it is disabled as long as it lives"},
    Reason{"wait TorvaneSerial.tmrAutorepFlKVP", "a host asks for it, and the console does not"},
    Reason{"entering configuration meets a loss", kShort},
    Reason{"leaving configuration meets a loss", kShort},
    Reason{"entering calibration meets a loss", kShort},
    Reason{"leaving autocalibration meets a loss", kShort},
    Reason{"box refused", "the PC of the scenario runner starts anew when it is asked to; ClosingTest has one that does not"},
};
// clang-format on

} // namespace

std::span<const Reason> reasonsOfProbes() {
    return kReasons;
}

} // namespace quillon
