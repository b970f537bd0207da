#include "PlacePage.h"

#include <utility>

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QScroller>
#include <QStandardPaths>
#include <QVBoxLayout>

namespace quillon {

PlacePage::PlacePage(const PageContext& context) : path_(new QLabel(this)), folders_(new QListWidget(this)) {
    const Speech& say = context.say;
    auto* page = new QVBoxLayout(this);
    page->setContentsMargins(0, 0, 0, 0);
    auto* keys = new QHBoxLayout;
    page->addLayout(keys);
    here_ = makeKey(say("sRecordsHere"), this, [this] { finish(folder_); });
    here_->setObjectName(QStringLiteral("here"));
    keys->addWidget(here_, 1);
    keys->addWidget(makeKey(say("sRecordsUp"), this, [this] { enter(QFileInfo(folder_).path()); }), 1);
    keys->addWidget(makeKey(say("sRecordsCancel"), this, [this] { cancel(); }), 1);
    path_->setWordWrap(true);
    page->addWidget(path_);
    folders_->setAccessibleName(say("sRecordsChoose"));
    folders_->setObjectName(QStringLiteral("folders"));
    QScroller::grabGesture(folders_->viewport(), QScroller::TouchGesture);
    connect(folders_, &QListWidget::itemActivated, this,
            [this](const QListWidgetItem* item) { enter(item->data(Qt::UserRole).toString()); });
    page->addWidget(folders_, 1);
}

void PlacePage::choose(const std::vector<Stick>& sticks, std::function<void(const QString&)> chosen) {
    sticks_ = sticks;
    chosen_ = std::move(chosen);
    enter(sticks.empty() ? QDir::homePath() : sticks.front().path);
    here_->setFocus();
}

void PlacePage::cancel() {
    finish({});
}

void PlacePage::enter(const QString& folder) {
    const QDir directory(folder);
    folder_ = directory.absolutePath();
    path_->setText(QDir::toNativeSeparators(folder_));
    here_->setEnabled(QFileInfo(folder_).isWritable());
    folders_->clear();
    const auto add = [this](const QString& words, const QString& path) {
        auto* item = new QListWidgetItem(words, folders_);
        item->setData(Qt::UserRole, path);
    };
    for (const Stick& stick : sticks_) {
        if (stick.path != folder_) {
            add(QStringLiteral("\u21B7 ") + stick.name, stick.path);
        }
    }
    if (folder_ != QDir::homePath()) {
        add(QStringLiteral("\u21B7 ") + QDir::homePath(), QDir::homePath());
    }
    for (const QFileInfo& each : directory.entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name)) {
        add(each.fileName() + u'/', each.absoluteFilePath());
    }
    folders_->setCurrentRow(0);
}

void PlacePage::finish(const QString& folder) {
    if (const auto chosen = std::exchange(chosen_, nullptr)) {
        chosen(folder);
    }
}

} // namespace quillon
