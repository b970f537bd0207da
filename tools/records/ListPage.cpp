#include "ListPage.h"

#include <algorithm>

#include <QHeaderView>
#include <QScroller>

namespace quillon {

ListPage::ListPage(Recordings& recordings, const PageContext& context, Requests requests)
    : recordings_(recordings), context_(context), requests_(std::move(requests)),
      model_(recordings, context.say, this) {
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    addKeys(*page);
    addTable(*page);
    meaning_ = new QLabel(this);
    meaning_->setWordWrap(true);
    page->addWidget(meaning_);
    reading_.setInterval(0);
    connect(&reading_, &QTimer::timeout, this, [this] { readOn(); });
    setSticks({});
    model_.begin();
    reading_.start();
}

void ListPage::addKeys(QVBoxLayout& page) {
    const Speech& say = context_.say;
    saveKeys_ = new QHBoxLayout;
    page.addLayout(saveKeys_);
    auto* other = makeKey(say("sRecordsOtherPlace"), this, [this] {
        act([this](int row) { requests_.save(model_.visit(row), std::nullopt, withReport_->isChecked()); });
    });
    other->setObjectName(QStringLiteral("other"));
    withReport_ = makeToggle(say("sRecordsWithReport"), this, false, [](bool) {});
    withReport_->setObjectName(QStringLiteral("withReport"));
    saveKeys_->addWidget(other);
    saveKeys_->addWidget(withReport_);

    auto* keys = new QHBoxLayout;
    page.addLayout(keys);
    const auto add = [keys](const char* name, QPushButton* key) {
        key->setObjectName(QLatin1String(name));
        keys->addWidget(key, 1);
        return key;
    };
    add("report", makeKey(say("sRecordsReport"), this,
                          [this] { act([this](int row) { requests_.report(model_.visit(row)); }); }));
    add("traffic", makeKey(say("sRecordsTraffic"), this, [this] {
            act([this](int row) { requests_.traffic(model_.visit(row), model_.isRunning(row)); });
        }));
    compare_ = add("compare", makeKey(say("sRecordsCompare"), this, [this] { beginComparison(); }));
    compare_->setCheckable(true);
    switch_ = add("switch", makeToggle(say("sRecordsSwitch"), this, true, requests_.record));
}

void ListPage::addTable(QVBoxLayout& page) {
    table_ = new QTableView(this);
    table_->setObjectName(QStringLiteral("visits"));
    table_->setAccessibleName(context_.say("sRecordsVisit"));
    table_->setModel(&model_);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    table_->setShowGrid(false);
    table_->setTabKeyNavigation(false);
    table_->setWordWrap(false);
    table_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(context_.sizes.finger);
    QHeaderView& heads = *table_->horizontalHeader();
    heads.setSectionResizeMode(QHeaderView::ResizeToContents);
    heads.setSectionResizeMode(0, QHeaderView::Stretch);
    heads.setSectionsClickable(false);
    heads.setHighlightSections(false);
    QScroller::grabGesture(table_->viewport(), QScroller::TouchGesture);
    connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        marked_ = table_->hasFocus() || marked_;
        relabel();
    });
    connect(table_, &QTableView::activated, this, [this](const QModelIndex& index) { choose(index.row()); });
    page.addWidget(table_, 1);
}

void ListPage::readOn() {
    if (!model_.step()) {
        reading_.stop();
    }
    if (!marked_ && model_.isListed() && model_.lastVisit() >= 0) {
        table_->selectRow(model_.lastVisit());
    }
    relabel();
}

void ListPage::refresh() {
    if (isIdle() && recordings_.refresh()) {
        model_.begin();
        reading_.start();
    }
}

int ListPage::markedRow() const {
    const QModelIndexList marked = table_->selectionModel()->selectedRows();
    const QModelIndex current = table_->currentIndex();
    return marked.contains(current.siblingAtColumn(0)) ? current.row()
           : marked.isEmpty()                          ? -1
                                                       : marked.front().row();
}

