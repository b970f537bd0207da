#pragma once

#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "console/PositionerKind.h"
#include "runtime/Platform.h"
#include "ui/ControlHost.h"

namespace quillon {

class ctrQuillonConsole;

/// The one window. It works out port, speed and size from the command line or from "Quillon.ini", opens the
/// port through the console that fills it, and does not close before the console has said goodbye.
class frmMain final : public ControlHost {
public:
    struct Context {
        Schedule& schedule;
        Folder& folder;
        Desktop& desktop;
        std::string commandLine; ///< as it was given, without the program's name
    };

    frmMain(const Context& context, std::unique_ptr<ctrQuillonConsole> console);

    /// Settings, port, error table, title, size. Message boxes come up in here.
    void Form_Load();
    /// Somebody wants the window closed, whoever it is: unloads it, or refuses.
    void Form_QueryUnload();

    /// Above all windows that are not top-most themselves, place and size untouched.
    void MakeTopMost();
    /// The reverse.
    void MakeNormal();

    /// Whose service the console offers.
    PositionerKind PositionerToCalibrate = PositionerKind::None;

    [[nodiscard]] ctrQuillonConsole& console() { return Quillon; }
    [[nodiscard]] bool topMost() const { return m_TopMost; }
    [[nodiscard]] bool unloaded() const { return m_Unloaded; }
    /// Called once, when the window unloads.
    std::function<void()> onUnload;

protected:
    void resized() override;

private:
    /// What a key of "Quillon.ini" or a switch does with its value.
    using Read = void (frmMain::*)(std::string_view value);
    struct Setting {
        std::string_view name;
        Read read;
    };

    void readSettings();
    void readSwitch(std::string_view piece);
    void readConfiguration();
    void readPort(std::string_view value);
    void readPortSwitch(std::string_view value);
    void readSpeedSwitch(std::string_view value);
    void readFitToScreen(std::string_view value);
    void readWidth(std::string_view value);
    void readHeight(std::string_view value);
    void readIconSize(std::string_view value);
    void readOrla(std::string_view value);
    void readRemote(std::string_view value);
    /// False, and a message, for what is no number of 16 bits or below `least`; `number` stays then.
    bool readNumber(std::string_view name, std::string_view value, std::int16_t& number,
                    std::int16_t least = std::numeric_limits<std::int16_t>::min());

    void applyPort();
    void applySpeed();
    void applySize();
    void placeConsole();
    void tell(BoxKind kind, std::string_view text);
    void Quillon_Goodbye();
    void Quillon_CannotOpenPort();

    Folder& folder_;
    Desktop& desktop_;
    std::string commandLine_;
    ctrQuillonConsole& Quillon;

    std::int16_t m_Port = 1;
    std::int16_t baudrate_ = 19200;
    std::int16_t m_Width = 0;
    std::int16_t m_Height = 0;
    std::int16_t m_IconSize = 0;
    bool m_FitToScreen = false;
    bool m_SizeRequested = false;
    bool m_CanClose = false;
    bool m_TopMost = false;
    bool m_Unloaded = false;
    bool widthKnown_ = false;
    bool placed_ = false; // the console has its first place
    Twips below_ = 0;     // what stays free below the console
};

} // namespace quillon
