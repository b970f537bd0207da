#include "desk/MemoryPage.h"

#include <algorithm>
#include <array>

#include <QHeaderView>
#include <QVBoxLayout>

namespace desk {

namespace {

constexpr std::array kHidden{"plug", "silent", "acks", "stuck"};
constexpr int kStations = 8;

QTreeWidget* table(const QStringList& heads, const QString& name) {
    auto* tree = new QTreeWidget;
    tree->setHeaderLabels(heads);
    tree->setRootIsDecorated(false);
    tree->setUniformRowHeights(true);
    tree->setAlternatingRowColors(true);
    tree->setAccessibleName(name);
    tree->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    return tree;
}

void setText(QTreeWidgetItem* item, int column, const QString& text) {
    if (item->text(column) != text) {
        item->setText(column, text);
    }
}

} // namespace

MemoryPage::MemoryPage(QWidget* parent)
    : QWidget(parent), stations_(table({tr("WS"), tr("tube"), tr("mode"), tr("chamber"), tr("interlock"),
                                        tr("failsafe"), tr("sync"), tr("curve")},
                                       tr("Workstations"))),
      facts_(table({tr("Name"), tr("Value")}, tr("What a lesson can ask"))) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 8, 4);
    column->addWidget(stations_, 1);
    column->addWidget(facts_, 1);
    for (int number = 1; number <= kStations; ++number) {
        new QTreeWidgetItem(stations_);
    }
}

void MemoryPage::show(const simulator::Gauges& g, bool inLesson) {
    if (!isVisible()) {
        return;
    }
    for (int row = 0; row < kStations; ++row) {
        QTreeWidgetItem* const item = stations_->topLevelItem(row);
        const QString number = QString::number(row + 1);
        const bool chosen = row + 1 == g.workstation;
        setText(item, 0, chosen ? tr("%1 *").arg(number) : number);
        item->setData(0, Qt::AccessibleTextRole, chosen ? tr("%1, chosen").arg(number) : number);
        int column = 0;
        for (const int value : g.stations.at(static_cast<std::size_t>(row))) {
            setText(item, ++column, QString::number(value));
        }
    }
    for (const auto& [name, value] : simulator::factsOf(g)) {
        if (name.starts_with("ws")) {
            continue;
        }
        QTreeWidgetItem*& item = items_[name];
        if (item == nullptr) {
            item = new QTreeWidgetItem(facts_, {QString::fromStdString(name)});
        }
        const bool hidden = inLesson && std::ranges::find(kHidden, name) != kHidden.end();
        setText(item, 1, hidden ? tr("not shown in a lesson") : QString::number(value, 'g', 6));
    }
}

} // namespace desk
