#include "LastScreens.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <sstream>

#include <QDateTime>
#include <QPixmap>

#include "qt/Screen.h"
#include "shell/RecordingReader.h"
#include "tools/scenario/Script.h"

namespace quillon {

namespace {

constexpr Milliseconds kPace = 50; // from picture to picture
constexpr std::string_view kLeave = "call Quillon.LeaveNow";

/// When the console is asked to leave, or when the recording ends.
Milliseconds endOf(std::string_view recording) {
    Milliseconds end = 0;
    bool leaves = false;
    forEachRecordedLine(recording, [&](std::string_view line) {
        leaves = leaves || line == kLeave;
        end += leaves ? 0 : recordedTime(line);
    });
    return end;
}

/// The window of the application that plays the recording, looked at as the recording's time goes by.
class Watch {
public:
    Watch(Script& script, Milliseconds from, const std::function<void(const QImage&)>& each)
        : rig_(script.rig()), from_(from), each_(each) {
        rig_.onStarted = [this] { begin(); };
        script.onLine = [this](std::string_view line) { look(line); };
    }
    ~Watch() { end(); }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    [[nodiscard]] bool everSeen() const { return !last_.isNull(); }

private:
    void begin() {
        Application& application = rig_.application();
        screen_ = std::make_unique<Screen>(application.form(), application.input(), FormWindow::Requests{},
                                           application.indicators());
        application.setScreen(screen_.get());
        rig_.machine.time.schedule().post(std::max(from_, kPace), [this] { take(); });
    }

    void look(std::string_view line) {
        constexpr std::string_view kClock = " clock ";
        const auto at = line.find(kClock);
        if (screen_ && line.starts_with("# ") && at != std::string_view::npos) {
            const std::string_view iso = line.substr(at + kClock.size());
            const auto now = QDateTime::fromString(
                QString::fromLatin1(iso.data(), static_cast<qsizetype>(iso.size())), Qt::ISODateWithMs);
            if (SummaryView* summary = screen_->summary()) {
                summary->setStart(now.addMSecs(-rig_.machine.time.now()));
            }
        }
        if (line == kLeave) {
            end();
        }
    }

    void take() {
        if (!screen_ || rig_.ended()) {
            return;
        }
        screen_->flush();
        QImage picture = screen_->window().grab().toImage();
        if (picture != last_) {
            last_ = std::move(picture);
            each_(last_);
        }
        rig_.machine.time.schedule().post(kPace, [this] { take(); });
    }

    void end() {
        if (screen_) {
            rig_.application().setScreen(nullptr);
            screen_ = nullptr;
        }
    }

    Rig& rig_;
    Milliseconds from_;
    const std::function<void(const QImage&)>& each_;
    std::unique_ptr<Screen> screen_;
    QImage last_;
};

} // namespace

bool lastScreens(std::string_view recording, Milliseconds stretch,
                 const std::function<void(const QImage&)>& each) {
    std::ostringstream frames;
    Script script(recording, frames);
    Watch watch(script, endOf(recording) - stretch, each);
    try {
        static_cast<void>(script.run());
    } catch (const BadScript& problem) {
        std::fprintf(stderr, "line %d: %s\n", script.line(), problem.what());
        return false;
    }
    return watch.everSeen();
}

} // namespace quillon
