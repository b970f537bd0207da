#include "console/ctrQuillonConsole.h"

#include <array>

#include "base/Text.h"
#include "console/AutocalibrationMode.h"
#include "console/CalibrationMode.h"
#include "console/Closing.h"
#include "console/ConfigurationMode.h"
#include "console/ConsoleContext.h"
#include "console/ConsoleVersion.h"
#include "console/ErrorReactions.h"
#include "console/ExposureCounters.h"
#include "console/Exposures.h"
#include "console/GeneratorSummary.h"
#include "console/KeyReasons.h"
#include "console/OrlaPositioner.h"
#include "console/PendingKeys.h"
#include "console/PhaseReactions.h"
#include "console/RemotePositioner.h"
#include "console/RunTrace.h"
#include "console/ServiceSession.h"
#include "console/SessionErrors.h"
#include "console/StartOfService.h"
#include "console/StatusLine.h"
#include "console/Termination.h"
#include "console/UnsavedValue.h"
#include "console/UserMode.h"
#include "console/layout/ConsoleControls.h"
#include "console/panels/ConsolePanels.h"
#include "link/LinkSilence.h"
#include "panel/PanelPhrases.h"
#include "ui/ScalingLayout.h"

namespace quillon {

namespace {

constexpr std::array<ConsoleControl, 5> kSurfaces{"pctLogo", "fraExposureCounters", "fraTorvaneSerial",
                                                  "fraActualExposureParameters", "fraPrepExp"};

constexpr std::array<ConsoleControl, 16> kButtons{"cmbManualCalibration",
                                                  "cmbAutocalibration",
                                                  "cmbConfiguration",
                                                  "cmbReadExposureCounters",
                                                  "cmbClose",
                                                  "cmdPrep",
                                                  "cmdExposure",
                                                  "cmbResetError",
                                                  "cmbGoToUserMode",
                                                  "cmdOrla",
                                                  "cmdLongPosition",
                                                  "cmdTrayPosition",
                                                  "cmdAlfaTubeAngle",
                                                  "cmdBetaTubeAngle",
                                                  "cmdSID",
                                                  "cmdMultiRoom"};

/// The pictures of the lamps by the size of the console; the first row that fits wins.
struct IconRow {
    float height; // pixels at most
    float width;  // pixels at most
    std::int16_t index;
};
constexpr std::array kIconSizes{
    IconRow{480, 640, 1},
    IconRow{600, 800, 2},
    IconRow{768, 1024, 3},
};

} // namespace

struct ctrQuillonConsole::Parts {
    Parts(ctrQuillonConsole& host, const Context& given,
          std::unique_ptr<TorvaneSerialV3_07_QLC1> linkControl);

    [[nodiscard]] Indicators indicators() {
        return {summary, sessionErrors, exposures, pending, reasons, unsaved, status, refused, texts};
    }
    void initialize();
    void addProperties();
    void setButtonOffColor(Colour colour);
    void setConsoleBackColor(Colour colour);
    void setFromGUI(bool embedded);
    void setIconSize(std::int16_t index);
    void setParity(std::int16_t number);
    void setRegistryKey(std::string key);
    void chooseIconSize();

    ctrQuillonConsole& console;
    TorvaneSerialV3_07_QLC1& link;
    ConsoleState state;
    ConsoleTexts texts;
    Phrases phrases;
    Operations operations;
    KeyNeeds needs{[this](std::string_view mnemonic) { return link.allows(mnemonic); }};
    RefusedValues refused;
    ConsoleContext context;
    ScalingLayout layout;

