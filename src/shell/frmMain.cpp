#include "shell/frmMain.h"

#include <algorithm>
#include <array>
#include <optional>

#include "base/Fault.h"
#include "base/Numbers.h"
#include "base/Text.h"
#include "console/ConsoleTexts.h"
#include "console/ctrQuillonConsole.h"
#include "runtime/ProfileFile.h"

namespace quillon {

namespace {

constexpr std::string_view kErrorFile = "error_info.txt";
constexpr std::string_view kConfigurationFile = "Quillon.ini";
constexpr std::string_view kSection = "CONFIG";
constexpr std::size_t kLongestValue = 255;

constexpr Twips kDesignWidth = 9510;
constexpr Twips kDesignHeight = 6840;
constexpr Twips kScreenMargin = 180;      ///< what a window fitted to the screen leaves free, each way
constexpr Twips kBelowConsole = 250;      ///< what a window of a requested size leaves free below the console
constexpr std::int16_t kSmallestEdge = 1; ///< a window below it could be neither seen nor left
constexpr std::int16_t kLastPort = 6;

bool isYes(std::string_view value) {
    return value == "YES";
}

/// Nothing when it is no number of 16 bits.
std::optional<std::int16_t> numberIn(std::string_view value) {
    try {
        return toInt16(value);
    } catch (const Fault&) {
        return std::nullopt;
    }
}

} // namespace

frmMain::frmMain(const Context& context, std::unique_ptr<ctrQuillonConsole> console)
    : ControlHost(Kind::Form, "frmMain", context.schedule), folder_(context.folder),
      desktop_(context.desktop), commandLine_(context.commandLine), Quillon(*console) {
    adopt(std::move(console));
    setVisible(false);
    setCaption(Quillon.texts().sWindowTitle);
    setPlace({0, 0, kDesignWidth, kDesignHeight});
    Quillon.events.Goodbye.connect([this] { Quillon_Goodbye(); });
    Quillon.events.CannotOpenPort.connect([this] { Quillon_CannotOpenPort(); });
}

void frmMain::Form_Load() {
    Quillon.setStopBits(1);
    Quillon.setDataBits(8);
    readSettings();
    applyPort();
    applySpeed();
    Quillon.PortOpen(true);
    Quillon.IniErrorDescription(kErrorFile);
    setCaption(Quillon.texts().sWindowTitle + " (COM" + decimalText(m_Port) + ", " + decimalText(baudrate_) +
               ", " + decimalText(Quillon.DataBits()) + ", " + decimalText(Quillon.StopBits()) + ")");
    applySize();
    Quillon.setProjectName("Quillon");
    m_CanClose = false;
}

void frmMain::readSettings() {
    const auto pieces = split(commandLine_, "-");
    if (pieces.size() == 1) {
        readConfiguration();
        return;
    }
    for (const std::string_view piece : pieces) {
        readSwitch(trimRight(piece));
    }
}

void frmMain::readSwitch(std::string_view piece) {
    constexpr std::array kWithNumber{Setting{"P", &frmMain::readPortSwitch},
                                     Setting{"S", &frmMain::readSpeedSwitch}};
    for (const auto& [name, read] : kWithNumber) {
        if (piece.starts_with(name)) {
            (this->*read)(piece.substr(name.size()));
            return;
        }
    }
    if (piece == "FitToScreen") {
        readFitToScreen("YES");
    } else if (piece == "ResetCounters") {
        Quillon.setResetCounterEnable(true);
    } else if (piece == "ORLA") {
        // Unlike the key, the switch leaves the choice of the positioner alone.
        Quillon.EnableOrla(true);
    }
}

void frmMain::readConfiguration() {
    // clang-format off
    constexpr std::array kKeys{
        Setting{"PORT",        &frmMain::readPort},
        Setting{"FitToScreen", &frmMain::readFitToScreen},
        Setting{"Width",       &frmMain::readWidth},
        Setting{"Height",      &frmMain::readHeight},
        Setting{"ICON_SIZE",   &frmMain::readIconSize},
        Setting{"ORLA",        &frmMain::readOrla},
        Setting{"REMOTE",      &frmMain::readRemote},
    };
    // clang-format on
    const ProfileFile file(folder_.read(kConfigurationFile, kProfileFileLimit).value_or(std::string{}));
    const bool sized = !file.read(kSection, "Width", "", kLongestValue).empty();
    for (const auto& [name, read] : kKeys) {
        const std::string value = file.read(kSection, name, "", kLongestValue);
        // A width asks for a height, so a missing one is looked at; a height alone asks for nothing.
        const bool asked = name == "Height" ? sized : !value.empty();
        if (asked) {
            (this->*read)(value);
        }
    }
}

void frmMain::readPort(std::string_view value) {
    readNumber("PORT", value, m_Port);
}

void frmMain::readPortSwitch(std::string_view value) {
    readNumber("-P", value, m_Port);
}

void frmMain::readSpeedSwitch(std::string_view value) {
    readNumber("-S", value, baudrate_);
}

void frmMain::readFitToScreen(std::string_view value) {
    if (isYes(value)) {
        m_FitToScreen = true;
        m_SizeRequested = true;
    }
}

void frmMain::readWidth(std::string_view value) {
    widthKnown_ = readNumber("Width", value, m_Width, kSmallestEdge);
}

void frmMain::readHeight(std::string_view value) {
    if (readNumber("Height", value, m_Height, kSmallestEdge) && widthKnown_) {
        m_SizeRequested = true;
    }
}

void frmMain::readIconSize(std::string_view value) {
    readNumber("ICON_SIZE", value, m_IconSize);
}

void frmMain::readOrla(std::string_view value) {
    Quillon.EnableOrla(isYes(value));
    if (isYes(value)) {
        PositionerToCalibrate = PositionerKind::Orla;
    }
}

void frmMain::readRemote(std::string_view value) {
    Quillon.EnableMultiRoom(isYes(value));
    if (isYes(value)) {
        PositionerToCalibrate = PositionerKind::Remote;
    }
}

bool frmMain::readNumber(std::string_view name, std::string_view value, std::int16_t& number,
                         std::int16_t least) {
    const auto read = numberIn(value);
    if (!read || *read < least) {
        tell(BoxKind::Info, ConsoleTexts::filled(Quillon.texts().sNoNumber, {name, value}));
        return false;
    }
    number = *read;
    return true;
}

void frmMain::applyPort() {
    if (m_Port >= 1 && m_Port <= kLastPort) {
        Quillon.setPort(m_Port);
    } else {
        tell(BoxKind::Info, ConsoleTexts::filled(Quillon.texts().sNoPort, {std::int64_t{m_Port}}));
    }
}

void frmMain::applySpeed() {
    if (baudrate_ == 9600 || baudrate_ == 19200) {
        Quillon.setBaudrate(baudrate_);
    } else {
        tell(BoxKind::Info, ConsoleTexts::filled(Quillon.texts().sNoBaudrate, {std::int64_t{baudrate_}}));
    }
}

void frmMain::applySize() {
    Place window{0, 0, width(), height()};
    if (m_SizeRequested) {
        below_ = kBelowConsole;
        if (m_FitToScreen) {
            window.width = desktop_.screenWidth() * desktop_.twipsPerPixelX() - kScreenMargin;
            window.height = desktop_.screenHeight() * desktop_.twipsPerPixelY() - kScreenMargin;
        } else {
            Quillon.setIconSize(m_IconSize);
            window.width = m_Width;
            window.height = m_Height;
        }
    }
    setPlace(window);
    if (m_SizeRequested && !m_FitToScreen) {
        MakeTopMost();
    }
    // The console gets its first size here: it chooses the size of its pictures by it.
    placed_ = true;
    placeConsole();
    m_SizeRequested = false;
}

void frmMain::resized() {
    if (placed_) {
        placeConsole();
    }
}

void frmMain::placeConsole() {
    Quillon.setPlace({0, 0, width(), std::max(0, height() - below_)});
}

void frmMain::Form_QueryUnload() {
    if (!m_CanClose || m_Unloaded) {
        return;
    }
    m_Unloaded = true;
    setVisible(false);
    if (onUnload) {
        onUnload();
    }
}

void frmMain::MakeTopMost() {
    m_TopMost = true;
    desktop_.setTopMost(true);
}

void frmMain::MakeNormal() {
    m_TopMost = false;
    desktop_.setTopMost(false);
}

void frmMain::Quillon_Goodbye() {
    m_CanClose = true;
    Form_QueryUnload();
}

void frmMain::Quillon_CannotOpenPort() {
    tell(BoxKind::Critical, ConsoleTexts::filled(Quillon.texts().sCannotOpenPort, {std::int64_t{m_Port}}));
}

void frmMain::tell(BoxKind kind, std::string_view text) {
    desktop_.message(kind, Quillon.texts().sBoxTitle, text);
}

} // namespace quillon
