#include "shell/Application.h"

#include <string>

#include "console/PendingKeys.h"
#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "shell/System.h"
#include "shell/TextFile.h"
#include "shell/cGeneratorError.h"
#include "shell/frmMain.h"

namespace quillon {

namespace {

/// Lets nothing of the operator through while a message box stands.
class BoxDesktop final : public Desktop {
public:
    BoxDesktop(Desktop& desktop, Input& input) : desktop_(desktop), input_(input) {}

    [[nodiscard]] int screenWidth() const override { return desktop_.screenWidth(); }
    [[nodiscard]] int screenHeight() const override { return desktop_.screenHeight(); }
    [[nodiscard]] int twipsPerPixelX() const override { return desktop_.twipsPerPixelX(); }
    [[nodiscard]] int twipsPerPixelY() const override { return desktop_.twipsPerPixelY(); }
    void message(BoxKind kind, std::string_view title, std::string_view text) override {
        const Up up(input_);
        desktop_.message(kind, title, text);
    }
    [[nodiscard]] bool ask(std::string_view title, std::string_view text) override {
        const Up up(input_);
        return desktop_.ask(title, text);
    }
    void setTopMost(bool topMost) override { desktop_.setTopMost(topMost); }
    void beep() override { desktop_.beep(); }

private:
    class Up {
    public:
        explicit Up(Input& input) : input_(input) { input_.boxOpened(); }
        ~Up() { input_.boxClosed(); }
        Up(const Up&) = delete;
        Up& operator=(const Up&) = delete;

    private:
        Input& input_;
    };

    Desktop& desktop_;
    Input& input_;
};

/// Hands changes on to the front end, and releases controls that are removed from the operator's input.
class ScreenRelay final : public ChangeSink {
public:
    explicit ScreenRelay(Input& input) : input_(input) {}

    PendingKeys* pending = nullptr;
    void setScreen(ChangeSink* screen) { screen_ = screen; }
    void controlChanged(Control& control) override {
        if (screen_ != nullptr) {
            screen_->controlChanged(control);
        }
    }
    void controlAdded(Control& control) override {
        if (screen_ != nullptr) {
            screen_->controlAdded(control);
        }
    }
    void controlRemoved(Control& control) override {
        input_.forget(control);
        if (pending != nullptr) {
            pending->forget(control);
        }
        if (screen_ != nullptr) {
            screen_->controlRemoved(control);
        }
    }

private:
    Input& input_;
    ChangeSink* screen_ = nullptr;
};

} // namespace

class Application::Impl {
public:
    Impl(const Platform& platform, std::string_view commandLine)
        : folder(platform.folder), desktop(platform.desktop, input), relay(input), system(platform.power),
          errorTable(platform.folder) {
        main = makeMain(platform, std::string(commandLine));
        main->setSink(&relay);
        relay.pending = &main->console().indicators().pending;
        relay.pending->setGestureOwner([this] { return input.gestureOwner(); });
    }

    ~Impl() { main->setSink(nullptr); }

    Folder& folder;
    Input input;
    BoxDesktop desktop;
    ScreenRelay relay;
    System system;
    cGeneratorError errorTable;
    std::unique_ptr<frmMain> main;

private:
    /// Inner ones first: what the link control asks the operator comes before there is a window.
    std::unique_ptr<frmMain> makeMain(const Platform& platform, const std::string& commandLine) {
        auto link = std::make_unique<TorvaneSerialV3_07_QLC1>(
            TorvaneSerialV3_07_QLC1::Context{platform.schedule, platform.port, platform.store,
                                             platform.folder, desktop, errorTable, commandLine});
        auto console = std::make_unique<ctrQuillonConsole>(
            ctrQuillonConsole::Context{
                platform.schedule, platform.loop, desktop, commandLine,
                [this] { return main == nullptr ? PositionerKind::None : main->PositionerToCalibrate; },
                [this] { return system.ExitWindows(true, false); }},
            std::move(link));
        return std::make_unique<frmMain>(
            frmMain::Context{platform.schedule, platform.folder, desktop, commandLine}, std::move(console));
    }
};

Application::Application(const Platform& platform, std::string_view commandLine)
    : impl_(std::make_unique<Impl>(platform, commandLine)) {
    main().onUnload = [this] {
        if (onEnded) {
            onEnded();
        }
    };
}

Application::~Application() = default;

void Application::start() {
    replaceTexts(console(), impl_->folder, impl_->desktop);
    main().Form_Load();
    main().setVisible(true);
    console().UserControl_Show();
}

ControlHost& Application::form() {
    return *impl_->main;
}

frmMain& Application::main() {
    return *impl_->main;
}

ctrQuillonConsole& Application::console() {
    return impl_->main->console();
}

TorvaneSerialV3_07_QLC1& Application::link() {
    return console().link();
}

Input& Application::input() {
    return impl_->input;
}

Indicators Application::indicators() {
    return console().indicators();
}

void Application::setScreen(ChangeSink* screen) {
    impl_->relay.setScreen(screen);
}

void Application::resizeWindow(Twips width, Twips height) {
    frmMain& window = main();
    window.setPlace({window.left(), window.top(), width, height});
}

void Application::requestClose() {
    main().Form_QueryUnload();
}

void Application::leave() {
    input().releaseAll();
    console().LeaveNow();
}

bool Application::ended() const {
    return impl_->main->unloaded();
}

} // namespace quillon
