#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include <QAbstractTableModel>

#include "Speech.h"
#include "tools/replay/Recordings.h"

namespace quillon {

/// The visits of the recordings, newest first. They are read one by one, as there may be many.
class VisitModel final : public QAbstractTableModel {
public:
    VisitModel(Recordings& recordings, const Speech& say, QObject* parent);

    /// From here on step() reads anew.
    void begin();
    /// Reads one visit, or plays one for its errors; false when there is nothing left to do.
    bool step();
    /// All visits are in the list.
    [[nodiscard]] bool isListed() const { return unread_ == 0; }

    [[nodiscard]] const RecordedVisit& visit(int row) const {
        return rows_.at(static_cast<std::size_t>(row)).visit;
    }
    [[nodiscard]] bool isRunning(int row) const { return rows_.at(static_cast<std::size_t>(row)).running; }
    /// Day and time of its begin, or its number.
    [[nodiscard]] QString when(int row) const;
    /// The row of the last visit; of the newest session where the generator never spoke; -1 for an empty
    /// list.
    [[nodiscard]] int lastVisit() const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row {
        RecordedVisit visit;
        bool running = false;
    };
    struct Errors {
        std::int64_t bytes;
        std::size_t count;
    };
    [[nodiscard]] QString cell(const Row& row, int column) const;
    [[nodiscard]] std::optional<std::size_t> errorsOf(const RecordedVisit& visit) const;
    [[nodiscard]] bool isWorthPlaying(const Row& row) const;
    void place(Row row);

    Recordings& recordings_;
    const Speech& say_;
    std::vector<Row> rows_;
    std::map<std::int64_t, Errors> errors_; ///< by the visit's number
    std::size_t unread_ = 0;                ///< sessions
    std::size_t placed_ = 0;                ///< rows that are read anew
};

} // namespace quillon
