#pragma once

#include <functional>
#include <vector>

#include <QTimer>
#include <QWidget>

#include "console/StatusLine.h"
#include "qt/Look.h"

namespace quillon {

/// What is being done, in the middle of a working area that is empty.
class DoingSign final : public QWidget {
public:
    explicit DoingSign(QWidget* window);
    void tell(const QRect& place, const QString& text);
    [[nodiscard]] Words words() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString text_;
};

/// The foot of the window, below everything that the console lays out: whether the generator answers, what is
/// being done, and below the prompt how far it is. It takes no hand and no keyboard.
class SignStrip final : public QWidget {
public:
    /// Both outlive it; the console is the form's only control.
    SignStrip(const Control& form, const StatusLine& status, QWidget* window);

    /// Takes over what stands there now and where that is, and asks to be painted if it has changed.
    void sync(bool workIsEmpty);
    /// A second of those that are counted has passed.
    std::function<void()> onSecond;
    [[nodiscard]] std::vector<Words> words() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    struct Shown {
        QString left;
        QString right;
        bool silent = false;
        Count count;
        bool operator==(const Shown&) const = default;
    };

    [[nodiscard]] QRect placeOf(Twips left, Twips right) const;
    [[nodiscard]] int marksWidth() const;
    void paintSilence(QPainter& painter) const;
    void paintMarks(QPainter& painter) const;

    const Control& form_;
    const StatusLine& status_;
    QTimer second_;
    DoingSign doing_;
    Shown shown_;
};

} // namespace quillon
