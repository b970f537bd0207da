#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "console/RecordsTexts.h"
#include "console/layout/Names.h"
#include "runtime/Operations.h"

namespace quillon {

inline constexpr std::string_view kLineBreak = "\r\n";
/// What a message box is headed with as long as nobody has replaced it.
inline constexpr std::string_view kBoxTitle = "Torvane Generator Service";

/// The operator's texts. Each can be replaced by name.
struct ConsoleTexts {
    std::string sInitAutocal;
    std::string sExitAutocal;
    std::string sEnterAutocal;
    std::string sStopAutocal;
    std::string sAutocal;
    std::string sAutocalOK;
    std::string sAutocalERROR;
    std::string sExitConfiguration;
    std::string sEnterConfiguration;
    std::string sExitCalibration;
    std::string sEnterCalibration;
    std::string sReadingExpCounters;
    std::string sPleaseWait;
    std::string sClosing;
    std::string sCommError;
    std::string sGenerator;
    std::string sPoweringUp;
    std::string sPressConfirm;
    std::string sPressDismiss;
    std::string sPressPrepExpose;
    std::string sPowerUpGenerator;
    std::string sFocus;
    std::string scmbClose;
    std::string scmbCancel;
    std::string sResetCounterYes;
    std::string sResetCounterNo;
    std::string sResetExposureCounterTube1;
    std::string sResetExposureCounterTube2;
    std::string sResetExposureCounterTube3;
    std::string sResetExposureCounterFluoro;
    std::string sAECBackUpTime;
    std::string sAECCompensationError;
    std::string sCountOf;
    std::string sSecondsLeft;
    std::string sExposuresMade;
    std::string sReadingSettings;
    std::string sLineClosed;
    std::string sLineNotOpen;
    std::string sLineGone;
    std::string sLineQuiet;
    std::string sRaysPossible;
    std::string sRaysHeld;
    std::string sRaysRefused;
    std::string sRaysNone;
    std::string sRaysUnknown;
    std::string sRaysOn;
    std::string sHoldToReset;
    std::string sNotReported;
    std::string sNeverReported;
    std::string sOff;
    std::string sValueNotStored;
    std::string sValueLeft;
    std::string sNotStored;
    std::string sBackBy;
    std::string sBounds;
    std::string sBoundsOfKeys;
    std::string sWhyError;
    std::string sWhyNoError;
    std::string sWhyExposure;
    std::string sWhyUnheard;
    std::string sWhyQuestion;
    std::string sWhyPanel;
    std::string sWhyMode;
    std::string sWhyNotIn;
    std::string sWhyNotNow;
    std::string sWhyNoAction;
    std::string sWhyNotDigital;
    std::string sWhyNoField;
    std::string sWhyNoDensity;
    std::string sWhyNoBrightness;
    std::string sWhyFixedKVP;
    std::string sWhyNoNumber;
    std::string sWhyHold;
    std::string sWhyHoldToEnd;
    std::string sWhyHandle;
    std::string sMarkPrompt;
    std::string sMarkRadiation;
    std::string sMarkGood;
    std::string sMarkWarning;
    std::string sMarkAlarm;
    std::string sMarkLit;
    std::string sMarkPending;
    std::string sMarkOld;
    std::string sMarkEmpty;
    std::string sMarkBack;
    std::string sKeypadErase;
    std::string sKeypadDone;
    std::string sStateUnheard;
    std::string sStateNotKnown;
    std::string sStateReady;
    std::string sStatePreparation;
    std::string sStateExposure;
    std::string sStateError;
    std::string sStateTubeTooHot;
    std::string sTubeHeat;
    std::string sWarnings;
    std::string sWarnDoor;
    std::string sWarnGenOverload;
    std::string sWarnTubeOverload;
    std::string sWarnRotor;
    std::string sWarnOverheat;
    std::string sWarnTechnique;
    std::string sWarnCollimator;
    std::string sErrorsSinceStart;
    std::string m_ExitCaption;
    std::string sSoftwareVersions;
    std::string sGeneratorVersion;
    std::string sPointParameter;
    std::string sProtocolError;
    std::string sProtocolErrorText;
    std::string sDipSwitchError;
    std::string sDipSwitchErrorText;
    std::string sModeReached; ///< when the generator has reached the mode after all
    std::string sBoxTitle;
    std::string sBoxYes;
    std::string sBoxNo;
    std::string sBoxOK;
    std::string sWindowTitle;
    std::string sShutdownQuestion;
    std::string sRestartRefused;
    std::string sNoNumber;
    std::string sNoBaudrate;
    std::string sNoPort;
    std::string sCannotOpenPort;
    RecordsTexts records;

    /// Sets the defaults, and the captions that come from texts.
    void initialize(ConsoleHost& console);
    /// Adds all texts as write-only properties.
    void addTo(Operations& operations, ConsoleHost& console);
    /// The names of all texts that addTo() adds.
    [[nodiscard]] static std::vector<std::string> names();

    /// The text with the parts in the places that %1 and %2 mark; one without a place is left out.
    [[nodiscard]] static std::string filled(std::string_view text,
                                            std::initializer_list<std::string_view> parts);
    [[nodiscard]] static std::string filled(std::string_view text,
                                            std::initializer_list<std::int64_t> numbers);
    /// The text, a line break, and the request to wait.
    [[nodiscard]] std::string waitPrompt(std::string_view text) const;
};

} // namespace quillon
