#include "console/ConsoleTexts.h"

#include <array>

#include "base/Text.h"
#include "console/RecordsTextTable.h"

namespace quillon {

namespace {

using T = ConsoleTexts;

struct TextRow {
    std::string_view name;
    std::string T::*member;
    std::string_view text;
};

/// A text that is a key's caption: replacing it shows at once.
struct KeyRow {
    std::string_view name;
    std::string T::*member;
    ConsoleControl control;
};

/// Names of controls, separated by blanks.
struct ControlList {
    consteval ControlList(const char* list) : names(list) {
        for (std::string_view rest = list; !rest.empty();) {
            const std::size_t end = std::min(rest.find(' '), rest.size());
            if (!ConsoleControl::exists(rest.substr(0, end))) {
                throw "no control has this name";
            }
            rest.remove_prefix(std::min(end + 1, rest.size()));
        }
    }
    std::string_view names;
};

struct CaptionRow {
    std::string_view name;
    ControlList controls;
    std::string_view caption;
};

// clang-format off
constexpr std::array kTexts{
    TextRow{"sInitAutocal",                &T::sInitAutocal,                "Initializing Auto Calibration"},
    TextRow{"sExitAutocal",                &T::sExitAutocal,                "Exiting Auto Calibration"},
    TextRow{"sEnterAutocal",               &T::sEnterAutocal,               "Entering Auto Calibration"},
    TextRow{"sStopAutocal",                &T::sStopAutocal,                "Aborting Auto Calibration"},
    TextRow{"sAutocal",                    &T::sAutocal,                    "Auto Calibration"},
    TextRow{"sAutocalOK",                  &T::sAutocalOK,                  "OK"},
    TextRow{"sAutocalERROR",               &T::sAutocalERROR,               "ERROR"},
    TextRow{"sExitConfiguration",          &T::sExitConfiguration,          "Exiting Configuration"},
    TextRow{"sEnterConfiguration",         &T::sEnterConfiguration,         "Entering Configuration"},
    TextRow{"sExitCalibration",            &T::sExitCalibration,            "Exiting Calibration"},
    TextRow{"sEnterCalibration",           &T::sEnterCalibration,           "Entering Calibration"},
    TextRow{"sReadingExpCounters",         &T::sReadingExpCounters,         "Reading Exposure Counters"},
    TextRow{"sPleaseWait",                 &T::sPleaseWait,                 "Please Wait"},
    TextRow{"sClosing",                    &T::sClosing,                    "Closing ..."},
    TextRow{"sCommError",                  &T::sCommError,                  "Communications ERROR"},
    TextRow{"sGenerator",                  &T::sGenerator,                  "Generator"},
    TextRow{"sPoweringUp",                 &T::sPoweringUp,                 "Powering Up"},
    TextRow{"sPressConfirm",               &T::sPressConfirm,               "Press Confirm to Start"},
    TextRow{"sPressDismiss",               &T::sPressDismiss,               "Or Dismiss to Exit"},
    TextRow{"sPressPrepExpose",            &T::sPressPrepExpose,            "Press Prep and Expose"},
    TextRow{"sPowerUpGenerator",           &T::sPowerUpGenerator,           "POWER UP THE GENERATOR"},
    TextRow{"sFocus",                      &T::sFocus,                      "Focus"},
    TextRow{"scmbClose",                   &T::scmbClose,                   "Close"},
    TextRow{"scmbCancel",                  &T::scmbCancel,                  "Cancel"},
    TextRow{"sResetCounterYes",            &T::sResetCounterYes,            "Yes"},
    TextRow{"sResetCounterNo",             &T::sResetCounterNo,             "No"},
    TextRow{"sResetExposureCounterTube1",  &T::sResetExposureCounterTube1,  "Do you really want to reset RAD exposure counter for tube 1?"},
    TextRow{"sResetExposureCounterTube2",  &T::sResetExposureCounterTube2,  "Do you really want to reset RAD exposure counter for tube 2?"},
    TextRow{"sResetExposureCounterTube3",  &T::sResetExposureCounterTube3,  "Do you really want to reset RAD exposure counter for tube 3?"},
    TextRow{"sResetExposureCounterFluoro", &T::sResetExposureCounterFluoro, "Do you really want to reset fluoro time exposure counter?"},
    TextRow{"sAECBackUpTime",              &T::sAECBackUpTime,              "EXPOSURE ABORTED BY BACK-UP TIMER"},
    TextRow{"sAECCompensationError",       &T::sAECCompensationError,       "WRONG AEC SELECTION"},
    // Link and progress; %1 and %2 are numbers
    TextRow{"sCountOf",                    &T::sCountOf,                    "%1 of %2"},
    TextRow{"sSecondsLeft",                &T::sSecondsLeft,                "%1 s left"},
    TextRow{"sExposuresMade",              &T::sExposuresMade,              "Exposures: %1"},
    TextRow{"sReadingSettings",            &T::sReadingSettings,            "Reading the settings"},
    // The status bar: the line, X-rays, what is waited for
    TextRow{"sLineClosed",                 &T::sLineClosed,                "closed"},
    TextRow{"sLineNotOpen",                &T::sLineNotOpen,               "not open"},
    TextRow{"sLineGone",                   &T::sLineGone,                  "%1 is gone"},
    TextRow{"sLineQuiet",                  &T::sLineQuiet,                 "no answer for %1 s"},
    TextRow{"sRaysPossible",               &T::sRaysPossible,              "X-rays possible"},
    TextRow{"sRaysHeld",                   &T::sRaysHeld,                  "X-rays held back"},
    TextRow{"sRaysRefused",                &T::sRaysRefused,               "No X-rays: %1"},
    TextRow{"sRaysNone",                   &T::sRaysNone,                  "No X-rays"},
    TextRow{"sRaysUnknown",                &T::sRaysUnknown,               "X-rays unknown"},
    TextRow{"sRaysOn",                     &T::sRaysOn,                    "X-RAYS ON"},
    TextRow{"sHoldToReset",                &T::sHoldToReset,               "Keep holding to reset the counter"},
    TextRow{"sNotReported",                &T::sNotReported,               "%1: waiting for the report"},
    TextRow{"sNeverReported",              &T::sNeverReported,              "%1 was not reported"},
    TextRow{"sOff",                        &T::sOff,                        "off"},
    TextRow{"sValueNotStored",             &T::sValueNotStored,            "Calibration value changed, not stored"},
    TextRow{"sValueLeft",                  &T::sValueLeft,                 "The calibration value was not stored"},
    TextRow{"sNotStored",                  &T::sNotStored,                 "changed, not stored"},
    TextRow{"sBackBy",                     &T::sBackBy,                    "Back: %1"},
    // What a box takes; %1 and %2 are numbers
    TextRow{"sBounds",                     &T::sBounds,                    "%1 to %2"},
    TextRow{"sBoundsOfKeys",               &T::sBoundsOfKeys,              "keys: %1 to %2"},
    // Why a key does nothing; its words and a colon come first
    TextRow{"sWhyError",                   &T::sWhyError,                  "reset the error first"},
    TextRow{"sWhyNoError",                 &T::sWhyNoError,                "no error stands"},
    TextRow{"sWhyExposure",                &T::sWhyExposure,               "not during preparation or exposure"},
    TextRow{"sWhyUnheard",                 &T::sWhyUnheard,                "the generator does not answer"},
    TextRow{"sWhyQuestion",                &T::sWhyQuestion,               "answer Confirm or Dismiss first"},
    TextRow{"sWhyPanel",                   &T::sWhyPanel,                  "answer the open panel first"},
    TextRow{"sWhyMode",                    &T::sWhyMode,                   "leave %1 first"},
    TextRow{"sWhyNotIn",                   &T::sWhyNotIn,                  "has no effect in %1"},
    TextRow{"sWhyNotNow",                  &T::sWhyNotNow,                 "not possible now"},
    TextRow{"sWhyNoAction",                &T::sWhyNoAction,               "the generator takes no step here"},
    TextRow{"sWhyNotDigital",              &T::sWhyNotDigital,             "the workstation is not digital"},
    TextRow{"sWhyNoField",                 &T::sWhyNoField,                "no AEC field is on"},
    TextRow{"sWhyNoDensity",               &T::sWhyNoDensity,               "the generator offers no such density"},
    TextRow{"sWhyNoBrightness",            &T::sWhyNoBrightness,           "only with ABS"},
    TextRow{"sWhyFixedKVP",                &T::sWhyFixedKVP,               "the kVp of a station is fixed here"},
    TextRow{"sWhyNoNumber",                &T::sWhyNoNumber,               "type a number first"},
    TextRow{"sWhyHold",                    &T::sWhyHold,                   "hold for %1 s"},
    TextRow{"sWhyHoldToEnd",               &T::sWhyHoldToEnd,              "hold for %1 s to end the program"},
    TextRow{"sWhyHandle",                  &T::sWhyHandle,                 "drag the handle, or use the arrows"},
    // States that are otherwise only painted, for a screen reader
    TextRow{"sMarkPrompt",                 &T::sMarkPrompt,                 "prompt"},
    TextRow{"sMarkRadiation",              &T::sMarkRadiation,              "radiation"},
    TextRow{"sMarkGood",                   &T::sMarkGood,                   "good"},
    TextRow{"sMarkWarning",                &T::sMarkWarning,                "warning"},
    TextRow{"sMarkAlarm",                  &T::sMarkAlarm,                  "alarm"},
    TextRow{"sMarkLit",                    &T::sMarkLit,                    "lit"},
    TextRow{"sMarkPending",                &T::sMarkPending,                "sent, not confirmed"},
    TextRow{"sMarkOld",                    &T::sMarkOld,                    "old"},
    TextRow{"sMarkEmpty",                  &T::sMarkEmpty,                  "empty"},
    TextRow{"sMarkBack",                   &T::sMarkBack,                   "back"},
    // The keypad of a touch panel
    TextRow{"sKeypadErase",                &T::sKeypadErase,                "Erase"},
    TextRow{"sKeypadDone",                 &T::sKeypadDone,                 "Done"},
    // The summary of the generator
    TextRow{"sStateUnheard",               &T::sStateUnheard,               "Nothing heard yet"},
    TextRow{"sStateNotKnown",              &T::sStateNotKnown,             "Not known"},
    TextRow{"sStateReady",                 &T::sStateReady,                 "Ready"},
    TextRow{"sStatePreparation",           &T::sStatePreparation,           "Preparation"},
    TextRow{"sStateExposure",              &T::sStateExposure,              "Exposure"},
    TextRow{"sStateError",                 &T::sStateError,                 "Error"},
    TextRow{"sStateTubeTooHot",            &T::sStateTubeTooHot,            "Tube too hot"},
    TextRow{"sTubeHeat",                   &T::sTubeHeat,                   "Tube heat"},
    TextRow{"sWarnings",                   &T::sWarnings,                   "Standing"},
    TextRow{"sWarnDoor",                   &T::sWarnDoor,                   "Door open"},
    TextRow{"sWarnGenOverload",            &T::sWarnGenOverload,            "Generator overload"},
    TextRow{"sWarnTubeOverload",           &T::sWarnTubeOverload,           "Tube overload"},
    TextRow{"sWarnRotor",                  &T::sWarnRotor,                  "Rotor"},
    TextRow{"sWarnOverheat",               &T::sWarnOverheat,               "Overheat"},
    TextRow{"sWarnTechnique",              &T::sWarnTechnique,              "Technique"},
    TextRow{"sWarnCollimator",             &T::sWarnCollimator,             "Collimator"},
    TextRow{"sErrorsSinceStart",           &T::sErrorsSinceStart,           "Errors since the start"},
    TextRow{"sExit",                       &T::m_ExitCaption,               "Exit"},
    TextRow{"sSoftwareVersions",           &T::sSoftwareVersions,           "SOFTWARE VERSIONS"},
    TextRow{"sGeneratorVersion",           &T::sGeneratorVersion,           "Generator"},
    TextRow{"sPointParameter",             &T::sPointParameter,             "PT%1 Parameter"},
    // Dialogs and message boxes
    TextRow{"sProtocolError",              &T::sProtocolError,              "Protocol Error"},
    TextRow{"sProtocolErrorText",          &T::sProtocolErrorText,          "Please check comunication\r\nbetween console and generator"},
    TextRow{"sDipSwitchError",             &T::sDipSwitchError,             "BQS Calibration Dip Switch Error"},
    TextRow{"sModeReached",                &T::sModeReached,                "The generator has reached the mode meanwhile"},
    TextRow{"sDipSwitchErrorText",         &T::sDipSwitchErrorText,         "Please check calibration dip switch\r\nand toggle with power off"},
    TextRow{"sBoxTitle",                   &T::sBoxTitle,                   kBoxTitle},
    TextRow{"sBoxYes",                     &T::sBoxYes,                     "Yes"},
    TextRow{"sBoxNo",                      &T::sBoxNo,                      "No"},
    TextRow{"sBoxOK",                      &T::sBoxOK,                      "OK"},
    TextRow{"sWindowTitle",                &T::sWindowTitle,                "Torvane Generator Service  Application"},
    TextRow{"sShutdownQuestion",           &T::sShutdownQuestion,           "Close the port and restart the PC?"},
    TextRow{"sRestartRefused",             &T::sRestartRefused,             "The PC was not restarted: %1"},
    TextRow{"sNoNumber",                   &T::sNoNumber,                   "Not a valid number: %1 %2"},
    TextRow{"sNoBaudrate",                 &T::sNoBaudrate,                 "Not a valid baudrate: %1"},
    TextRow{"sNoPort",                     &T::sNoPort,                     "Cannot open port COM%1"},
    TextRow{"sCannotOpenPort",             &T::sCannotOpenPort,             "Cannot Open Port: %1"},
};

// Texts that are nothing but the caption of their controls.
constexpr std::array kCaptions{
    CaptionRow{"scmbReadExposureCounters", "cmbReadExposureCounters", "Read Exposure Counters"},
    CaptionRow{"scmbConfiguration",        "cmbConfiguration",        "Configuration"},
    CaptionRow{"scmbManualCalibration",    "cmbManualCalibration",    "Manual Calibration"},
    CaptionRow{"scmbAutocalibration",      "cmbAutocalibration",      "Auto Calibration"},
    CaptionRow{"scmbResetError",           "cmbResetError",           "RESET ERROR"},
    CaptionRow{"sExposureCounters",        "lblExposureCounters",     "EXPOSURE COUNTERS"},
    CaptionRow{"sTube1RADCounter",         "lblT1RAD",                "TUBE 1 RAD"},
    CaptionRow{"sTube2RADCounter",         "lblT2RAD",                "TUBE 2 RAD"},
    CaptionRow{"sTubeFluoroCounter",       "lblTFluoro",              "FLUORO"},
    CaptionRow{"sTube3RADCounter",         "lblT3RAD",                "TUBE 3 RAD"},
    CaptionRow{"sResetTubeCounter",        "cmdResetT1 cmdResetT2 cmdResetFluoro cmdResetT3", "Reset"},
    CaptionRow{"sServiceMode",             "lblQuillonConsole",       "Generator Service Mode"},
    CaptionRow{"sActualExposureParameters", "fraActualExposureParameters", "Actual Exposure Parameters"},
    CaptionRow{"scmbGoToUserMode",         "cmbGoToUserMode",         "Go to User Mode"},
    CaptionRow{"scmdOrla",                 "cmdOrla",                 "Orla Autotracking Calibration"},
    CaptionRow{"scmdMultiRoom",            "cmdMultiRoom",            "MultiRoom Calibration"},
    // The autotracking positioner
    CaptionRow{"sOrlaCalibration",         "fraOrla",                 "Orla Autotracking Analog Signals Calibration"},
    CaptionRow{"sLongPosition",            "cmdLongPosition fraLong", "Ceiling Suspension Longitudinal Position"},
    CaptionRow{"sTrayPosition",            "cmdTrayPosition",         "Table Tray Position"},
    CaptionRow{"sTrayCalibration",         "fraTray",                 "Table Tray Position Calibration"},
    CaptionRow{"sAlfaTubeAngle",           "cmdAlfaTubeAngle",        "Tube Alfa Angle"},
    CaptionRow{"sAlfaCalibration",         "fraAlfa",                 "Tube Alfa Calibration"},
    CaptionRow{"sBetaTubeAngle",           "cmdBetaTubeAngle",        "Tube Beta Angle"},
    CaptionRow{"sBetaCalibration",         "fraBeta",                 "Tube Beta Calibration"},
    CaptionRow{"sSIDCalibration",          "fraSID",                  "SID Calibration"},
    CaptionRow{"sADCReadout",              "lblOTCLongADC lblOTCTrayADC lblTubeAlfaADC lblTubeBetaADC lblSIDADC", "ADC Readout"},
    CaptionRow{"sSetPosition",             "cmdSetOTCLongPlus cmdSetOTCLongZero cmdSetOTCLongMinus "
                                           "cmdSetOTCTrayPlus cmdSetOTCTrayZero cmdSetOTCTrayMinus "
                                           "cmdSetTubeAlfaPlus cmdSetTubeAlfaZero cmdSetTubeAlfaMinus "
                                           "cmdSetTubeBetaPlus cmdSetTubeBetaZero cmdSetTubeBetaMinus "
                                           "cmdSetSIDPlus cmdSetSIDMinus", "Set"},
    CaptionRow{"sSIDMax",                  "lblSIDPlus",              "Max"},
    CaptionRow{"sSIDMin",                  "lblSIDMinus",             "Min"},
    // The remote positioner
    CaptionRow{"sRemote",                  "fraRemote",               "REMOTE"},
    CaptionRow{"sRemoteConfiguration",     "lblTitleWBCalib",         "REMOTE POSITIONER CONFIGURATION"},
    CaptionRow{"scmdSetNewSID",            "cmdSetNewSID",            "Store New SID"},
    CaptionRow{"sStoredSID",               "LblStoredSID",            "Stored SID"},
    CaptionRow{"scmdRequestSID",           "cmdRequestSID",           "Request stored SID"},
    CaptionRow{"sADCValue",                "Label25",                 "ADC Value"},
    CaptionRow{"scmdStoreCalibPoint",      "cmdStoreCalibPoint",      "Store"},
    CaptionRow{"scmdNextCalibPoint",       "cmdNextCalibPoint",       "Next Point"},
    CaptionRow{"sParameter",               "lblTitleParam",           "Parameter"},
    CaptionRow{"scmdCalibrationGet",       "cmdCalibrationGet",       "Request calibration"},
};
constexpr std::array kKeys{
    KeyRow{"scmbClose",        &T::scmbClose,        "cmbClose"},
    KeyRow{"sResetCounterYes", &T::sResetCounterYes, "cmdResetCounterYes"},
    KeyRow{"sResetCounterNo",  &T::sResetCounterNo,  "cmdResetCounterNo"},
};
// clang-format on
static_assert(kTexts.size() * sizeof(std::string) + sizeof(RecordsTexts) == sizeof(ConsoleTexts),
              "every member has its row");

std::string fill(std::string_view text, const std::vector<std::string>& parts) {
    std::string whole;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const std::size_t place = text[at] == '%' && at + 1 < text.size()
                                      ? static_cast<std::size_t>(text[at + 1] - '1')
                                      : parts.size();
        if (place < parts.size()) {
            whole += parts[place];
            ++at;
        } else {
            whole += text[at];
        }
    }
    return whole;
}

void setCaptions(ControlHost& console, ControlList controls, std::string_view caption) {
    for (const std::string_view name : split(controls.names, " ")) {
        console[name].setCaption(caption);
    }
}

} // namespace

