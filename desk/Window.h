#pragma once

#include <functional>
#include <vector>

#include <QMainWindow>
#include <QTabWidget>
#include <QTimer>

#include "desk/FaultPage.h"
#include "desk/GaugesBox.h"
#include "desk/LessonPage.h"
#include "desk/LinePage.h"
#include "desk/MemoryPage.h"
#include "desk/RoomPage.h"
#include "desk/Station.h"
#include "desk/StatusStrip.h"
#include "desk/SwitchBox.h"

namespace desk {

/// The machine's side: what a person standing at the generator sees and touches.
class Window final : public QMainWindow {
    Q_OBJECT

public:
    /// `options`: the machine that stands there while there is no lesson.
    Window(Station& station, simulator::Options options);
    ~Window() override;
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    void offer(std::vector<simulator::Lesson> lessons) { lesson_->offer(std::move(lessons)); }
    /// Begins a lesson, or with none puts the machine back as it was at the start.
    void begin(const simulator::Lesson* lesson);
    [[nodiscard]] bool inLesson() const { return station_.lesson() != nullptr; }
    void setConsoleClosed(bool closed);

    /// Asked before the window closes; false keeps it open.
    std::function<bool()> mayClose;

signals:
    void consoleAsked();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void build();
    void listen();
    void refresh();
    void addTraffic(qint64 ms, bool fromConsole, const QString& text, const QString& note);

    Station& station_;
    simulator::Options options_;
    StatusStrip* strip_;
    SwitchBox* switches_;
    GaugesBox* gauges_;
    QTabWidget* tabs_;
    LessonPage* lesson_;
    RoomPage* room_;
    FaultPage* faults_;
    LinePage* line_;
    MemoryPage* memory_;
    QTimer pace_; ///< of the gauges that move by themselves
    bool stale_ = false;
};

} // namespace desk
