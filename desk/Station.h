#pragma once

#include <memory>
#include <string>

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include "sim/Station.h"

namespace desk {

/// The simulated generator with its end of the line, on the event loop of the window.
class Station final : public QObject {
    Q_OBJECT

public:
    Station(const simulator::Options& options, std::string link);

    /// One command of the person at the machine, as generator-sim takes them. The answer may be empty.
    std::string obey(const std::string& command);

    /// Another machine, or the same one anew, at the same cable.
    void restart(const simulator::Options& options);
    void begin(const simulator::Lesson& lesson);
    void hint();

    /// What its gauges show now.
    [[nodiscard]] simulator::Gauges gauges();
    [[nodiscard]] const simulator::Options& options() { return station_.classroom().options(); }
    [[nodiscard]] const simulator::LessonRun* lesson() { return station_.classroom().lesson(); }
    [[nodiscard]] bool cableIn() const { return station_.cableIn(); }
    [[nodiscard]] const std::string& path() const { return station_.path(); }

signals:
    void frame(qint64 ms, const QString& text, simulator::Verdict verdict);
    void message(qint64 ms, const QString& text, simulator::Outbox::Fate fate);
    void lessonTold(const QString& line);
    void moved(); ///< something may have changed

private:
    void connectCable();
    void wake();

    QTimer timer_;
    std::unique_ptr<QSocketNotifier> readable_;
    std::unique_ptr<QSocketNotifier> writable_;
    simulator::Station station_;
};

} // namespace desk
