#pragma once

#include <vector>

#include <QComboBox>
#include <QProgressBar>
#include <QPushButton>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QWidget>

#include "desk/Look.h"
#include "sim/lesson/Lesson.h"

namespace desk {

/// The lessons to choose from, and how far the one is that was begun.
class LessonPage final : public QWidget {
    Q_OBJECT

public:
    explicit LessonPage(QWidget* parent = nullptr);

    void offer(std::vector<simulator::Lesson> lessons);
    /// A lesson has begun; none: the machine is free.
    void begun(const simulator::LessonRun* run);
    void show(const simulator::LessonRun* run);
    /// The console was closed, or runs again.
    void setConsoleClosed(bool closed);
    [[nodiscard]] QString task() const { return task_->toPlainText(); }

signals:
    void chosen(const simulator::Lesson* lesson); ///< none: no lesson any more
    void hintAsked();
    void consoleAsked();

private:
    void build();
    void addRow(const QString& words, const QString& points);

    std::vector<simulator::Lesson> lessons_;
    QComboBox* choice_;
    QPushButton* begin_;
    QPushButton* console_;
    QTextBrowser* task_;
    QTreeWidget* seen_;
    QProgressBar* score_;
    QPushButton* hint_;
    News* news_;
    std::size_t shownSteps_ = 0;
    std::size_t shownCosts_ = 0;
};

} // namespace desk
