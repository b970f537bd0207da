#pragma once

#include <QLabel>
#include <QString>

class QApplication;

namespace desk {

/// How much a lamp asks for attention. It is told by border, ground and words, never by a colour alone.
enum class Rank { Off, Good, On, Alarm };

/// Style and colours of the desk, whatever the system's are; screen readers hear of its lamps.
void applyLook(QApplication& application);

/// Words on a ground of their rank. A screen reader is told when they change.
class Lamp final : public QLabel {
    Q_OBJECT

public:
    explicit Lamp(QWidget* parent = nullptr);

    void tell(const QString& words, Rank rank);
};

/// A line that is told to screen readers as soon as it says something new.
class News final : public QLabel {
    Q_OBJECT

public:
    explicit News(QWidget* parent = nullptr);

    /// `trouble`: something did not go as it was meant.
    void tell(const QString& words, bool trouble = false);
};

} // namespace desk