    ServiceSession session;
    RunTrace trace;
    StartOfService start;
    ConsolePanels panels;
    ConfigurationMode configuration;
    CalibrationMode calibration;
    AutocalibrationMode autocalibration;
    ExposureCounters counters;
    UserMode userMode;
    Closing closing;
    PhaseReactions phases;
    ErrorReactions errors;
    RemotePositioner remotePositioner;
    OrlaPositioner orlaPositioner;
    PendingKeys pending;
    // These hear of a phase behind the reactions to it.
    Termination termination;
    SessionErrors sessionErrors;
    GeneratorSummary summary;
    Exposures exposures;
    KeyReasons reasons;
    UnsavedValue unsaved;
    StatusLine status;
};

namespace {

/// Takes the link control in among the console's controls, which stand before any workflow looks for its own.
TorvaneSerialV3_07_QLC1& placed(ConsoleHost& console, std::unique_ptr<TorvaneSerialV3_07_QLC1> linkControl) {
    TorvaneSerialV3_07_QLC1& link = *linkControl;
    console.setPlace({0, 0, kConsoleDesignWidth, kConsoleDesignHeight});
    addConsoleControls(console, std::move(linkControl));
    return link;
}

} // namespace

ctrQuillonConsole::Parts::Parts(ctrQuillonConsole& host, const Context& given,
                                std::unique_ptr<TorvaneSerialV3_07_QLC1> linkControl)
    : console(host), link(placed(host, std::move(linkControl))), context{host,
                                                                         link,
                                                                         state,
                                                                         texts,
                                                                         host.events,
                                                                         operations,
                                                                         needs,
                                                                         refused,
                                                                         given.desktop,
                                                                         given.loop,
                                                                         given.positionerToCalibrate,
                                                                         given.restartPc,
                                                                         given.commandLine},
      session(context), trace(given.schedule.handlers(), session), start(context, session),
      panels(context, session), configuration(context, session, panels),
      calibration(context, session, panels), autocalibration(context, session, panels),
      counters(context, session, panels), userMode(context, session, calibration),
      closing(context, session, calibration, counters), phases(context, session, start, autocalibration),
      errors(context, session), remotePositioner(context, session), orlaPositioner(context, session),
      pending(link, session), termination(context, session, closing), sessionErrors(context, session),
      summary(context, session, sessionErrors), exposures(context, session), reasons(context, session),
      unsaved(link, session, pending), status(context, session, indicators()) {
    initialize();
    addProperties();
    console.setReportAge(&link.silence().age);
    link.silence().changed.connect([this] { console.showAge(); });
}

void ctrQuillonConsole::Parts::initialize() {
    state.IconSize = -1;
    state.fromGUI = true;
    texts.initialize(console);
    state.m_QuillonConsoleVersion = kConsoleVersion;
    state.m_TorvaneSerialVersion = TorvaneSerialV3_07_QLC1::SoftVersion();
    layout.record(console, kConsoleDesignWidth, kConsoleDesignHeight);
    for (const auto& control : console.controls()) {
        if (control->kind() == Kind::Button) {
            control->setTag("OFF");
            control->setBackColour(kNormalColour);
        }
    }
    setButtonOffColor(kNormalColour);
    state.m_PowerUpSeen = false;
    console["fraTorvaneSerial"].setVisible(false);
    for (const ConsoleControl hidden : std::initializer_list<ConsoleControl>{
             "cmdResetT1", "cmdResetT2", "cmdResetFluoro", "lblT3RAD", "lblTube3", "cmdResetT3"}) {
        console[hidden].setVisible(false);
    }
    state.ResetCounterEnable = true;
    console["fraPrepExp"].setEnabled(false);
    console["fraExposureCounters"].sendToBack();
    state.TouchPanelVersion = kConsoleVersion;
}

void ctrQuillonConsole::Parts::addProperties() {
    const auto both = [this](std::string_view name, std::int16_t& own, std::int16_t& linked) {
        operations.addProperty(
            name, [&own] { return own; }, [&own, &linked](std::int16_t value) { own = linked = value; });
    };
    both("port", state.port, link.settings().port);
    both("DataBits", state.DataBits, link.settings().DataBits);
    both("StopBits", state.StopBits, link.settings().StopBits);
    operations.addMember("baudrate", state.baudrate);
    operations.addWriteOnly("Parity", [this](std::int16_t number) { setParity(number); });
    operations.addWriteOnly("RegistryKey", [this](std::string key) { setRegistryKey(std::move(key)); });
    operations.addWriteOnly("ConsoleBackColor", [this](Colour colour) { setConsoleBackColor(colour); });
    operations.addWriteOnly("ButtonOnColor", [this](Colour colour) { state.ButtonOnColor = colour; });
    operations.addWriteOnly("ButtonOffColor", [this](Colour colour) { setButtonOffColor(colour); });
    operations.addProperty(
        "fromGUI", [this] { return state.fromGUI; }, [this](bool embedded) { setFromGUI(embedded); });
    operations.addWriteOnly("GeneratorVisible", [this](bool visible) { state.GeneratorVisible = visible; });
    operations.addWriteOnly("IconSize", [this](std::int16_t index) { setIconSize(index); });
    operations.addWriteOnly("ResetCounterEnable", [this](bool enable) { state.ResetCounterEnable = enable; });
    operations.addWriteOnly("ProjectName", [this](std::string name) { state.ProjectName = std::move(name); });
    operations.addWriteOnly("TouchPanelVersion",
                            [this](std::string version) { state.TouchPanelVersion = std::move(version); });
    operations.addReadOnly("QuillonConsoleVersion", [this] { return state.m_QuillonConsoleVersion; });
    operations.addReadOnly("TorvaneSerialVersion", [this] { return state.m_TorvaneSerialVersion; });
    texts.addTo(operations, console);
    link.setPhrases(&phrases);
    for (const PanelPhrase& row : kPanelPhrases) {
        operations.addWriteOnly(row.name,
                                [this, &row](std::string_view text) { phrases.replace(row.words, text); });
    }

    operations.add("IniErrorDescription",
                   [this](std::string_view file) { console.IniErrorDescription(file); });
    // The generator's kVp after an exposure is of no use to the console; taking it keeps it from being
    // unknown.
    operations.add("PostdisplayKVP", [](std::string_view) {});
    link.AddParentMessage("PDK", "PostdisplayKVP", operations);
    link.AddParentMessage("URS", "fmessOrla", operations);
    operations.add("EnableOrla", [this](bool visible) { console.EnableOrla(visible); });
    operations.add("EnableMultiRoom", [this](bool visible) { console.EnableMultiRoom(visible); });
    operations.add("ShowCalibrationButton",
                   [this](bool visible) { ShowCalibrationButton(context, visible); });
    operations.add("ReadConfiguration", [this] { link.settings().ReadConfiguration(); });
    operations.add("SaveConfiguration", [this] { link.settings().ReadConfiguration(); });
    operations.add("RefreshColor", [this] {
        if (const Control* container = console.container()) {
            setConsoleBackColor(container->backColour());
        }
    });
}

void ctrQuillonConsole::Parts::setButtonOffColor(Colour colour) {
    state.ButtonOffColor = colour;
    for (const ConsoleControl button : kButtons) {
        console[button].setBackColour(colour);
    }
}

void ctrQuillonConsole::Parts::setConsoleBackColor(Colour colour) {
    state.ConsoleBackColor = colour;
    console.setBackColour(colour);
    for (const ConsoleControl surface : kSurfaces) {
        console[surface].setBackColour(colour);
    }
}

void ctrQuillonConsole::Parts::setFromGUI(bool embedded) {
    state.fromGUI = embedded;
    if (embedded) {
        state.GeneratorVisible = true;
        return;
    }
    console["cmdOrla"].setVisible(false);
    for (const std::string_view piece : split(context.commandLine, "-")) {
        if (trimRight(piece) == "ORLA") {
            console["cmdOrla"].setVisible(true);
        }
    }
}

void ctrQuillonConsole::Parts::setIconSize(std::int16_t index) {
    state.IconSize = index;
    console["cmdPrep"].setArtSize(index);
    console["cmdExposure"].setArtSize(index);
}

void ctrQuillonConsole::Parts::setParity(std::int16_t number) {
    link.settings().setParity(number);
    if (number >= 0 && number <= 2) {
        state.Parity = link.settings().parity;
    }
}

void ctrQuillonConsole::Parts::setRegistryKey(std::string key) {
    state.RegistryKey = std::move(key);
    link.settings().RegistryKey = state.RegistryKey;
    link.settings().ReadConfiguration();
    link.settings().SaveConfiguration();
}

void ctrQuillonConsole::Parts::chooseIconSize() {
    const float height =
        static_cast<float>(console.height()) / static_cast<float>(context.desktop.twipsPerPixelY());
    const float width =
        static_cast<float>(console.width()) / static_cast<float>(context.desktop.twipsPerPixelX());
    for (const IconRow& row : kIconSizes) {
        if (height <= row.height || width <= row.width) {
            setIconSize(row.index);
            return;
        }
    }
}

ctrQuillonConsole::ctrQuillonConsole(const Context& context,
                                     std::unique_ptr<TorvaneSerialV3_07_QLC1> linkControl)
    : ConsoleHost(Kind::User, "Quillon", context.schedule) {
    parts_ = std::make_unique<Parts>(*this, context, std::move(linkControl));
}

ctrQuillonConsole::~ctrQuillonConsole() {
    for (const std::string_view panel :
         {"SelWSAutocal", "AutocalWarning", "AutocalSelFocusOrParameter", "SelWSCal"}) {
        parts_->panels.remove(panel);
    }
    parts_->link.setPortOpen(false);
}

TorvaneSerialV3_07_QLC1& ctrQuillonConsole::link() {
    return parts_->link;
}

ServiceSession& ctrQuillonConsole::session() {
    return parts_->session;
}

const ServiceSession& ctrQuillonConsole::session() const {
    return parts_->session;
}

Signal<std::string>& ctrQuillonConsole::runChanged() {
    return parts_->trace.told;
}

Indicators ctrQuillonConsole::indicators() {
    return parts_->indicators();
}

const ConsoleTexts& ctrQuillonConsole::texts() const {
    return parts_->texts;
}

const Operations& ctrQuillonConsole::operations() const {
    return parts_->operations;
}

std::vector<std::string> ctrQuillonConsole::textNames() const {
    std::vector<std::string> all = ConsoleTexts::names();
    const std::vector<std::string> dialogs = parts_->panels.textNames();
    all.insert(all.end(), dialogs.begin(), dialogs.end());
    for (const PanelPhrase& row : kPanelPhrases) {
        all.emplace_back(row.name);
    }
    return all;
}

void ctrQuillonConsole::UserControl_Show() {
    parts_->start.UserControl_Show();
}

void ctrQuillonConsole::PortOpen(bool newStatus) {
    parts_->start.PortOpen(newStatus);
}

void ctrQuillonConsole::LeaveNow() {
    parts_->termination.LeaveNow();
}

void ctrQuillonConsole::IniErrorDescription(std::string_view sFile) {
    parts_->link.operations().set("ErrorInfoFile", std::string(sFile));
}

std::int16_t ctrQuillonConsole::StopBits() const {
    return parts_->state.StopBits;
}

void ctrQuillonConsole::setStopBits(std::int16_t bits) {
    parts_->state.StopBits = parts_->link.settings().StopBits = bits;
}

std::int16_t ctrQuillonConsole::DataBits() const {
    return parts_->state.DataBits;
}

void ctrQuillonConsole::setDataBits(std::int16_t bits) {
    parts_->state.DataBits = parts_->link.settings().DataBits = bits;
}

void ctrQuillonConsole::setPort(std::int16_t port) {
    parts_->state.port = parts_->link.settings().port = port;
}

void ctrQuillonConsole::setBaudrate(std::int16_t rate) {
    parts_->state.baudrate = rate;
}

void ctrQuillonConsole::setIconSize(std::int16_t index) {
    parts_->setIconSize(index);
}

void ctrQuillonConsole::setProjectName(std::string_view name) {
    parts_->state.ProjectName = name;
}

void ctrQuillonConsole::setResetCounterEnable(bool enable) {
    parts_->state.ResetCounterEnable = enable;
}

void ctrQuillonConsole::EnableOrla(bool visible) {
    (*this)["cmdOrla"].setVisible(visible);
}

void ctrQuillonConsole::EnableMultiRoom(bool visible) {
    (*this)["cmdMultiRoom"].setVisible(visible);
}

void ctrQuillonConsole::resized() {
    if (!parts_) {
        return;
    }
    if (parts_->state.IconSize == -1) {
        parts_->chooseIconSize();
    }
    parts_->layout.apply(*this);
    parts_->setFromGUI(parts_->state.fromGUI);
}

} // namespace quillon
