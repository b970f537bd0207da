#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QHBoxLayout>
#include <QLabel>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

#include "Page.h"
#include "Sticks.h"
#include "VisitModel.h"

namespace quillon {

/// The visits, and what can be done with the one that is marked: at first the last.
class ListPage final : public QWidget {
public:
    /// What the keys ask for. A place is empty where one has to be chosen.
    struct Requests {
        std::function<void(const RecordedVisit&, const std::optional<Stick>&, bool withReport)> save;
        std::function<void(const RecordedVisit&)> report;
        std::function<void(const RecordedVisit&, bool running)> traffic;
        std::function<void(const RecordedVisit& earlier, const RecordedVisit& later)> compare;
        std::function<void(bool record)> record;
    };

    ListPage(Recordings& recordings, const PageContext& context, Requests requests);

    void setSticks(std::vector<Stick> sticks);
    /// Whether sessions are recorded, and what that means.
    void setSwitch(bool records, const QString& meaning);
    /// Looks whether there is something new.
    void refresh();
    /// All is read, as far as it is.
    [[nodiscard]] bool isIdle() const { return !reading_.isActive(); }
    /// Gives up waiting for the second visit of a comparison. Says whether it waited.
    bool giveUpChoice();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void addKeys(QVBoxLayout& page);
    void addTable(QVBoxLayout& page);
    void readOn();
    void relabel();
    void act(const std::function<void(int row)>& action);
    void beginComparison();
    void choose(int row);
    [[nodiscard]] int markedRow() const;
    void compareRows(int first, int second);

    Recordings& recordings_;
    PageContext context_;
    Requests requests_;
    VisitModel model_;
    QHBoxLayout* saveKeys_ = nullptr;
    QPushButton* withReport_ = nullptr;
    QPushButton* compare_ = nullptr;
    QPushButton* switch_ = nullptr;
    QLabel* meaning_ = nullptr;
    QTableView* table_ = nullptr;
    std::vector<Stick> sticks_;
    std::vector<QPushButton*> stickKeys_;
    QTimer reading_;
    bool marked_ = false;   ///< somebody has marked a row
    int comparedWith_ = -1; ///< the row that is to be compared with another
};

} // namespace quillon
