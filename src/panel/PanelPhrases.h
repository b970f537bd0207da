#pragma once

#include <array>
#include <string_view>

namespace quillon {

/// A name under which the operator's language replaces words of the generator's keyboard, wherever they stand
/// on it.
struct PanelPhrase {
    std::string_view name;
    std::string_view words;
};

// Abbreviations that stand on the machine itself are not among them.
inline constexpr auto kPanelPhrases = std::to_array<PanelPhrase>({
    // clang-format off
    {"TorvaneSerial.sInitialization", "Initialization"},
    {"TorvaneSerial.sNormalOperation", "Normal Operation"},
    {"TorvaneSerial.sPreparation", "Preparation"},
    {"TorvaneSerial.sRADExposure", "RAD Exposure"},
    {"TorvaneSerial.sFLExposure", "FL Exposure"},
    {"TorvaneSerial.sCalibration", "Calibration"},
    {"TorvaneSerial.sError", "ERROR"},
    {"TorvaneSerial.sConfiguration", "Configuration"},
    {"TorvaneSerial.sAutocalibration", "Autocalibration"},
    {"TorvaneSerial.sTubeTooHot", "Tube Too Hot"},
    {"TorvaneSerial.sConfirmDismiss", "Confirm/Dismiss"},
    {"TorvaneSerial.sAutocalError", "Autocal error"},
    {"TorvaneSerial.sAutocalOK", "Autocal OK"},
    {"TorvaneSerial.sMainMenu", "Main Menu"},
    {"TorvaneSerial.sServiceMenu", "Service Menu"},
    {"TorvaneSerial.sMain", "Main"},
    {"TorvaneSerial.sService", "Service"},
    {"TorvaneSerial.sComm", "Comm"},
    {"TorvaneSerial.sFluoro", "Fluoro"},
    {"TorvaneSerial.sDefaultConfiguration", "Default Configuration"},
    {"TorvaneSerial.sTube", "Tube"},
    {"TorvaneSerial.sPositionerInterlock", "Positioner Interlock"},
    {"TorvaneSerial.sFailSafe", "Fail Safe"},
    {"TorvaneSerial.sSyncType", "Sync Type"},
    {"TorvaneSerial.sKVTracking", "KV Tracking"},
    {"TorvaneSerial.sKVPTracking", "KVP Tracking"},
    {"TorvaneSerial.sAECAreas", "AEC Areas"},
    {"TorvaneSerial.sAreas", "Areas"},
    {"TorvaneSerial.sLeft", "Left"},
    {"TorvaneSerial.sCenter", "Center"},
    {"TorvaneSerial.sRight", "Right"},
    {"TorvaneSerial.sFocus", "Focus"},
    {"TorvaneSerial.sSmall", "SMALL"},
    {"TorvaneSerial.sLarge", "LARGE"},
    {"TorvaneSerial.sToggle", "Toggle"},
    {"TorvaneSerial.sSetFocus", "Set SFul"},
    {"TorvaneSerial.sCalibrationValue", "Calibration Value"},
    {"TorvaneSerial.sRead", "Read"},
    {"TorvaneSerial.sStore", "Store"},
    {"TorvaneSerial.sConfirm", "Confirm"},
    {"TorvaneSerial.sDismiss", "Dismiss"},
    {"TorvaneSerial.sDoor", "Door"},
    {"TorvaneSerial.sGenOver", "Gen. Over."},
    {"TorvaneSerial.sTubeOver", "Tube Over."},
    {"TorvaneSerial.sRotor", "Rotor"},
    {"TorvaneSerial.sOverheat", "Overheat"},
    {"TorvaneSerial.sTechnique", "Technique"},
    {"TorvaneSerial.sCollimator", "Collimator"},
    {"TorvaneSerial.sIINotAligned", "II Not Aligned"},
    {"TorvaneSerial.sTubeNotCentered", "Tube Not Centered"},
    {"TorvaneSerial.sResetError", "Reset Error"},
    {"TorvaneSerial.sExpose", "Expose"},
    {"TorvaneSerial.sWarning", "Warning"},
    {"TorvaneSerial.sExposureCounters", "Exposure Counters"},
    {"TorvaneSerial.sTube1RAD", "Tube1 RAD"},
    {"TorvaneSerial.sTube2RAD", "Tube2 RAD"},
    {"TorvaneSerial.sDosemeter", "Dosemeter (mGycm2)"},
    {"TorvaneSerial.sLastExposure", "Last Exposure"},
    {"TorvaneSerial.sAccumulated", "Accumulated"},
    {"TorvaneSerial.sReset", "Reset"},
    {"TorvaneSerial.sFilmScreen", "Film Screen"},
    {"TorvaneSerial.sSlow", "Slow"},
    {"TorvaneSerial.sMedium", "Medium"},
    {"TorvaneSerial.sFast", "Fast"},
    {"TorvaneSerial.sDensity", "Density"},
    {"TorvaneSerial.sBrightness", "Brightness"},
    {"TorvaneSerial.sPhotomultiplier", "Photomultiplier"},
    {"TorvaneSerial.sContrast", "Contrast"},
    {"TorvaneSerial.sLow", "Low"},
    {"TorvaneSerial.sHigh", "High"},
    {"TorvaneSerial.sVeryHigh", "VeryHigh"},
    {"TorvaneSerial.sNext", "Next"},
    {"TorvaneSerial.sContinuous", "Continuous"},
    {"TorvaneSerial.sMagnification", "Magnification"},
    {"TorvaneSerial.sNormal", "Normal"},
    {"TorvaneSerial.sTime", "Time"},
    {"TorvaneSerial.sDose", "Dose"},
    {"TorvaneSerial.sAlarm", "Alarm"},
    {"TorvaneSerial.sDirect", "Direct"},
    {"TorvaneSerial.sPort", "Port"},
    {"TorvaneSerial.sBaudRate", "Baud Rate"},
    {"TorvaneSerial.sParity", "Parity"},
    {"TorvaneSerial.sDataBits", "Data Bits"},
    {"TorvaneSerial.sStopBits", "Stop Bits"},
    {"TorvaneSerial.sOn", "ON"},
    {"TorvaneSerial.sOff", "OFF"},
    {"TorvaneSerial.sDebugWindow", "Debug Window"},
    {"TorvaneSerial.sAutoCalibrationKey", "AutoCalibration"},
    // clang-format on
});

} // namespace quillon
