#pragma once

#include <map>
#include <string>

#include <QTreeWidget>
#include <QWidget>

#include "desk/Station.h"

namespace desk {

/// Everything that a lesson can ask, by the name it is asked by, with its value now; what is set up for the
/// workstations as a table.
class MemoryPage final : public QWidget {
    Q_OBJECT

public:
    explicit MemoryPage(QWidget* parent = nullptr);

    /// In a lesson what it may hide is not shown.
    void show(const simulator::Gauges& gauges, bool inLesson);

private:
    QTreeWidget* stations_;
    QTreeWidget* facts_;
    std::map<std::string, QTreeWidgetItem*> items_;
};

} // namespace desk
