#pragma once

#include <map>
#include <string>

#include <QCheckBox>
#include <QSpinBox>
#include <QWidget>

#include "desk/Station.h"

namespace desk {

/// What a person does about the machine with the hands: doors, switches inside, the plug, the tube.
class RoomPage final : public QWidget {
    Q_OBJECT

public:
    explicit RoomPage(Station& station, QWidget* parent = nullptr);

    void show(const simulator::Gauges& gauges);

private:
    void obey(const std::string& command);
    QCheckBox* toggle(const QString& words, const std::string& on, const std::string& off);

    Station& station_;
    std::map<std::string, QCheckBox*> lamps_;
    QCheckBox* dip_;
    QSpinBox* reading_;
};

} // namespace desk
