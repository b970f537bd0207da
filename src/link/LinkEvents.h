#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "base/Phase.h"
#include "runtime/Signal.h"

namespace quillon {

// What the link control tells its host: number, name, parameter names, parameter types. One row an event.
// clang-format off
#define TORVANE_LINK_EVENTS(X) \
    X(1, CannotOpenPort, "port", std::int16_t) \
    X(2, KVPChangeValue, "NewValue", std::string) \
    X(3, KVPChangeDisplay, "NewValue", std::string) \
    X(4, MAChangeValue, "NewValue", std::string) \
    X(5, MAChangeDisplay, "NewValue", std::string) \
    X(6, MASChangeValue, "NewValue", std::string) \
    X(7, MASChangeDisplay, "NewValue", std::string) \
    X(8, MSChangeValue, "NewValue", std::string) \
    X(9, MSChangeDisplay, "NewValue", std::string) \
    X(10, TMChangeValue, "NewValue", std::int32_t) \
    X(11, APRTechniqueWarning, "status", std::string) \
    X(12, NoDigitalWarning, "status", bool) \
    X(13, KVPCINEChangeValue, "NewValue", std::string) \
    X(14, MSDSIChangeValue, "NewValue", std::string) \
    X(15, SmallFocusChange, "NewValue", std::int32_t) \
    X(16, LargeFocusChange, "NewValue", std::int32_t) \
    X(17, HUUpdate, "NewValue", std::int16_t) \
    X(18, GeneratorPhaseChange, "newStatus", Phase) \
    X(19, PrepSignalStatusChange, "newStatus", bool) \
    X(20, PrepSpotFilmSignalStatusChange, "newStatus", bool) \
    X(21, ReadyStatusChange, "newStatus", bool) \
    X(22, XRaySignalStatusChange, "newStatus", bool) \
    X(23, XRayStatusChange, "newStatus", bool) \
    X(24, FlExposureStatusChange, "newStatus", bool) \
    X(25, ExposureEnd, "status", std::int16_t) \
    X(26, HCFmodeChange, "status", bool) \
    X(27, AECFieldChange, "field, status", std::int32_t, bool) \
    X(28, AECDensityChange, "Density, status", std::int32_t, bool) \
    X(29, AECFilmScreenChange, "FilmScreen, status", std::int32_t, bool) \
    X(30, Photomultiplier, "status", bool) \
    X(31, DigitalAEC, "status", bool) \
    X(32, Brightness, "newBrightness", std::int16_t) \
    X(33, Roadmapping, "newStatus", bool) \
    X(34, FlKVPChangeValue, "NewValue", std::string) \
    X(35, FlKVPChangeDisplay, "NewValue", std::string) \
    X(36, FlTimeChangeValue, "NewValue", std::string) \
    X(37, FlTimeChangeDisplay, "NewValue", std::string) \
    X(38, FLPPSChangeValue, "NewValue", std::string) \
    X(39, FlPPSChangeDisplay, "NewValue", std::string) \
    X(40, FlABSChange, "status", bool) \
    X(41, FlMagChange, "Mag, status", std::int32_t, bool) \
    X(42, FlHighDoseChange, "status", bool) \
    X(43, FlAlarmChange, "status", bool) \
    X(44, FlMAChangeValue, "NewValue", std::string) \
    X(45, FlMAChangeDisplay, "NewValue", std::string) \
    X(46, FlKVPTracking, "Tracking", std::int32_t) \
    X(47, FlContrastChange, "Contrast", std::int32_t) \
    X(48, GeneratorTypeChange, "GeneratorType", std::int32_t) \
    X(49, WorkstationChange, "Workstation", std::int32_t) \
    X(50, WorkingModeChange, "WM", std::int32_t) \
    X(51, WARNINGDoorOpen, "status", bool) \
    X(52, WARNINGGenOverload, "status", bool) \
    X(53, WARNINGTubeOverload, "status", bool) \
    X(54, WARNINGRotor, "status", bool) \
    X(55, WARNINGOverheat, "status", bool) \
    X(56, WARNINGTechnique, "status", bool) \
    X(57, WARNINGCollimator, "status", bool) \
    X(58, AcknowledgeAPRRAD, "") \
    X(59, AcknowledgeAPRDigital, "") \
    X(60, AcknowledgeAPRFluoro, "") \
    X(61, AcknowledgeAPRRADFluoro, "") \
    X(62, AcknowledgeAPRDigitalFluoro, "") \
    X(63, GeneratorERROR, "Code, Description, ErrorType", std::int16_t, std::string, std::int16_t) \
    X(64, GeneratorWSInterlockERROR, "error", std::int16_t) \
    X(65, MessageProtocolError, "") \
    X(66, WarningMessage, "warning, sblinkKVp, sblinkmAs, sblinkmA, sblinkms, sblink3P", std::int32_t, std::int16_t, std::int16_t, std::int16_t, std::int16_t, std::int16_t) \
    X(67, WarningMessageRP, "warning", std::int16_t) \
    X(68, WarningMessageReset, "") \
    X(69, GeneratorAECError, "AECErrorCode", std::int32_t) \
    X(70, GeneratorERRORResetAck, "") \
    X(71, LastExposureDose, "dose", std::string) \
    X(72, AccumulatedDose, "dose", std::string) \
    X(73, DoseResetAck, "") \
    X(74, ExposureCounter, "counter, value", std::int32_t, std::string) \
    X(75, AutocalibrationDismiss, "") \
    X(76, GeneratorSoftwareVersion, "Version", std::string) \
    X(77, RXEnable, "status", bool) \
    X(78, AutocalibrationConfirm, "") \
    X(79, AutocalibrationACK, "status", bool) \
    X(80, AutocalRetry, "status", bool) \
    X(81, CalibrationMA, "") \
    X(82, CalibrationParameters, "Parameter", std::int16_t) \
    X(83, AutocalConfirmDismiss, "") \
    X(84, PostDisplay, "mA, ms, MAS", std::string, std::string, std::string) \
    X(85, WrongPhase, "message", std::string) \
    X(86, TomoAutoChange, "status", bool) \
    X(87, Beep, "newStatus", std::string) \
    X(88, URSCalibrationGet, "newmessage", std::string) \
    X(89, URSRequestADC, "newmessage", std::string) \
    X(90, URSSidGetResponse, "newmessage", std::int16_t)
// clang-format on

/// The 90 events of the link control. A host connects to what it wants to hear.
struct LinkEvents {
#define TORVANE_DECLARE_EVENT(number, name, parameters, ...) Signal<__VA_ARGS__> name;
    TORVANE_LINK_EVENTS(TORVANE_DECLARE_EVENT)
#undef TORVANE_DECLARE_EVENT

    /// Calls visitor(number, name, parameter names, signal) for each event in the order of their numbers.
    template <typename Visitor> void forEach(Visitor&& visitor) {
#define TORVANE_VISIT_EVENT(number, name, parameters, ...)                                                   \
    visitor(number, std::string_view(#name), std::string_view(parameters), name);
        TORVANE_LINK_EVENTS(TORVANE_VISIT_EVENT)
#undef TORVANE_VISIT_EVENT
    }
};

} // namespace quillon
