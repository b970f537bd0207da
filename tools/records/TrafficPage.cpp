#include "TrafficPage.h"

#include <algorithm>
#include <numeric>

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QScrollBar>
#include <QScroller>

namespace quillon {

namespace {

constexpr std::size_t kRows = 5000;
constexpr int kPace = 150; // ms

} // namespace

TrafficPage::TrafficPage(const PageContext& context, std::function<void()> back, Save save)
    : context_(context), save_(std::move(save)), model_(context.say, this) {
    const Speech& say = context.say;
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    auto* keys = new QHBoxLayout;
    page->addLayout(keys);
    const auto add = [keys](const char* name, QPushButton* key) {
        key->setObjectName(QLatin1String(name));
        keys->addWidget(key, 1);
        return key;
    };
    add("back", makeKey(say("sRecordsBack"), this, std::move(back)));
    withoutPoll_ = add("withoutPoll",
                       makeToggle(say("sRecordsWithoutPoll"), this, true, [this](bool) { applyFilter(); }));
    onlyErrors_ = add("onlyErrors",
                      makeToggle(say("sRecordsOnlyErrors"), this, false, [this](bool) { applyFilter(); }));
    add("copy", makeKey(say("sRecordsCopy"), this, [this] { copy(); }));
    add("saveRows", makeKey(say("sRecordsSaveRows"), this, [this] {
            std::vector<int> all(static_cast<std::size_t>(model_.rowCount()));
            std::iota(all.begin(), all.end(), 0);
            save_(name_, model_.text(all));
        }));
    add("toEnd", makeKey(say("sRecordsToEnd"), this, [this] { toEnd(); }));
    addTable(*page);
    note_ = new QLabel(this);
    page->addWidget(note_);
    reading_.setInterval(kPace);
    reading_.setTimerType(Qt::PreciseTimer);
    connect(&reading_, &QTimer::timeout, this, [this] { readOn(); });
}

void TrafficPage::addTable(QVBoxLayout& page) {
    table_ = new QTableView(this);
    table_->setObjectName(QStringLiteral("traffic"));
    table_->setAccessibleName(context_.say("sRecordsTraffic"));
    table_->setModel(&model_);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setShowGrid(false);
    table_->setTabKeyNavigation(false);
    table_->setWordWrap(false);
    table_->verticalHeader()->hide();
    // Rows are read, not touched; their meaning has the room that is left.
    constexpr int kSmallest = 10;
    const int letter = std::max(kSmallest, context_.sizes.text * 4 / 5);
    QFont font = table_->font();
    font.setPixelSize(letter);
    table_->setFont(font);
    table_->verticalHeader()->setDefaultSectionSize(letter * 9 / 5);
    QHeaderView& heads = *table_->horizontalHeader();
    heads.setSectionsClickable(false);
    heads.setHighlightSections(false);
    heads.setSectionResizeMode(TrafficModel::Meaning, QHeaderView::Stretch);
    const QFontMetrics metrics(table_->font());
    const QString direction = QStringLiteral("\u2190 ") + context_.say("sRecordsReceived");
    const QString fate = context_.say.with("sRecordsAfter", QStringLiteral("1000"));
    for (const auto& [column, widest] : {std::pair(TrafficModel::Time, QStringLiteral("00:00:00.000")),
                                         {TrafficModel::Since, QStringLiteral("00000")},
                                         {TrafficModel::Direction, direction},
                                         {TrafficModel::Frame, QStringLiteral("MX00000000")},
                                         {TrafficModel::Fate, fate}}) {
        heads.resizeSection(column, metrics.horizontalAdvance(widest) + letter * 2);
    }
    QScroller::grabGesture(table_->viewport(), QScroller::TouchGesture);
    connect(table_->verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
        atEnd_ = value == table_->verticalScrollBar()->maximum();
        unseen_ = atEnd_ ? 0 : unseen_;
        tellRows();
    });
    page.addWidget(table_, 1);
}

void TrafficPage::show(const Recordings& recordings, const RecordedVisit& visit, bool running) {
    live_ = running;
    name_ = QString::fromStdString(visitName(visit)) + QStringLiteral("-traffic");
    model_.begin(TrafficFeed(recordings.folder(), visit.sessions, kRows));
    toEnd();
    if (running) {
        reading_.start();
    }
    findChild<QPushButton*>(QStringLiteral("back"))->setFocus();
}

void TrafficPage::leave() {
    reading_.stop();
    model_.begin(std::nullopt);
}

void TrafficPage::readOn() {
    const bool atEnd = atEnd_;
    const int more = model_.read();
    if (more == 0) {
        return;
    }
    if (atEnd) {
        toEnd();
    } else {
        unseen_ += more;
    }
    tellRows();
}

void TrafficPage::toEnd() {
    table_->scrollToBottom();
    atEnd_ = true;
    unseen_ = 0;
    tellRows();
}

void TrafficPage::applyFilter() {
    model_.setFilter(withoutPoll_->isChecked(), onlyErrors_->isChecked());
    toEnd();
}

void TrafficPage::tellRows() {
    QStringList all{context_.say.with("sRecordsRows", QString::number(model_.count()),
                                      QString::number(model_.rowCount()))};
    if (live_) {
        all << (atEnd_ ? context_.say("sRecordsLive")
                       : context_.say.with("sRecordsStands", QString::number(unseen_)));
    }
    note_->setText(all.join(QStringLiteral("   ")));
}

std::vector<int> TrafficPage::markedRows() const {
    std::vector<int> rows;
    for (const QModelIndex& each : table_->selectionModel()->selectedRows()) {
        rows.push_back(each.row());
    }
    std::ranges::sort(rows);
    return rows;
}

/// What is marked, or all that is on show.
void TrafficPage::copy() {
    std::vector<int> rows = markedRows();
    if (rows.empty()) {
        rows.resize(static_cast<std::size_t>(model_.rowCount()));
        std::iota(rows.begin(), rows.end(), 0);
    }
    QApplication::clipboard()->setText(model_.text(rows));
    context_.tell(context_.say.with("sRecordsCopied", QString::number(rows.size())), Outcome::Done);
}

} // namespace quillon
