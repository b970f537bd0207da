#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <QImage>
#include <QSize>

#include "qt/Screen.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"

namespace quillon {

/// How an installation is set up before the program starts.
struct Installation {
    std::string_view commandLine = {};
    std::string_view configuration = {}; ///< lines for section CONFIG of "Quillon.ini"
    std::string_view facts = {};         ///< content of "temp.ini"
    std::string_view texts = {};         ///< content of "texts.txt"
    std::string_view failure = {};       ///< why the port can't be opened; empty for one that can
};

/// The whole application in its window, on a machine in memory and in virtual time: told what the generator
/// says and what the operator does, it stands still for a picture.
class Stage {
public:
    /// Starts the program on a screen that leaves its fitted window exactly `window` pixels.
    Stage(const Installation& installation, QSize window);
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    /// The generator says this; several messages are parted by blanks, and a blank inside a message is
    /// written as "_".
    void report(std::string_view messages);
    /// From now on the generator answers a frame that begins with `frame`, besides acknowledging everything.
    void answer(std::string_view frame, std::string_view messages);
    /// From now on the generator is silent.
    void fallSilent();
    /// The adapter of the line is pulled out.
    void unplug() { machine_.port.setGone(true); }
    void wait(Milliseconds ms) { machine_.time.advance(ms); }

    // What the operator does; `name` is "cmbClose", "link.cmbKVPUp", "link.cmbWS(2)" or "SelWSCal.cmdOK". A
    // control that cannot be reached ends the program.
    void press(std::string_view name);
    void click(std::string_view name);
    /// The same, on a key that would do nothing; one that is handed on ends the program.
    void tapInVain(std::string_view name);
    void type(std::string_view name, std::string_view text);
    void slide(std::string_view name, std::int32_t value);
    /// With a finger on the window, that stays for so many ms by the PC's clock.
    void touch(std::string_view name, int hold = 0);
    /// The keypad: digits, "<" to erase, "." to end it.
    void touchKeypad(std::string_view keys);

    /// What the operator has no way to bring about inside this program.
    [[nodiscard]] Control& control(std::string_view name);
    [[nodiscard]] ControlHost& console();
    [[nodiscard]] Application& application() { return *application_; }
    [[nodiscard]] Screen& screen() { return *screen_; }

    void resize(QSize window);
    [[nodiscard]] QImage picture();

private:
    struct Answer {
        std::string frame;
        std::string messages;
    };

    void written(std::string_view bytes);
    void touch(const QWidget& widget, int hold = 0);

    MemoryPlatform machine_;
    std::vector<Answer> answers_;
    bool silent_ = false;
    std::unique_ptr<Application> application_;
    std::unique_ptr<Screen> screen_;
};

} // namespace quillon
