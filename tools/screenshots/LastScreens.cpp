#include "LastScreens.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <sstream>

#include <QDateTime>
#include <QPixmap>

#include "base/Numbers.h"
#include "base/Text.h"
#include "qt/RecordsKey.h"
#include "qt/Screen.h"
#include "qt/StatusBar.h"
#include "shell/RecordingReader.h"
#include "tools/scenario/Reader.h"
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

/// "# TIME WORD REST"; all empty for a line that is no such remark.
struct Remark {
    Milliseconds time = 0;
    std::string_view word;
    std::string_view rest;
};
Remark remarkIn(std::string_view line) {
    const auto pieces = split(line, " ");
    if (pieces.size() < 4 || pieces[0] != "#" || !isNumeric(pieces[1])) {
        return {};
    }
    return {static_cast<Milliseconds>(toDouble(pieces[1])), pieces[2],
            line.substr(static_cast<std::size_t>(pieces[3].data() - line.data()))};
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
        screen_->recordsKey()->onPress = [](const std::string&) { return true; };
        screen_->recordsKey()->setState({RecordingState::Kind::Recording});
        application.setScreen(screen_.get());
        rig_.machine.time.schedule().post(std::max(from_, kPace), [this] { take(); });
    }

    void look(std::string_view line) {
        const Remark remark = remarkIn(line);
        if (remark.word == "port") {
            setDevice(remark.rest);
        } else if (line == kLeave) {
            end();
        } else if (screen_ && remark.word == "clock") {
            setClock(remark);
        } else if (screen_ && remark.word == "refused") {
            refuse(remark.rest);
        } else if (screen_ && line.starts_with("press ")) {
            ++told_;
            screen_->tellNothing();
        }
    }

    /// "DEVICE = WHAT IT STANDS FOR, ADAPTER", in quotes.
    void setDevice(std::string_view rest) {
        const std::string identity = bytesOf(rest.substr(0, quotedLength(rest)));
        rig_.machine.port.setDevice(identity.substr(0, std::min(identity.find(" = "), identity.find(", "))));
    }

    void setClock(const Remark& remark) {
        const QString iso =
            QString::fromLatin1(remark.rest.data(), static_cast<qsizetype>(remark.rest.size()));
        screen_->setStart(QDateTime::fromString(iso, Qt::ISODateWithMs).addMSecs(-remark.time));
    }

    /// "CONTROL WHY": said for as long as the window says it, in the recording's time.
    void refuse(std::string_view rest) {
        const std::string_view name = rest.substr(0, rest.find(' '));
        const Control* control = rig_.find(name);
        if (control == nullptr) {
            return;
        }
        screen_->tellWhy(*control, bytesOf(rest.substr(std::min(name.size() + 1, rest.size()))));
        rig_.machine.time.schedule().post(kWhyTime, [this, told = ++told_] {
            if (screen_ && told == told_) {
                screen_->tellNothing();
            }
        });
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
    int told_ = 0; ///< reasons that the foot was given, and presses that took them away
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
