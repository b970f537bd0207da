#include <gtest/gtest.h>

#include <span>
#include <sstream>

#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "model/CommandTable.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"

namespace quillon {
namespace {

// What hosts and scenario files reach by name. Who uses a name that is gone learns it only when he runs.

struct Names {
    bool called; ///< operations; else properties
    bool got;
    bool set;
    const char* names;
};

const Names kLinkNames[]{
    {true, false, false,
     "SendMessage SendMessageWithDefaults Flush DecodeMessages GeneratorPhaseRequest HURequest "
     "ResetNoAnswerFromGeneratorError ReadConfiguration SaveConfiguration SaveDefaultConfiguration "
     "ReadInitConfiguration DefaultErrorInfoFile ResetError TMReq calibration ToggleCalibrationFeature "
     "ToggleAutocalibrationFeature SetAECDensity AECCommand AECCommandWithDefaults AECDensityUp "
     "AECDensityDown AECDensityUpLocal AECDensityDownLocal FlKVPOneUp FlKVPOneDown FlContinuousToggle "
     "FlKVPToggleKVPTracking FlKVPTrackingUp FlKVPTrackingDown KVPTrackingFormula SendAPRRAD APRRAD "
     "SendAPRDigital APRDigital SendAPRFluoro APRFluoro SendAPRRADFluoro APRRADFluoro SendAPRDigitalFluoro "
     "APRRADDigitalFluoro KVPUpMouseDown KVPDownMouseUp MAUpMouseDown MADownMouseUp MSUpMouseDown "
     "MSDownMouseUp MASUpMouseDown MASDownMouseUp FlKVPUpMouseDown FLKVPDownMouseUp FLPPSUpMouseDown "
     "FLPPSDownMouseUp BrightnessUpMouseDown BrightnessDownMouseUp AECDensityUpMouseDown "
     "AECDensityDownMouseUp fmessGeneratorPhase fmessURS"},
    {false, true, false,
     "Phase GeneratorSoftwareVersion SoftVersion KVPDisplay MADisplay MSDisplay MASDisplay SmallFocus "
     "LargeFocus CalibrationType CalibrationParameter AECDensity AECFilmScreen AECFieldLeft AECFieldCenter "
     "AECFieldRight Roadmapping FlKVPDisplay FlTime FlTimeDisplay FlPPS FlPPSDisplay FlKVPTrackingActive"},
    {false, false, true,
     "Focus CalibrationDataSize MaxAECDensity BrightnessSlowInterval ErrorInfoFile RegistryKey "
     "ReducedCommandCineAndDSI StatusUpdateInterval"},
    {false, true, true,
     "PortOpen StatusUpdateEnable EventEnabled Handshaking numretries RetriesInterval StatusRequestinFluoro "
     "baudrate Parity DataBits StopBits port GeneratorType DebugActive LogActive fromGUI TempUserMode "
     "RXEnable HURemaining KVP mA ms MAS TechniqueMode FlKVP FLKVPDoubleHandshaking ThirdTube SolapeFocos "
     "AutocalibrationRetry KVPAutorepeatSlowInterval KVPAutorepeatFastInterval MAAutorepeatSlowInterval "
     "MASAutorepeatSlowInterval FLPPSSlowInterval BrightnessFastInterval DensitySlowInterval"},
};
const Names kConsoleNames[]{
    {true, false, false,
     "PortOpen RefreshConsole ErrorMessage IniErrorDescription PostdisplayKVP fmessOrla EnableOrla "
     "EnableMultiRoom ShowCalibrationButton ReadConfiguration SaveConfiguration RefreshColor LeaveNow"},
    {false, true, false, "QuillonConsoleVersion TorvaneSerialVersion"},
    {false, false, true,
     "Parity RegistryKey ConsoleBackColor ButtonOnColor ButtonOffColor GeneratorVisible IconSize "
     "ResetCounterEnable ProjectName TouchPanelVersion"},
    {false, true, true, "fromGUI port DataBits StopBits baudrate"},
};

void expectNames(const Operations& operations, std::span<const Names> rows) {
    for (const Names& row : rows) {
        std::istringstream names(row.names);
        for (std::string name; names >> name;) {
            EXPECT_EQ(operations.hasOperation(name), row.called) << name;
            EXPECT_EQ(operations.canGet(name), row.got) << name;
            EXPECT_EQ(operations.canSet(name), row.set) << name;
        }
    }
}

TEST(PublicNames, AreAllThere) {
    MemoryPlatform machine;
    Application application(Platform{machine.time.schedule(), machine.time, machine.port, machine.store,
                                     machine.folder, machine.desktop, machine.power},
                            "");
    expectNames(application.link().operations(), kLinkNames);
    expectNames(application.console().operations(), kConsoleNames);
    EXPECT_EQ(application.link().controls().size(), 256U); // none is missing in what "list" prints
    EXPECT_EQ(application.console().controls().size(), 174U);
    for (const CommandRow& row : kCommands) {
        EXPECT_TRUE(application.link().operations().hasOperation(row.name)) << row.name;
    }
}

} // namespace
} // namespace quillon
