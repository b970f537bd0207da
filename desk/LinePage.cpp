#include "desk/LinePage.h"

#include <array>

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace desk {

namespace {

constexpr std::size_t kMostLines = 500;
constexpr std::array kWidest{"0000.00", "machine", "TC048211"}; // time, sender, message
constexpr int kMargin = 14;

} // namespace

LinePage::LinePage(QWidget* parent)
    : QWidget(parent), polls_(new QCheckBox(tr("With the poll"))), table_(new QTreeWidget) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    auto* row = new QHBoxLayout;
    auto* copy = new QPushButton(tr("Copy as a scenario"));
    row->addWidget(polls_, 1);
    row->addWidget(copy);
    layout->addLayout(row);
    table_->setHeaderLabels({tr("Time"), tr("From"), tr("Message"), tr("Meaning")});
    table_->setRootIsDecorated(false);
    table_->setUniformRowHeights(true);
    table_->setAlternatingRowColors(true);
    table_->setAccessibleName(tr("Messages on the line, the newest last"));
    // Of a fixed width: columns that fit their contents look at every line for each new one.
    int column = 0;
    for (const char* widest : kWidest) {
        table_->setColumnWidth(column++, fontMetrics().horizontalAdvance(QLatin1String(widest)) + kMargin);
    }
    layout->addWidget(table_, 1);
    // It follows only while it stands at its end.
    QScrollBar* bar = table_->verticalScrollBar();
    connect(bar, &QScrollBar::valueChanged, this,
            [this, bar](int value) { follows_ = value == bar->maximum(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar](int, int end) {
        if (follows_) {
            bar->setValue(end);
        }
    });
    connect(polls_, &QCheckBox::toggled, this, &LinePage::showAll);
    connect(copy, &QPushButton::clicked, this,
            [this] { QGuiApplication::clipboard()->setText(asScenario()); });
}

void LinePage::add(qint64 ms, bool fromConsole, const QString& text, const QString& meaning) {
    entries_.push_back({ms, fromConsole, text, meaning, belongsToPoll(fromConsole, text)});
    const bool full = entries_.size() > kMostLines;
    if (full) {
        if (polls_->isChecked() || !entries_.front().poll) {
            delete table_->takeTopLevelItem(0);
        }
        entries_.pop_front();
    }
    append(entries_.back());
}

void LinePage::clear() {
    entries_.clear();
    table_->clear();
    lastPhase_.clear();
}

/// A question that is asked all the time, and an answer to it that says nothing new.
bool LinePage::belongsToPoll(bool fromConsole, const QString& text) {
    const bool phase = text.startsWith(QLatin1String("ST"));
    if (fromConsole) {
        return text == QLatin1String("ST") || text == QLatin1String("HU");
    }
    const bool known = phase && text == lastPhase_;
    if (phase) {
        lastPhase_ = text;
    }
    return known || text.startsWith(QLatin1String("HE"));
}

void LinePage::append(const Entry& entry) {
    if (entry.poll && !polls_->isChecked()) {
        return;
    }
    auto* item = new QTreeWidgetItem(table_, {QString::number(static_cast<double>(entry.ms) / 1000, 'f', 2),
                                              entry.fromConsole ? tr("console") : tr("machine"), entry.text,
                                              entry.meaning});
    item->setToolTip(3, entry.meaning);
}

void LinePage::showAll() {
    table_->clear();
    for (const Entry& each : entries_) {
        append(each);
    }
}

QString LinePage::asScenario() const {
    QString text;
    qint64 before = entries_.empty() ? 0 : entries_.front().ms;
    for (const Entry& each : entries_) {
        if (each.fromConsole) {
            text += QStringLiteral("# console: %1\n").arg(each.text);
            continue;
        }
        if (each.ms > before) {
            text += QStringLiteral("wait %1\n").arg(each.ms - before);
            before = each.ms;
        }
        text += QStringLiteral("msg %1\n").arg(each.text);
    }
    return text;
}

} // namespace desk
