#include "Stage.h"

#include <algorithm>
#include <optional>
#include <stdexcept>

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPixmap>
#include <QThread>
#include <QWindow>

#include "base/Text.h"
#include "console/ctrQuillonConsole.h"
#include "qt/Convert.h"
#include "qt/Keypad.h"
#include "qt/RecordsKey.h"
#include "shell/TextFile.h"
#include "ui/ControlTable.h"

namespace quillon {

namespace {

constexpr Milliseconds kAnswerDelay = 20;
constexpr int kFittedMargin = 12; ///< pixels that a window fitted to the screen leaves free

void require(bool done, std::string_view name) {
    if (!done) {
        throw std::runtime_error(std::string(name) + " cannot be reached");
    }
}

} // namespace

Stage::Stage(const Installation& installation, QSize window) {
    machine_.desktop.setScreen(window.width() + kFittedMargin,
                               FormWindow::formHeight(window.height()) + kFittedMargin);
    machine_.folder.put("Quillon.ini",
                        "[CONFIG]\r\nFitToScreen=YES\r\n" + std::string(installation.configuration));
    machine_.folder.put("temp.ini", installation.facts);
    machine_.folder.put(kTextFile, installation.texts);
    machine_.folder.put("error_info.txt", "44=Anode of tube 2 does not reach its speed in time=1\r\n");
    machine_.port.setDevice("/dev/ttyUSB0");
    machine_.port.setFailing(1, !installation.failure.empty());
    machine_.port.setFailure(installation.failure);
    machine_.port.onWritten = [this](std::string_view bytes) { written(bytes); };
    application_ = std::make_unique<Application>(Platform{machine_.time.schedule(), machine_.time,
                                                          machine_.port, machine_.store, machine_.folder,
                                                          machine_.desktop, machine_.power},
                                                 installation.commandLine);
    screen_ = std::make_unique<Screen>(
        application_->form(), application_->input(),
        FormWindow::Requests{[this](Twips width, Twips height) { application_->resizeWindow(width, height); },
                             {}},
        application_->indicators());
    application_->setScreen(screen_.get());
    screen_->recordsKey()->onPress = [](const std::string&) { return true; };
    screen_->recordsKey()->setState({RecordingState::Kind::Recording, "000001"});
    application_->start();
}

Stage::~Stage() {
    application_->setScreen(nullptr);
}

void Stage::report(std::string_view messages) {
    std::string bytes;
    for (const std::string_view message : split(messages, " ")) {
        bytes.append(message).append("\r\n");
    }
    std::replace(bytes.begin(), bytes.end(), '_', ' ');
    machine_.port.receive(bytes);
}

void Stage::answer(std::string_view frame, std::string_view messages) {
    answers_.push_back({std::string(frame), std::string(messages)});
}

void Stage::fallSilent() {
    silent_ = true;
}

void Stage::written(std::string_view bytes) {
    if (silent_) {
        return;
    }
    std::string messages = "AK";
    for (const Answer& answer : answers_) {
        if (bytes.starts_with(answer.frame)) {
            messages.append(" ").append(answer.messages);
        }
    }
    machine_.time.schedule().post(kAnswerDelay, [this, messages] { report(messages); });
}

ControlHost& Stage::console() {
    return application_->console();
}

Control& Stage::control(std::string_view name) {
    const auto dot = name.find('.');
    ControlHost* host = &console();
    if (dot != std::string_view::npos) {
        const std::string_view owner = name.substr(0, dot);
        host = owner == "link" ? &application_->link() : console().keyed(owner);
        require(host != nullptr, owner);
    }
    const auto [plain, index] = indexedName(name.substr(dot == std::string_view::npos ? 0 : dot + 1));
    return host->at(plain, index < 0 ? std::nullopt : std::optional(index));
}

void Stage::press(std::string_view name) {
    Control& key = control(name);
    require(screen_->admits(key) && application_->input().press(key), name);
    screen_->flush();
    if (ControlView* view = screen_->view(key)) {
        view->setPressed(true);
    }
}

void Stage::click(std::string_view name) {
    require(screen_->admits(control(name)) && application_->input().click(control(name)), name);
}

void Stage::tapInVain(std::string_view name) {
    require(!screen_->admits(control(name)), name);
}

void Stage::type(std::string_view name, std::string_view text) {
    require(application_->input().type(control(name), text), name);
}

void Stage::slide(std::string_view name, std::int32_t value) {
    require(application_->input().slide(control(name), value), name);
}

void Stage::touch(const QWidget& widget, int hold) {
    const QPointF at(widget.mapTo(widget.window(), widget.rect().center()));
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        QMouseEvent event(type, at, at, at, Qt::LeftButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(screen_->window().windowHandle(), &event);
        if (type == QEvent::MouseButtonPress && hold > 0) {
            QThread::msleep(static_cast<unsigned long>(hold));
        }
    }
    screen_->flush();
}

void Stage::touch(std::string_view name, int hold) {
    screen_->flush();
    touch(*screen_->view(control(name)), hold);
}

void Stage::touchKeypad(std::string_view keys) {
    for (const char key : keys) {
        const int code = key == '<' ? PadKey::kErase : key == '.' ? PadKey::kDone : key - '0';
        const auto& all = screen_->keypad()->keys();
        touch(**std::find_if(all.begin(), all.end(),
                             [code](const PadKey* each) { return each->code() == code; }));
    }
}

void Stage::resize(QSize window) {
    application_->resizeWindow(toTwips(window.width()), toTwips(FormWindow::formHeight(window.height())));
}

QImage Stage::picture() {
    screen_->flush();
    screen_->setStart(QDate(2024, 2, 29).startOfDay().addSecs(32'400)); // 09:00, the same in every picture
    return screen_->window().grab().toImage();
}

} // namespace quillon
