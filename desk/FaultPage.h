#pragma once

#include <functional>
#include <vector>

#include <QFormLayout>
#include <QLabel>
#include <QWidget>

#include "desk/Station.h"

namespace desk {

/// Faults to choose: of the line, of what is told, of the machine. During a lesson it shows what was chosen
/// here and not what the lesson hides.
class FaultPage final : public QWidget {
    Q_OBJECT

public:
    explicit FaultPage(Station& station, QWidget* parent = nullptr);

    /// Nothing has been chosen: a lesson begins.
    void reset();
    void show(const simulator::Gauges& gauges, const simulator::Options& options, bool inLesson);

private:
    struct Seen {
        simulator::Gauges gauges;
        const simulator::Options& options;
        bool cableIn;
    };

    void addToggle(const char* words, const char* on, const char* off, std::function<bool(const Seen&)> now);
    void addNumber(const char* words, int high, const char* unit, const char* command,
                   std::function<int(const Seen&)> now);
    void addPlug();
    void addLine(const char* words, const char* example, const char* verb, const char* command);
    void obey(const std::string& command);

    Station& station_;
    QFormLayout* form_;
    QLabel* answer_;
    std::vector<std::function<void(const Seen&)>> refreshers_;
};

} // namespace desk
