#pragma once

#include <functional>

#include <QLabel>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "Page.h"
#include "TrafficModel.h"
#include "tools/replay/Recordings.h"

namespace quillon {

/// What goes over the line, as it goes. It only reads.
class TrafficPage final : public QWidget {
public:
    /// Saving asks for a name without its ending, and the text.
    using Save = std::function<void(const QString& name, const QString& text)>;
    TrafficPage(const PageContext& context, std::function<void()> back, Save save);

    void show(const Recordings& recordings, const RecordedVisit& visit, bool running);
    /// Nothing is read any more.
    void leave();

private:
    void addTable(QVBoxLayout& page);
    void readOn();
    void toEnd();
    void copy();
    void applyFilter();
    void tellRows();
    [[nodiscard]] std::vector<int> markedRows() const;

    PageContext context_;
    Save save_;
    TrafficModel model_;
    QPushButton* withoutPoll_ = nullptr;
    QPushButton* onlyErrors_ = nullptr;
    QTableView* table_ = nullptr;
    QLabel* note_ = nullptr;
    QTimer reading_;
    QString name_;
    bool live_ = false;
    bool atEnd_ = true; ///< new rows are scrolled to
    int unseen_ = 0;    ///< rows that have come meanwhile
};

} // namespace quillon
