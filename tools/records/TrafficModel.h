#pragma once

#include <cstddef>
#include <deque>
#include <optional>
#include <vector>

#include <QAbstractTableModel>

#include "Speech.h"
#include "tools/replay/TrafficFeed.h"

namespace quillon {

/// The rows of a feed that are asked for.
class TrafficModel final : public QAbstractTableModel {
public:
    TrafficModel(const Speech& say, QObject* parent) : QAbstractTableModel(parent), say_(say) {}

    /// What a column tells.
    enum Column { Time, Since, Direction, Frame, Meaning, Fate, Columns };

    void begin(std::optional<TrafficFeed> feed);
    /// Reads on. How many rows have come to the end.
    int read();
    void setFilter(bool withoutPoll, bool onlyErrors);

    /// Of all, on show or not.
    [[nodiscard]] std::size_t count() const { return feed_ ? feed_->last() : 0; }
    /// Lines of cells parted by tabs.
    [[nodiscard]] QString text(const std::vector<int>& rows) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    [[nodiscard]] QString cell(std::size_t number, int column) const;
    [[nodiscard]] QString fateText(const quillon::Fate& fate) const;
    [[nodiscard]] bool passes(std::size_t number) const;
    void settle(std::size_t number);
    void fill();

    const Speech& say_;
    std::optional<TrafficFeed> feed_;
    std::deque<std::size_t> shown_; ///< numbers of rows, in order
    bool withoutPoll_ = true;
    bool onlyErrors_ = false;
};

} // namespace quillon
