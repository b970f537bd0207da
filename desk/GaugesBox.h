#pragma once

#include <QGroupBox>
#include <QLabel>
#include <QProgressBar>

#include "desk/Station.h"

namespace desk {

/// What runs and what it would run with: exposure, heat, values, counters, and the last words of both sides.
class GaugesBox final : public QGroupBox {
    Q_OBJECT

public:
    explicit GaugesBox(QWidget* parent = nullptr);

    void show(const simulator::Gauges& gauges, const simulator::Options& options);
    /// A frame of the console or a message of the machine, with its meaning.
    void showTraffic(bool fromConsole, const QString& text, const QString& meaning);

private:
    void showExposure(const simulator::Gauges& gauges);

    QProgressBar* exposure_;
    QProgressBar* heat_;
    QLabel* values_;
    QLabel* counters_;
    QLabel* console_;
    QLabel* answer_;
};

} // namespace desk
