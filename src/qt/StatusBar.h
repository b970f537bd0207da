#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <QTimer>
#include <QWidget>

#include "console/StatusLine.h"
#include "qt/Look.h"

namespace quillon {

inline constexpr int kWhyTime = 5000; ///< ms that the foot says why a press came to nothing

/// What has to be heard at once: the error that stands, what is waited for, why a press came to nothing. A
/// screen reader is told of it when it changes. It is a widget of its own for that.
class NewsField final : public QWidget {
public:
    explicit NewsField(QWidget* bar);

    /// An alarm keeps its place beside whatever else is told, as long as it stands.
    void tell(const StatusField& alarm, const StatusField& doing, const QString& why);
    [[nodiscard]] std::vector<Words> words() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// What it tells by its look: of the most urgent thing in it.
    [[nodiscard]] Tone tone() const;
    [[nodiscard]] bool alarms() const { return alarm_.tone == Tone::Alarm && !alarm_.words.empty(); }
    enum class Size : std::uint8_t { Row, Plain, Large };
    [[nodiscard]] Words wordsIn(const QRect& place, const QString& text, Size size) const;

    StatusField alarm_;
    StatusField doing_;
    QString why_;
};

/// The foot of the window, below all that the console lays out. Each field has its place, whatever it tells:
/// the generator, the line, X-rays, the news, and how far the work is. It takes no hand and no keyboard.
class StatusBar final : public QWidget {
public:
    StatusBar(const StatusLine& status, QWidget* window);

    /// Takes over what is to be told now.
    void sync();
    /// Why a key did nothing, for some seconds; an empty one ends what was told before.
    void tellWhy(const QString& words);
    /// A second of those that are counted has passed.
    std::function<void()> onSecond;
    [[nodiscard]] std::vector<Words> words() const;
    /// The generator, the line and X-rays in one text; what counts seconds is left out.
    [[nodiscard]] std::string fields() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Shown {
        StatusField generator;
        StatusField line;
        StatusField rays;
        QString howFar;
        Count count;
        bool operator==(const Shown&) const = default;
    };

    [[nodiscard]] QRect placeOf(int field) const;
    [[nodiscard]] const StatusField* fieldAt(int field) const;
    [[nodiscard]] QRect signPlace(int field) const;
    [[nodiscard]] QRect marksPlace() const;
    void paintField(QPainter& painter, int field) const;

    const StatusLine& status_;
    NewsField news_;
    QTimer second_;
    QTimer whyEnds_;
    QString why_;
    Shown shown_;
};

} // namespace quillon
