#include "TrafficModel.h"

#include <algorithm>
#include <array>

#include <QBrush>
#include <QColor>

#include "qt/Look.h"

namespace quillon {

namespace {

// clang-format off
constexpr std::array<RecordsTextName, TrafficModel::Columns> kHeads{
    "sRecordsTime", "sRecordsSince", "sRecordsDirection", "sRecordsFrame", "sRecordsWhat", "sRecordsFate",
};

struct DirectionLook {
    Entry::Kind kind;
    char16_t arrow;
    RecordsTextName words;
};
constexpr std::array kDirections{
    DirectionLook{Entry::Kind::Sent,     u'\u2192', "sRecordsSent"},
    DirectionLook{Entry::Kind::Lost,     u'\u21F8', "sRecordsLost"},
    DirectionLook{Entry::Kind::Received, u'\u2190', "sRecordsReceived"},
    DirectionLook{Entry::Kind::Operator, u'\u25A1', "sRecordsPressed"},
    DirectionLook{Entry::Kind::Note,     u'\u2022', "sRecordsNoted"},
};
// clang-format on

bool isFrame(const TrafficRow& row) {
    return row.kind != Entry::Kind::Operator && row.kind != Entry::Kind::Note;
}

} // namespace

void TrafficModel::begin(std::optional<TrafficFeed> feed) {
    feed_ = std::move(feed);
    if (feed_) {
        feed_->read();
    }
    fill();
}

void TrafficModel::fill() {
    beginResetModel();
    shown_.clear();
    for (std::size_t number = feed_ ? feed_->first() : 1; feed_ && number <= feed_->last(); ++number) {
        if (passes(number)) {
            shown_.push_back(number);
        }
    }
    endResetModel();
}

void TrafficModel::setFilter(bool withoutPoll, bool onlyErrors) {
    withoutPoll_ = withoutPoll;
    onlyErrors_ = onlyErrors;
    fill();
}

bool TrafficModel::passes(std::size_t number) const {
    const bool wrong = feed_->row(number).isWrong();
    return onlyErrors_ ? wrong : wrong || !withoutPoll_ || !feed_->isPoll(number);
}

int TrafficModel::read() {
    if (!feed_) {
        return 0;
    }
    const std::vector<std::size_t> changed = feed_->read();
    const auto gone = std::ranges::lower_bound(shown_, feed_->first()) - shown_.begin();
    if (gone > 0) {
        beginRemoveRows({}, 0, static_cast<int>(gone) - 1);
        shown_.erase(shown_.begin(), shown_.begin() + gone);
        endRemoveRows();
    }
    const std::size_t last = shown_.empty() ? 0 : shown_.back();
    for (const std::size_t number : changed) {
        settle(number);
    }
    return static_cast<int>(shown_.end() - std::ranges::upper_bound(shown_, last));
}

void TrafficModel::settle(std::size_t number) {
    const auto place = std::ranges::lower_bound(shown_, number);
    const int row = static_cast<int>(place - shown_.begin());
    const bool present = place != shown_.end() && *place == number;
    if (!passes(number)) {
        if (present) {
            beginRemoveRows({}, row, row);
            shown_.erase(place);
            endRemoveRows();
        }
    } else if (present) {
        emit dataChanged(index(row, 0), index(row, Columns - 1));
    } else {
        beginInsertRows({}, row, row);
        shown_.insert(place, number);
        endInsertRows();
    }
}

int TrafficModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

int TrafficModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Columns;
}

QVariant TrafficModel::data(const QModelIndex& index, int role) const {
    const std::size_t number = shown_.at(static_cast<std::size_t>(index.row()));
    switch (role) {
    case Qt::DisplayRole:
        return cell(number, index.column());
    case Qt::ToolTipRole:
        return index.column() >= Frame ? cell(number, index.column()) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(Qt::AlignVCenter |
                                   (index.column() == Since ? Qt::AlignRight : Qt::AlignLeft));
    case Qt::ForegroundRole:
        return feed_->row(number).isWrong() ? QBrush(QColor::fromRgb(kAlarmInk)) : QVariant();
    default:
        return {};
    }
}

QVariant TrafficModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant::fromValue(Qt::AlignVCenter | (section == Since ? Qt::AlignRight : Qt::AlignLeft));
    }
    return role == Qt::DisplayRole ? say_(kHeads.at(static_cast<std::size_t>(section))) : QVariant();
}

QString TrafficModel::cell(std::size_t number, int column) const {
    const TrafficRow& row = feed_->row(number);
    switch (column) {
    case Time: {
        const auto wall = feed_->timeOf(number);
        // Without the PC's clock it is the time since the start.
        return wall       ? QString::fromStdString(isoText(*wall).substr(11, 12))
               : row.time ? QString::number(static_cast<double>(*row.time) / 1000, 'f', 3)
                          : QString();
    }
    case Since: {
        const auto since = feed_->since(number);
        return since ? QString::number(*since) : QString();
    }
    case Direction: {
        const auto& look = *std::ranges::find(kDirections, row.kind, &DirectionLook::kind);
        return QChar(look.arrow) + QStringLiteral(" ") + say_(look.words);
    }
    // What is no frame has room beside it.
    case Frame:
        return isFrame(row) ? QString::fromStdString(printable(row.text)) : QString();
    case Meaning:
        return QString::fromStdString(printable(isFrame(row) ? row.meaning : row.text));
    default: {
        QStringList all;
        for (const quillon::Fate& fate : row.fates) {
            all << fateText(fate);
        }
        return all.join(QStringLiteral(", "));
    }
    }
}

QString TrafficModel::fateText(const quillon::Fate& fate) const {
    using FateKind = quillon::Fate::Kind;
    const QString ms = fate.number ? QString::number(*fate.number) : QString();
    switch (fate.kind) {
    case FateKind::Repeats:
        return say_.with("sRecordsRepeat", ms);
    case FateKind::Acknowledged:
        return fate.number ? say_.with("sRecordsAfter", ms) : say_("sRecordsAcknowledged");
    case FateKind::Unanswered:
        return say_("sRecordsUnanswered");
    case FateKind::GivenUp:
        return say_("sRecordsGivenUp");
    case FateKind::NotSent:
        return say_("sRecordsNotTaken");
    case FateKind::Acknowledgement:
        return say_.with("sRecordsAnswers",
                         fate.other >= feed_->first()
                             ? QString::fromStdString(printable(feed_->row(fate.other).text))
                             : QStringLiteral("\u2013"));
    case FateKind::Stray:
        break;
    }
    return say_("sRecordsStray");
}

QString TrafficModel::text(const std::vector<int>& rows) const {
    QString text;
    for (const int row : rows) {
        QStringList cells;
        for (int column = 0; column < Columns; ++column) {
            cells << cell(shown_.at(static_cast<std::size_t>(row)), column);
        }
        text += cells.join(u'\t') + u'\n';
    }
    return text;
}

} // namespace quillon
