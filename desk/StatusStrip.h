#pragma once

#include <QPushButton>
#include <QWidget>

#include "desk/Look.h"
#include "desk/Station.h"

namespace desk {

/// The mains switch, and beside it what the machine is doing, whether X-rays are allowed, and radiation.
class StatusStrip final : public QWidget {
    Q_OBJECT

public:
    explicit StatusStrip(Station& station, QWidget* parent = nullptr);

    void show(const simulator::Gauges& gauges);

private:
    QPushButton* mains_;
    Lamp* phase_;
    Lamp* allowed_;
    Lamp* radiation_;
};

} // namespace desk
