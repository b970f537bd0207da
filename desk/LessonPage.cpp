#include "desk/LessonPage.h"

#include <utility>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

namespace desk {

LessonPage::LessonPage(QWidget* parent)
    : QWidget(parent), choice_(new QComboBox), begin_(new QPushButton(tr("&Begin"))),
      console_(new QPushButton(tr("&Start the console"))), task_(new QTextBrowser), seen_(new QTreeWidget),
      score_(new QProgressBar), hint_(new QPushButton(tr("&Hint"))), news_(new News) {
    build();
    choice_->addItem(tr("No lesson: everything may be tried"));
    connect(begin_, &QPushButton::clicked, this, [this] {
        const int at = choice_->currentIndex();
        emit chosen(at < 1 ? nullptr : &lessons_.at(static_cast<std::size_t>(at) - 1));
    });
    connect(hint_, &QPushButton::clicked, this, &LessonPage::hintAsked);
    connect(console_, &QPushButton::clicked, this, &LessonPage::consoleAsked);
    begun(nullptr);
}

void LessonPage::build() {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(8, 4, 8, 4);
    column->setSpacing(4);
    choice_->setAccessibleName(tr("Lesson"));
    choice_->setAccessibleDescription(tr("Lesson")); // as its name a reader is told what is chosen
    choice_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    task_->setAccessibleName(tr("Task"));
    task_->setPlaceholderText(tr("Choose a lesson, or try everything that is on this desk."));
    task_->setTabChangesFocus(true);
    seen_->setHeaderLabels({tr("What the machine has seen"), tr("Points")});
    seen_->setAccessibleName(tr("What the machine has seen"));
    seen_->setRootIsDecorated(false);
    seen_->setWordWrap(true);
    seen_->header()->setStretchLastSection(false);
    seen_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    seen_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    score_->setRange(0, 100);
    score_->setFormat(tr("%v points left"));
    score_->setAccessibleName(tr("Points left"));
    console_->hide();
    auto* first = new QHBoxLayout;
    first->addWidget(choice_, 1);
    first->addWidget(begin_);
    auto* last = new QHBoxLayout;
    last->addWidget(score_, 1);
    last->addWidget(hint_);
    column->addLayout(first);
    column->addWidget(console_);
    column->addWidget(task_, 3);
    column->addWidget(seen_, 2);
    column->addWidget(news_);
    column->addLayout(last);
}

void LessonPage::offer(std::vector<simulator::Lesson> lessons) {
    lessons_ = std::move(lessons);
    for (const simulator::Lesson& lesson : lessons_) {
        choice_->addItem(QString::fromStdString(lesson.title));
    }
}

void LessonPage::begun(const simulator::LessonRun* run) {
    shownSteps_ = shownCosts_ = 0;
    seen_->clear();
    news_->tell({});
    if (run == nullptr) {
        task_->clear();
    } else {
        const simulator::Lesson& lesson = run->lesson();
        task_->setPlainText(QString::fromStdString(lesson.title + "\n\n" + lesson.task));
    }
    show(run);
}

void LessonPage::show(const simulator::LessonRun* run) {
    seen_->setVisible(run != nullptr);
    score_->setVisible(run != nullptr);
    hint_->setVisible(run != nullptr);
    if (run == nullptr) {
        return;
    }
    const simulator::Lesson& lesson = run->lesson();
    for (; shownCosts_ < run->costs().size(); ++shownCosts_) {
        const simulator::LessonRun::Cost& cost = run->costs()[shownCosts_];
        const QString words = QString::fromStdString(cost.words);
        addRow(cost.hint ? tr("? %1").arg(words) : tr("\u2717 %1").arg(words), QString::number(-cost.points));
    }
    for (; shownSteps_ < run->done(); ++shownSteps_) {
        addRow(tr("\u2713 %1").arg(QString::fromStdString(lesson.steps[shownSteps_].words)), {});
        if (run->solved() && shownSteps_ + 1 == run->done()) {
            const QString solved = tr("Solved, %1 points.").arg(run->score());
            news_->tell(solved);
            task_->setPlainText(solved + QStringLiteral("\n\n") + QString::fromStdString(lesson.explanation));
        }
    }
    score_->setValue(run->score());
    hint_->setEnabled(run->hasHint());
}

void LessonPage::addRow(const QString& words, const QString& points) {
    auto* item = new QTreeWidgetItem(seen_, {words, points});
    item->setToolTip(0, words);
    seen_->scrollToItem(item);
    news_->tell(points.isEmpty() ? words : tr("%1 (%2)").arg(words, points), !points.isEmpty());
}

void LessonPage::setConsoleClosed(bool closed) {
    console_->setVisible(closed);
    if (closed) {
        news_->tell(tr("The console has been closed."), true);
    }
}

} // namespace desk
