#pragma once

#include <deque>

#include <QCheckBox>
#include <QTreeWidget>
#include <QWidget>

namespace desk {

/// The last messages on the line, the newest below.
class LinePage final : public QWidget {
    Q_OBJECT

public:
    explicit LinePage(QWidget* parent = nullptr);

    void add(qint64 ms, bool fromConsole, const QString& text, const QString& meaning);
    void clear();
    /// What the machine said, as a scenario that says it again at the same intervals.
    [[nodiscard]] QString asScenario() const;
    [[nodiscard]] int shown() const { return table_->topLevelItemCount(); }

private:
    struct Entry {
        qint64 ms;
        bool fromConsole;
        QString text;
        QString meaning;
        bool poll;
    };

    [[nodiscard]] bool belongsToPoll(bool fromConsole, const QString& text);
    void append(const Entry& entry);
    void showAll();

    QCheckBox* polls_;
    QTreeWidget* table_;
    std::deque<Entry> entries_;
    QString lastPhase_;
    bool follows_ = true;
};

} // namespace desk