void ConsoleTexts::initialize(ConsoleHost& console) {
    for (const TextRow& row : kTexts) {
        this->*row.member = row.text;
    }
    records = {};
    for (const KeyRow& row : kKeys) {
        console[row.control].setCaption(this->*row.member);
    }
    for (const CaptionRow& row : kCaptions) {
        setCaptions(console, row.controls, row.caption);
    }
}

void ConsoleTexts::addTo(Operations& operations, ConsoleHost& console) {
    for (const TextRow& row : kTexts) {
        operations.addWriteOnly(row.name,
                                [this, &row](std::string text) { this->*row.member = std::move(text); });
    }
    for (const KeyRow& row : kKeys) {
        operations.addWriteOnly(row.name, [this, &console, &row](std::string text) {
            this->*row.member = std::move(text);
            console[row.control].setCaption(this->*row.member);
        });
    }
    for (const CaptionRow& row : kCaptions) {
        operations.addWriteOnly(
            row.name, [&console, &row](std::string_view text) { setCaptions(console, row.controls, text); });
    }
    for (const RecordsText& row : kRecordsTexts) {
        operations.addWriteOnly(row.name,
                                [this, &row](std::string_view text) { records.replace(row.name, text); });
    }
}

std::vector<std::string> ConsoleTexts::names() {
    std::vector<std::string> all;
    all.reserve(kTexts.size() + kCaptions.size() + kRecordsTexts.size());
    for (const TextRow& row : kTexts) {
        all.emplace_back(row.name);
    }
    for (const CaptionRow& row : kCaptions) {
        all.emplace_back(row.name);
    }
    for (const RecordsText& row : kRecordsTexts) {
        all.emplace_back(row.name);
    }
    return all;
}

std::string ConsoleTexts::filled(std::string_view text, std::initializer_list<std::string_view> parts) {
    return fill(text, {parts.begin(), parts.end()});
}

std::string ConsoleTexts::filled(std::string_view text, std::initializer_list<std::int64_t> numbers) {
    std::vector<std::string> words;
    for (const std::int64_t number : numbers) {
        words.push_back(std::to_string(number));
    }
    return fill(text, words);
}

std::string ConsoleTexts::waitPrompt(std::string_view text) const {
    return std::string(text).append(kLineBreak).append(sPleaseWait);
}

} // namespace quillon
