#include "VisitModel.h"

#include <algorithm>
#include <array>

#include "tools/visit/VisitPlayer.h"

namespace quillon {

namespace {

/// What takes longer to play than a list is worth.
constexpr std::int64_t kPlayedRunning = 300'000; // bytes
constexpr std::int64_t kPlayedPacked = 1'000'000;

// clang-format off
constexpr std::array<RecordsTextName, 6> kHeads{
    "sRecordsVisit", "sRecordsFrom", "sRecordsTo", "sRecordsKeys", "sRecordsErrors", "sRecordsSize",
};
// clang-format on
constexpr int kFirstNumber = 3; // of the columns with numbers

} // namespace

VisitModel::VisitModel(Recordings& recordings, const Speech& say, QObject* parent)
    : QAbstractTableModel(parent), recordings_(recordings), say_(say) {}

void VisitModel::begin() {
    unread_ = recordings_.sessionCount();
    placed_ = 0;
}

bool VisitModel::step() {
    if (unread_ > 0) {
        Row row{recordings_.visitBefore(unread_)};
        row.running = recordings_.isRunning(row.visit);
        unread_ -= row.visit.sessions.size();
        place(std::move(row));
    }
    if (unread_ > 0) {
        return true;
    }
    if (placed_ < rows_.size()) {
        beginRemoveRows({}, static_cast<int>(placed_), static_cast<int>(rows_.size()) - 1);
        rows_.resize(placed_);
        endRemoveRows();
    }
    const auto row = std::ranges::find_if(rows_, [this](const Row& each) { return isWorthPlaying(each); });
    if (row == rows_.end()) {
        return false;
    }
    const Visit played = visitOf(recordings_.textOf(row->visit).text);
    errors_[row->visit.number()] = {row->visit.bytes(), played.errors.size()};
    const int at = static_cast<int>(row - rows_.begin());
    emit dataChanged(index(at, 0), index(at, columnCount() - 1));
    return true;
}

void VisitModel::place(Row row) {
    const auto number = [this] { return rows_[placed_].visit.number(); };
    while (placed_ < rows_.size() && number() > row.visit.number()) {
        beginRemoveRows({}, static_cast<int>(placed_), static_cast<int>(placed_));
        rows_.erase(rows_.begin() + static_cast<std::ptrdiff_t>(placed_));
        endRemoveRows();
    }
    const int at = static_cast<int>(placed_);
    if (placed_ < rows_.size() && number() == row.visit.number()) {
        rows_[placed_] = std::move(row);
        emit dataChanged(index(at, 0), index(at, columnCount() - 1));
    } else {
        beginInsertRows({}, at, at);
        rows_.insert(rows_.begin() + at, std::move(row));
        endInsertRows();
    }
    ++placed_;
}

bool VisitModel::isWorthPlaying(const Row& row) const {
    return row.visit.spoke && !errorsOf(row.visit) &&
           row.visit.bytes() < (row.running ? kPlayedRunning : kPlayedPacked);
}

std::optional<std::size_t> VisitModel::errorsOf(const RecordedVisit& visit) const {
    const auto known = errors_.find(visit.number());
    return known != errors_.end() && known->second.bytes == visit.bytes() ? std::optional(known->second.count)
                                                                          : std::nullopt;
}

QString VisitModel::when(int row) const {
    const RecordedVisit& visit = this->visit(row);
    return visit.begun ? QString::fromStdString(dateText(*visit.begun) + " " +
                                                timeOfDayText(*visit.begun).substr(0, 5))
                       : say_.with("sRecordsNumber", QString::number(visit.number()));
}

int VisitModel::lastVisit() const {
    const auto spoke = std::ranges::find_if(rows_, [](const Row& row) { return row.visit.spoke; });
    return spoke != rows_.end() ? static_cast<int>(spoke - rows_.begin()) : rows_.empty() ? -1 : 0;
}

int VisitModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int VisitModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(kHeads.size());
}

QVariant VisitModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::DisplayRole) {
        return cell(rows_.at(static_cast<std::size_t>(index.row())), index.column());
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(Qt::AlignVCenter |
                                   (index.column() >= kFirstNumber ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
}

QVariant VisitModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(Qt::AlignVCenter |
                                   (section >= kFirstNumber ? Qt::AlignRight : Qt::AlignLeft));
    }
    return role == Qt::DisplayRole ? say_(kHeads.at(static_cast<std::size_t>(section))) : QVariant();
}

QString VisitModel::cell(const Row& row, int column) const {
    const RecordedVisit& visit = row.visit;
    const auto minute = [](const std::optional<WallTime>& time) {
        return time ? QString::fromStdString(timeOfDayText(*time).substr(0, 5)) : QStringLiteral("\u2013");
    };
    switch (column) {
    case 0: {
        QString day = visit.begun ? QString::fromStdString(dateText(*visit.begun))
                                  : say_.with("sRecordsNumber", QString::number(visit.number()));
        const auto note = [&](bool holds, RecordsTextName words) {
            day += holds ? QLatin1Char(' ') + say_(words) : QString();
        };
        note(row.running, "sRecordsNow");
        note(!visit.spoke, "sRecordsSilent");
        note(visit.gaps > 0, "sRecordsGaps");
        return day;
    }
    case 1:
        return minute(visit.begun);
    case 2:
        return row.running ? QStringLiteral("\u2013") : minute(visit.ended);
    case 3:
        return QString::number(visit.presses);
    case 4: {
        // What a running session has added is counted at once, where it is counted at all.
        const auto known = errors_.find(visit.number());
        const bool holds = known != errors_.end() && (errorsOf(visit) || isWorthPlaying(row));
        return holds         ? QString::number(known->second.count)
               : visit.spoke ? QStringLiteral("\u2013")
                             : QStringLiteral("0");
    }
    default:
        return Speech::size(visit.bytes());
    }
}

} // namespace quillon