void ListPage::setSticks(std::vector<Stick> sticks) {
    if (sticks == sticks_ && !stickKeys_.empty()) {
        return;
    }
    const bool same = std::ranges::equal(sticks, sticks_, {}, &Stick::path, &Stick::path);
    sticks_ = std::move(sticks);
    if (!same || stickKeys_.empty()) {
        const bool focused = std::ranges::any_of(stickKeys_, &QPushButton::hasFocus);
        for (QPushButton* key : std::exchange(stickKeys_, {})) {
            key->hide();
            key->deleteLater();
        }
        // Without a stick there is one key that says so.
        for (std::size_t i = 0; i < std::max<std::size_t>(sticks_.size(), 1); ++i) {
            QPushButton* key = makeKey({}, this, [this, i] {
                act([this, i](int row) {
                    requests_.save(model_.visit(row), sticks_.at(i), withReport_->isChecked());
                });
            });
            key->setObjectName(QStringLiteral("save%1").arg(i));
            key->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
            key->setEnabled(!sticks_.empty());
            QFont font = key->font();
            font.setBold(true);
            key->setFont(font);
            saveKeys_->insertWidget(static_cast<int>(i), key, 1);
            stickKeys_.push_back(key);
        }
        QWidget* first = this;
        for (QPushButton* key : stickKeys_) {
            setTabOrder(first, key);
            first = key;
        }
        if (focused || window()->focusWidget() == nullptr) {
            stickKeys_.front()->setFocus();
        }
    }
    relabel();
}

void ListPage::relabel() {
    const int row = markedRow();
    const bool last = row < 0 || row == model_.lastVisit();
    for (std::size_t i = 0; i < stickKeys_.size(); ++i) {
        QString words = context_.say("sRecordsNoStick");
        if (!sticks_.empty()) {
            const Stick& stick = sticks_.at(i);
            const QString place = stick.name + QStringLiteral(" (") +
                                  context_.say.with("sRecordsFree", Speech::size(stick.free)) + u')';
            words = last ? context_.say.with("sRecordsSaveLast", place)
                         : context_.say.with("sRecordsSaveThat", place, model_.when(row));
        }
        // A stick may have any name; the window is not to grow with it.
        QPushButton& key = *stickKeys_[i];
        key.setAccessibleName(words);
        key.setText(key.fontMetrics()
                        .elidedText(words, Qt::ElideRight,
                                    std::max(key.width() - context_.sizes.text, context_.sizes.finger))
                        .replace(u'&', QStringLiteral("&&")));
    }
}

void ListPage::resizeEvent(QResizeEvent* /*event*/) {
    QTimer::singleShot(0, this, [this] { relabel(); }); // when the keys have their places
}

void ListPage::setSwitch(bool records, const QString& meaning) {
    switch_->setChecked(records);
    meaning_->setText(meaning);
}

void ListPage::act(const std::function<void(int row)>& action) {
    giveUpChoice();
    const int row = markedRow();
    if (row < 0) {
        context_.tell(context_.say(model_.rowCount() == 0 ? RecordsTextName("sRecordsEmpty")
                                                          : RecordsTextName("sRecordsMarkOne")),
                      Outcome::Failed);
        return;
    }
    action(row);
}

bool ListPage::giveUpChoice() {
    compare_->setChecked(false);
    return std::exchange(comparedWith_, -1) >= 0;
}

void ListPage::beginComparison() {
    if (giveUpChoice()) {
        context_.tell({}, Outcome::Done);
        return;
    }
    const QModelIndexList marked = table_->selectionModel()->selectedRows();
    if (marked.size() == 2) {
        compareRows(marked[0].row(), marked[1].row());
        return;
    }
    act([this](int row) {
        comparedWith_ = row;
        compare_->setChecked(true);
        table_->setFocus();
        context_.tell(context_.say("sRecordsMarkTwo"), Outcome::Going);
    });
}

void ListPage::choose(int row) {
    const int other = comparedWith_;
    if (other >= 0 && row != other) {
        giveUpChoice();
        compareRows(other, row);
    }
}

void ListPage::compareRows(int first, int second) {
    // The newer ones stand above.
    requests_.compare(model_.visit(std::max(first, second)), model_.visit(std::min(first, second)));
}

} // namespace quillon
