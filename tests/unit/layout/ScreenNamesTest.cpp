#include <algorithm>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/unit/layout/Screens.h"
#include "ui/ControlTable.h"

namespace quillon {
namespace {

/// Names with their index and, behind "=", their captions, parted by "|".
struct Container {
    std::string_view name; ///< empty for the surface
    std::string_view holds;
};

template <typename Visit> void eachOf(std::string_view list, Visit visit) {
    for (std::size_t at = 0; at < list.size();) {
        const std::size_t end = std::min(list.find('|', at), list.size());
        visit(list.substr(at, end - at));
        at = end + 1;
    }
}

Control& findIn(ControlHost& host, std::string_view text) {
    const auto [name, index] = indexedName(text);
    return host.at(name, index < 0 ? std::nullopt : std::optional(index));
}

void expectControls(ControlHost& host, std::initializer_list<Container> containers) {
    for (const auto& [holderName, holds] : containers) {
        const Control& holder = holderName.empty() ? host : findIn(host, holderName);
        eachOf(holds, [&host, &holder](std::string_view entry) {
            const std::string_view name = entry.substr(0, entry.find('='));
            const std::string_view caption = entry.substr(std::min(name.size() + 1, entry.size()));
            ASSERT_NO_THROW(findIn(host, name)) << name;
            const Control& control = findIn(host, name);
            EXPECT_EQ(control.container(), &holder) << name;
            if (control.has(Property::Caption)) {
                EXPECT_EQ(control.caption(), caption) << name;
            } else if (control.has(Property::Text) && !control.has(Property::Items)) {
                EXPECT_EQ(control.text(), caption) << name;
            }
        });
    }
}

void expectHidden(ControlHost& host, std::string_view names) {
    eachOf(names, [&host](std::string_view name) { EXPECT_FALSE(findIn(host, name).visible()) << name; });
}

TEST(ScreenNames, PanelSurfaceMenusAndStatusStrip) {
    Screens screens;
    expectControls(
        screens.panel(),
        {{"", "cmbWS(0)=WS1|cmbWS(1)=WS2|cmbWS(2)=WS3|cmbWS(3)=WS4|cmbWS(4)=WS5|cmbWS(5)=WS6|cmbWS(6)=WS7|"
              "cmbWS(7)=WS8|Iconized=Torvane Serial|lstExtendedPosition|fraMainMenu= Main Menu |"
              "fraServiceMenu= Service Menu  |fraStatus|fraDebug|fraMainMenuItem(0)|fraMainMenuItem(1)|"
              "fraMainMenuItem(2)|fraMainMenuItem(3)|fraMainMenuItem(4)|fraServiceMenuItem(0)|"
              "fraServiceMenuItem(1)|fraServiceMenuItem(2)"},
         {"fraMainMenu", "cmbMainMenu(0)=RAD|cmbMainMenu(1)=AEC|cmbMainMenu(2)=DAEC|cmbMainMenu(3)=Fluoro|"
                         "cmbGotoServiceMenu=Service"},
         {"fraServiceMenu",
          "cmbServiceMenu(0)=Configuration|cmbServiceMenu(1)=Calibration|cmbServiceMenu(2)=Comm|"
          "cmbGotoMainMenu=Main"},
         {"fraStatus",
          "txtPHASE|txtWorkingMode|txtHU=HU 0%|txtInfo|txtDoorOpenWarning=Door|"
          "txtGeneratorOverloadWarning=Gen.Over|txtTubeOverloadWarning=Tube Over.|txtRotorWarning=Rotor|"
          "txtOverheatWarning=Overheat|txtTechniqueWarning=Technique|txtCollimatorWarning=Collimator|"
          "txtIINotAlignedWarning=II Not Aligned|txtTubeNotCenteredWarning=Tube Not Centered|"
          "txtCassetteNotPresentWarning|cmbResetError=Reset Error|cmbMinimize=Torvane Serial"},
         {"fraDebug", "txtDebugComm"}});
}

TEST(ScreenNames, PanelMainPages) {
    Screens screens;
    expectControls(
        screens.panel(),
        {{"fraMainMenuItem(0)",
          "cmbTM(0)=0P|cmbTM(1)=1P|cmbTM(2)=2P|cmbTM(3)=3P|cmbKVPUp|cmbKVPDown|cmbMAUp|cmbMADown|cmbMSUp|"
          "cmbMSDown|cmbMASUp|cmbMASDown|cmbToggleFocus=Toggle|txtKVp|txtMA|txtMS|txtMAS|txtFocus|"
          "lblKVP=kVp|lblMA=mA|lblMS=ms|lblMAS=mAs|lblFocus=Focus|lblWarning|cmdSWExposure=Expose|"
          "fraReadExposureCounter=Exposure Counters|fraDosemeter=Dosemeter (mGycm2)"},
         {"fraReadExposureCounter",
          "comboReadExposureCounter|cmbReadExposureCounter=Read|txtExposureCounter"},
         {"fraDosemeter",
          "cmbDoseLastExposure=Last Exposure|cmbDoseAccumulated=Accumulated|cmbDoseReset=Reset|txtDose"},
         {"fraMainMenuItem(1)",
          "cmbAECFieldLeft(0)=Left|cmbAECFieldCenter(0)=Center|cmbAECFieldRight(0)=Right|"
          "lblAECAreas(0)=Areas|cmbAECFilmScreen(0)=Slow|cmbAECFilmScreen(1)=Medium|"
          "cmbAECFilmScreen(2)=Fast|lblAECFilmScreen=Film Screen|fraDensity(0)=Density|"
          "fraBrightness(0)=Brightness"},
         {"fraDensity(0)", "cmbAECDensity(0)=-4|cmbAECDensity(3)=-1|cmbAECDensity(4)=0|cmbAECDensity(8)=+4|"
                           "cmbAECDensityUp|cmbAECDensityDown"},
         {"fraBrightness(0)", "cmbAECBrightnessUp|cmbAECBrightnessDown|txtAECBrightness"},
         {"fraMainMenuItem(2)",
          "cmbDigitalAEC=AEC|cmbPhotomultiplier=Photomultiplier|fraDensity(1)=Density|cmbDAECDensityUp|"
          "cmbDAECDensityDown|fraBrightness(1)=Brightness"},
         {"fraDensity(1)",
          "cmbDAECDensity(0)=-4|cmbDAECDensity(4)=0|cmbDAECDensity(5)=+1|cmbDAECDensity(8)=+4"},
         {"fraBrightness(1)", "txtDAECBrightness|cmbDAECBrightnessUp|cmbDAECBrightnessDown"},
         {"fraMainMenuItem(3)",
          "cmbFlKVPUp|cmbFlKVPDown|txtFlKVP|lblKVP_FL=kVp|cmbFlPPSUp|cmbFlPPSDown|cmbFlPPSNext=Next|"
          "txtFlPPS|lblPPS=PPS|cmbFlContinuous=Continuous|cmbFlMAUp|cmbFlMADown|txtFlMA|lblMA_FL=mA|"
          "cmdFlResetTime=Reset|txtFlTime|lblTime=Time|cmbToggleABS=Toggle|lblABS=ABS|"
          "cmbFlHighDose=Toggle|lblFlHighDose=High|Label1=Dose|cmbFluoroAlarmReset=Toggle|Label3=Alarm|"
          "cmbFlMag(0)=Normal|cmbFlMag(1)=MAG1|cmbFlMag(2)=MAG2|cmbFlMag(3)=MAG3|lblFlMag=Magnification|"
          "cmbContrastUp|cmbContrastDown|txtFlContrast|lblFlContrast=Contrast|"
          "cmbFlKVPTracking=KVP Tracking|cmbKVPTrackingUp|cmbKVPTrackingDown|txtFlKVPTracking"}});
}

TEST(ScreenNames, PanelServicePages) {
    Screens screens;
    expectControls(
        screens.panel(),
        {{"fraServiceMenuItem(0)",
          "cmbConfiguration=ON|cmbDfltConfig=Default Configuration|cmbConfTubeUp|cmbConfTubeDown|"
          "txtCfgTube|lblCfgTube=Tube|cmbConfWMUp|cmbConfWMDown|txtCfgWorkingMode|lblCfgWM=WM|"
          "cmbConfAECUp|cmbConfAECDown|txtCfgAECIC|lblCfgAECIC=AEC IC|cmbConfWSInterlockUp|"
          "cmbConfWSInterlockDown|txtCfgWSInterlock|lblCfgWSInterlock=Positioner Interlock|"
          "cmbConfFailSafeUp|cmbConfFailSafeDown|txtCfgFailSafe|Label4=Fail Safe|cmbConfSyncTypeUp|"
          "cmbConfSyncTypeDown|txtCfgSyncType|Label5=Sync Type|cmbKVTrackingUp|cmbKVTrackingDown|"
          "txtCfgKVTracking|lblKVTracking=KV Tracking|cmbAECFieldLeft(1)=Left|"
          "cmbAECFieldCenter(1)=Center|cmbAECFieldRight(1)=Right|lblAECAreas(1)=AEC Areas|txtRAD_RF|"
          "lblRAD_RF=RAD/RF"},
         {"fraServiceMenuItem(1)",
          "cmbCalibration=Calibration|cmbAutocalibration=AutoCalibration|cmbAutocalConfirm=Confirm|"
          "cmbAutocalDismiss=Dismiss|cmbKVPCalUp|cmbKVPCalDown|cmbMACalUp|cmbMACalDown|cmbMASCalUp|"
          "cmbMASCalDown|cmbMSCalUp|cmbMSCalDown|cmbToggleFocusCal=Toggle|cmbCalFocusSet=Set SFul|"
          "cmbToggleFocusConfirm=Confirm|cmbToggleFocusDismiss=Dismiss|txtKVPCal|txtMASCal|txtMACal|"
          "txtMSCal|txtFocusCal|lblKVPCal=kVp|lblMASCal=mAs|lblMACal=mA|lblMSCal=ms|lblFocusCal=Focus|"
          "fraCalValue=Calibration Value|fraResetExposureCounter=Exposure Counters"},
         {"fraCalValue",
          "cmbCalValueUp|cmbCalValueDown|sldCalValue|cmbSaveCalValue=Read|cmbStoreCalValue=Store|"
          "txtCalValue"},
         {"fraResetExposureCounter", "comboResetExposureCounter|cmbResetExposureCounter=Reset"},
         {"fraServiceMenuItem(2)",
          "cmbCommPort|lblCommPort=Port|cmbCommBaudRate|lblCommBaudRate=Baud Rate|cmbCommParity|"
          "lblCommParity=Parity|cmbCommDataBits|lblDataBits=Data Bits|cmbCommStopBits|"
          "lblStopBits=Stop Bits|cmbCommOnOff=ON|cmbToggleDebug=Debug Window"}});
}

TEST(ScreenNames, ThePanelStartsWithItsFirstPageAndDarkLamps) {
    Screens screens;
    ControlHost& panel = screens.panel();
    expectHidden(
        panel,
        "fraServiceMenu|fraDebug|fraMainMenuItem(1)|fraMainMenuItem(2)|fraMainMenuItem(3)|"
        "fraMainMenuItem(4)|fraServiceMenuItem(0)|fraServiceMenuItem(1)|fraServiceMenuItem(2)|cmbTM(0)|"
        "cmbTM(3)|lblWarning|Iconized|lstExtendedPosition|txtDoorOpenWarning|"
        "txtGeneratorOverloadWarning|txtTubeOverloadWarning|txtRotorWarning|txtOverheatWarning|"
        "txtTechniqueWarning|txtCollimatorWarning|txtIINotAlignedWarning|txtTubeNotCenteredWarning|"
        "txtCassetteNotPresentWarning");
    EXPECT_TRUE(panel.at("fraMainMenuItem", 0).visible());
    EXPECT_TRUE(panel.at("cmbMainMenu", 0).visible());
    EXPECT_TRUE(panel.at("fraStatus").visible());
    EXPECT_EQ(panel.at("comboReadExposureCounter").text(), "Tube1 RAD");
    EXPECT_EQ(panel.at("cmbCommPort").items().size(), 6U);
    EXPECT_EQ(panel.at("cmbCommParity").items(), (std::vector<std::string>{"e", "n", "o"}));
    EXPECT_EQ(panel.timer("tmrBlink").interval(), 500);
    EXPECT_FALSE(panel.timer("timerStatusUpdate").running());
}

TEST(ScreenNames, ConsoleColumnAndWorkingArea) {
    Screens screens;
    expectControls(
        screens.console(),
        {{"", "fraActualExposureParameters=Actual Exposure Parameters|fraPrepExp|cmbClose=Close|"
              "cmbReadExposureCounters=Read Exposure Counters|cmbConfiguration=Configuration|"
              "cmbManualCalibration=Manual Calibration|cmbAutocalibration=Auto Calibration|"
              "cmbGoToUserMode=Go to User Mode|cmbResetError=RESET ERROR|lblError|lblHelp|"
              "lblErrorDescription|lblSoftwareVersion|imgQuillonConsole|"
              "lblQuillonConsole=Generator Service Mode|fraTorvaneSerial|fraExposureCounters|"
              "fraRemote=REMOTE|fraOrla=Orla Autotracking Analog Signals Calibration|"
              "cmdOrla=Orla Autotracking Calibration|cmdMultiRoom=MultiRoom Calibration|pctLogo|"
              "cmdSoftwareUpgrade=SoftwareUpgrade"},
         {"fraActualExposureParameters", "lblActKVP|lblActMA|lblActMS|lblActMAS"},
         {"fraPrepExp", "cmdPrep|cmdExposure"},
         {"fraTorvaneSerial", "TorvaneSerial"},
         {"fraExposureCounters",
          "lblExposureCounters=EXPOSURE COUNTERS|lblT1RAD=TUBE 1 RAD|lblT2RAD=TUBE 2 RAD|"
          "lblT3RAD=TUBE 3 RAD|lblTFluoro=FLUORO|lblTube1|lblTube2|lblTube3|lblFluoro|cmdResetT1=Reset|"
          "cmdResetT2=Reset|cmdResetT3=Reset|cmdResetFluoro=Reset|fraResetCounterConfirm"},
         {"fraResetCounterConfirm", "lblResetRADCounter|cmdResetCounterYes=Yes|cmdResetCounterNo=No"}});
}

TEST(ScreenNames, ConsolePositionerScreens) {
    Screens screens;
    ControlHost& console = screens.console();
    expectControls(
        console,
        {{"fraRemote", "lblTitleWBCalib=REMOTE POSITIONER CONFIGURATION|Frame1|fraCalibPoints"},
         {"Frame1", "lblRemoteSID=SID|txtRemoteSID=1000|cmdDownSID=-|cmdUPSid=+|LblStoredSID=Stored SID|"
                    "TxtStoredSID|cmdSetNewSID=Store New SID|cmdRequestSID=Request stored SID"},
         {"fraCalibPoints",
          "lblURSWHCalib1lbl=PT1|TxtParamCalib=40|cmdDownParameter=-|cmdUpParameter=+|Label25=ADC Value|"
          "TxtADCValueCalib|cmdStoreCalibPoint=Store|cmdNextCalibPoint=Next Point|"
          "lblTitleParam=Parameter|lblTitleADC=ADC|LblParam1=---|LblValue1=---|LblParam2=---|"
          "LblValue2=---|LblParam3=---|lblValue3=---|LblParam4=---|LblValue4=---|"
          "cmdCalibrationGet=Request calibration"},
         {"fraOrla",
          "cmdLongPosition=Ceiling Suspension Longitudinal Position|cmdTrayPosition=Table Tray Position|"
          "cmdAlfaTubeAngle=Tube Alfa Angle|cmdBetaTubeAngle=Tube Beta Angle|cmdSID=SID|"
          "fraLong=Ceiling Suspension Longitudinal Position|fraTray=Table Tray Position Calibration|"
          "fraAlfa=Tube Alfa Calibration|fraBeta=Tube Beta Calibration|fraSID=SID Calibration"}});
    const struct {
        std::string_view frame, stem;
        bool hasZero;
    } axes[] = {{"fraLong", "OTCLong", true},
                {"fraTray", "OTCTray", true},
                {"fraAlfa", "TubeAlfa", true},
                {"fraBeta", "TubeBeta", true},
                {"fraSID", "SID", false}};
    for (const auto& axis : axes) {
        const std::string box = "txt" + std::string(axis.stem);
        const std::string set = "cmdSet" + std::string(axis.stem);
        for (const std::string row : {"Plus", "Zero", "Minus"}) {
            if (row == "Zero" && !axis.hasZero) {
                EXPECT_EQ(console.find(box + row), nullptr);
                continue;
            }
            const std::string adc = box + row + "ADC";
            const std::string value = box + row + (row == "Zero" ? "=000" : "");
            expectControls(console, {{axis.frame, value + "|" + adc + "|" + set + row + "=Set"}});
            EXPECT_EQ(console.at(box + row).readOnly(), row == "Zero") << box << row;
            EXPECT_TRUE(console.at(adc).readOnly()) << adc;
        }
    }
    EXPECT_TRUE(console.at("TxtStoredSID").readOnly());
    EXPECT_FALSE(console.at("TxtADCValueCalib").readOnly());
}

TEST(ScreenNames, TheConsoleStartsAtRest) {
    Screens screens;
    ControlHost& console = screens.console();
    expectHidden(console,
                 "fraTorvaneSerial|TorvaneSerial|fraExposureCounters|fraResetCounterConfirm|cmdResetT1|"
                 "cmdResetT2|cmdResetT3|cmdResetFluoro|lblT3RAD|lblTube3|fraRemote|fraOrla|cmdOrla|"
                 "cmdMultiRoom|fraActualExposureParameters|cmbGoToUserMode|pctLogo|cmdSoftwareUpgrade");
    EXPECT_FALSE(console.at("fraPrepExp").enabled());
    EXPECT_FALSE(console.at("cmdSoftwareUpgrade").enabled());
    EXPECT_EQ(console.at("cmdPrep").art(), "preparation");
    EXPECT_EQ(console.at("cmdExposure").art(), "exposure");
    EXPECT_EQ(console.at("imglstPrep").kind(), Kind::Images);
    EXPECT_EQ(console.at("imglstExp").kind(), Kind::Images);
    EXPECT_EQ(console.timer("tmrRequestADC").interval(), 1500);
    EXPECT_EQ(console.timer("tmrShutdown").interval(), 4000);
    for (const auto* name :
         {"tmrDelayShow", "tmrWaitStartGenerator", "tmrWaitRefresh", "tmrError", "tmrDelay", "tmrConfigON",
          "tmrConfigOFF", "tmrCalON", "tmrCalOFF", "tmrAutocalON", "tmrAutocalOFF", "tmrDelayAutocal",
          "tmrIniAutocal", "tmrReadExposureCounters", "tmrResetTubeCounter", "tmrFlRefresh",
          "tmrGotoUserMode", "tmrGoodbye"}) {
        EXPECT_FALSE(console.timer(name).running()) << name;
    }
    // The prompt covers an error's words, and these cover the versions.
    EXPECT_GT(console.at("lblHelp").zOrder(), console.at("lblErrorDescription").zOrder());
    EXPECT_GT(console.at("lblErrorDescription").zOrder(), console.at("lblSoftwareVersion").zOrder());
    // A positioner's screen covers the rest of the working area.
    for (const auto* name :
         {"fraTorvaneSerial", "imgQuillonConsole", "lblQuillonConsole", "fraExposureCounters"}) {
        EXPECT_GT(console.at("fraRemote").zOrder(), console.at(name).zOrder()) << name;
        EXPECT_GT(console.at("fraOrla").zOrder(), console.at(name).zOrder()) << name;
    }
}

TEST(ScreenNames, Dialogs) {
    Screens screens;
    expectControls(
        screens.dialog(kWarningRows, kModalSize),
        {{"", "Shape1|lblWarning1=You are about to enter the autocalibration procedure. |"
              "lblWarning2=For mA auto calibration,  it initializes all the calibrated currents for the "
              "focus selected. |"
              "lblWarning3=For extended memory location auto calibration,  it initializes its value.|"
              "lblWarning4=Do you want to continue?|cmbAutocalYes=Yes|cmbAutocalNo=No"}});
    expectControls(
        screens.dialog(kSelectFocusRows, kModalSize),
        {{"", "Shape1|lblSelectFocus=     Select focus for mA auto calibration|cmbAutocalSmallFocus=Small|"
              "cmbAutocalLargeFocus=Large|cmbOKFocus=OK|"
              "lblSelectExtMemory=    Or extended memory location for auto calibration|Label3=E|"
              "lblAutocalParameter=1|cmbParameterUp=Up|cmbParameterDown=Down|cmbOKParameter=OK|"
              "cmbCancel=Cancel"}});
    expectControls(
        screens.dialog(kSelectWorkstationRows, kModalSize),
        {{"",
          "Shape1|lblSelectWS=Select a Workstation|Label3=WS|lblWS=1|cmbWSUp=Up|cmbWSDown=Down|cmdOK=OK"}});
    expectControls(
        screens.dialog(kErrorRows, kErrorSize),
        {{"", "Shape1|myCaption|lblError=Please check calibration dip switch\r\nand toggle with power off|"
              "Frame1"},
         {"Frame1", "cmbOK=OK"}});
}

} // namespace
} // namespace quillon
