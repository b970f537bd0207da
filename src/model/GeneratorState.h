#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace quillon {

/// What is not known of a generator that starts anew, before it has said it again: texts that are shown, and
/// states that keys follow.
struct UnheardOnceAnew {
    // Technique
    std::string m_KVPDisplay;
    std::string m_MADisplay;
    std::string m_MSDisplay;
    std::string m_MASDisplay;
    std::int32_t m_SmallFocus = -1; ///< 1 selected, 0 not selected, -1 unknown
    std::int32_t m_LargeFocus = -1;

    // Phase and heat
    std::int16_t m_HU = -1;

    // Errors and warnings
    std::int16_t m_LastError = 0;

    // Exposure control
    std::array<bool, 4> m_AECFields{};
    std::array<bool, 4> m_FilmScreens{};
    bool m_Photomultiplier = false;
    bool m_DigitalAEC = false;
    std::int16_t m_Brightness = 0;

    // Fluoroscopy
    std::string m_FlKVPDisplay;
    std::string m_FlTimeDisplay;
    std::string m_FlPPSDisplay;
    bool m_FlABS = false;
    std::array<bool, 5> m_FlMagnification{};
    bool m_FlHighDose = false;
    bool m_FlAlarm = false;
    std::int32_t m_FlContrast = -1;
    bool m_FlKVPTrackingActive = false;
    std::int32_t m_FlKVPTrackingCurve = 0;

    // Service
    std::int32_t m_Workstation = 0; ///< 1 to 8; 0 none
    std::int32_t m_WorkingMode = 0;
};

/// What the generator last reported. Members carry the property names that hosts and scenarios use. Values
/// that are shown are kept twice, as the text that came and as a number; the number stays until the next
/// report.
struct GeneratorState : UnheardOnceAnew {
    // Technique
    std::int16_t m_KVP = 0;
    double m_MA = 0;
    double m_MS = 0;
    double m_MAS = 0;
    std::string m_PostMA;
    std::string m_PostMS;
    std::string m_PostMAS;
    std::int32_t m_TechniqueMode = 4; ///< 0 to 3 the points technique, 4 no technique keys
    bool m_HCFmode = false;
    bool m_TomoAuto = false;

    // Phase and heat
    bool HURemaining = false; ///< heat is shown as what remains
    bool m_CalSliderInAutocal = false;

    // Errors and warnings
    bool m_WarnKVP = false;
    bool m_WarnMAS = false;
    bool m_WarnMA = false;
    bool m_WarnMS = false;
    bool m_WarnTM = false;
    bool m_BlinkOff = false; ///< the dark half of the blink cycle is running
    bool m_DoorOpen = false;

    // Exposure control
    std::int32_t m_AECDensity = 0;
    std::int32_t m_MaxAECDensity = 0; ///< 0: not yet known
    bool m_Roadmapping = false;

    // Fluoroscopy
    std::int16_t m_FlKVP = 0;
    std::int16_t m_FlTime = 0;
    std::int16_t m_FlPPS = 1;
    bool m_FlContinuous = false;
    std::int16_t m_FlMA = 0;

    // Service
    std::int32_t m_AutocalState = 0; ///< 0 idle, 1 asked for, 2 confirmed, 4 reported on by the generator
    bool m_AutocalAnswered = false;
    std::int32_t m_ConfirmStep = 0;
    std::int32_t m_DismissStep = 0;
    std::int32_t m_CalibrationType = -1; ///< 0 an mA station, 1 a parameter, 2 parameter 06
    std::int16_t m_CalibrationParameter = 0;
    std::int32_t m_CalibrationValue = 0;    ///< as reported, also beyond the slider's range
    std::int32_t m_CalibrationRange = 4095; ///< of the slider at an mA station
    bool m_HardwareSync = false;

    // Records
    std::string GeneratorSoftwareVersion;
    bool RXEnable = true;
    bool m_ExposureCounterResetPending = false;

    /// It starts anew.
    void startAnew() { static_cast<UnheardOnceAnew&>(*this) = {}; }
};

/// Working modes from this one on are digital: the digital exposure control page works.
inline constexpr std::int32_t kFirstDigitalMode = 5;

} // namespace quillon
