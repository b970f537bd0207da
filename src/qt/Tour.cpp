#include "qt/Tour.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include <QApplication>
#include <QDir>
#include <QMessageBox>
#include <QPixmap>

#include "base/Numbers.h"
#include "qt/Convert.h"

namespace quillon {

namespace {

constexpr int kLookInterval = 100;
constexpr Milliseconds kWatchdog = 25'000;  ///< for the mode keys
constexpr Milliseconds kVersionDelay = 500; ///< from the mode keys to the picture of the rest screen
constexpr Milliseconds kModeDelay = 2'500;  ///< from the press to the picture of the mode

constexpr std::array<std::string_view, 4> kKeysOfModes{"cmbReadExposureCounters", "cmbConfiguration",
                                                       "cmbManualCalibration", "cmbAutocalibration"};

ControlHost* ownerOf(ControlHost& host, std::string_view name) {
    if (equalsNoCase(host.name(), name)) {
        return &host;
    }
    for (const auto& control : host.controls()) {
        if (auto* inner = dynamic_cast<ControlHost*>(control.get())) {
            if (ControlHost* found = ownerOf(*inner, name)) {
                return found;
            }
        }
    }
    return nullptr;
}

std::string inOneLine(const QString& text) {
    return text.simplified().toStdString();
}

std::string secondsText(Milliseconds time) {
    return fixedDecimals(static_cast<double>(time) / 1000, 1);
}

void say(const Clock& clock, const std::string& what) {
    std::printf("%6s s  %s\n", secondsText(clock.now()).c_str(), what.c_str());
    std::fflush(stdout);
}

} // namespace

BoxCloser::BoxCloser(const Clock& clock) : clock_(clock) {
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
    timer_.start(kLookInterval);
}

void BoxCloser::look() const {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box != nullptr) {
        say(clock_, "message box \"" + inOneLine(box->windowTitle()) + "\": " + inOneLine(box->text()));
        box->reject();
    }
}

Tour::Tour(ControlHost& form, Screen& screen, Input& input, const Clock& clock, QString directory)
    : form_(form), screen_(screen), input_(input), clock_(clock),
      directory_(std::move(directory)), watched_{{"prompt", "Quillon", "lblHelp", {}},
                                                 {"versions", "Quillon", "lblSoftwareVersion", {}},
                                                 {"error", "Quillon", "lblError", {}},
                                                 {"phase", "TorvaneSerial", "txtPHASE", {}},
                                                 {"heat", "TorvaneSerial", "txtHU", {}},
                                                 {"dose", "TorvaneSerial", "txtDose", {}},
                                                 {"fail-safe", "TorvaneSerial", "txtCfgFailSafe", {}}} {
    for (const std::string_view key : kKeysOfModes) {
        watched_.push_back({"key " + std::string(key), "Quillon", std::string(key), {}});
    }
    QDir().mkpath(directory_);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { look(); });
    timer_.start(kLookInterval);
}

const Control* Tour::control(std::string_view owner, std::string_view name) const {
    const ControlHost* host = ownerOf(form_, owner);
    return host == nullptr ? nullptr : host->find(name);
}

bool Tour::modeKeysAlive() const {
    return std::all_of(kKeysOfModes.begin(), kKeysOfModes.end(), [this](std::string_view name) {
        const Control* key = control("Quillon", name);
        return key != nullptr && input_.reachable(*key);
    });
}

void Tour::look() {
    tellChanges();
    goOn();
}

void Tour::tellChanges() {
    for (Watched& watched : watched_) {
        const Control* shown = control(watched.owner, watched.name);
        if (shown == nullptr) {
            continue;
        }
        std::string now = inOneLine(toQt(shown->kind() == Kind::Button ? "" : shown->caption()));
        if (shown->kind() == Kind::Button) {
            now = shown->enabled() ? "enabled" : "disabled";
        }
        if (now != watched.seen) {
            say(clock_, watched.title + ": " + (now.empty() ? "(nothing)" : now));
            watched.seen = now;
        }
    }
}

void Tour::goOn() {
    const Milliseconds now = clock_.now();
    if (shown_ == 0 && form_.visible()) {
        shown_ = now;
        picture("start");
    }
    const Control* phase = control("TorvaneSerial", "txtPHASE");
    if (!poweringUp_ && phase != nullptr && !phase->caption().empty()) {
        poweringUp_ = true;
        picture("generator-answers");
    }
    if (ready_ == 0 && modeKeysAlive()) {
        ready_ = now;
        say(clock_, "all four mode keys are alive");
        picture("ready");
    }
    if (ready_ == 0) {
        if (now > kWatchdog) {
            finish();
        }
        return;
    }
    if (!versions_ && now > ready_ + kVersionDelay) {
        versions_ = true;
        picture("rest");
        say(clock_, "press and release of Configuration");
        input_.click(ownerOf(form_, "Quillon")->at("cmbConfiguration"));
        entered_ = now;
    } else if (versions_ && now > entered_ + kModeDelay) {
        picture("configuration");
        finish();
    }
}

void Tour::finish() {
    timer_.stop();
    finished_ = true;
    if (passed()) {
        std::printf("tour: passed, mode keys alive after %s s, %d pictures\n", secondsText(ready_).c_str(),
                    pictures_);
    } else {
        picture("end");
        std::printf("tour: FAILED, mode keys not alive within %.0f s, %d pictures\n",
                    static_cast<double>(kWatchdog) / 1000, pictures_);
    }
    std::fflush(stdout);
    if (onFinished) {
        onFinished();
    }
}

void Tour::picture(const char* name) {
    screen_.flush();
    const QString file =
        QDir(directory_).filePath(QStringLiteral("%1-%2.png").arg(++pictures_).arg(QLatin1String(name)));
    const bool saved = screen_.window().grab().save(file);
    say(clock_, (saved ? "picture " : "no picture, cannot write ") + file.toStdString());
}

} // namespace quillon
