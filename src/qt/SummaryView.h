#pragma once

#include <utility>
#include <vector>

#include <QDateTime>
#include <QWidget>

#include "qt/Look.h"
#include "ui/ControlHost.h"

namespace quillon {

class Exposures;
class GeneratorSummary;
struct ConsoleTexts;
struct Indicators;
struct SessionError;

/// The summary of the generator, on an area of the console without controls: all of it below the picture at
/// rest, the last errors below the generator's own keyboard. It takes no touch.
class SummaryView final : public QWidget {
public:
    SummaryView(const Indicators& indicators, const ControlHost& console, QWidget* parent);

    /// Goes where an area is free, or away.
    void settle();
    /// All that is written on it.
    [[nodiscard]] std::vector<Words> words() const;
    /// What the clock on the wall shows at the schedule's time zero.
    void setStart(QDateTime start) { start_ = std::move(start); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    /// Text, with what is drawn beside it.
    struct Piece {
        Words words;
        QRect bar = {};  ///< its outline; empty for none
        int percent = 0; ///< of the bar
        QRect sign = {}; ///< of an alarm
    };

    [[nodiscard]] QRect freeArea() const;
    [[nodiscard]] Words line(const QRect& place, const std::string& text, bool strong = true) const;
    [[nodiscard]] std::vector<Piece> pieces() const;
    void addState(std::vector<Piece>& all, QRect place) const;
    void addExposure(std::vector<Piece>& all, QRect place) const;
    void addErrors(std::vector<Piece>& all, QRect place) const;
    void addError(std::vector<Piece>& all, QRect row, const SessionError& error) const;

    const GeneratorSummary& summary_;
    const Exposures& exposures_;
    const ConsoleTexts& texts_;
    const ControlHost& console_;
    QDateTime start_;
    int row_ = 1; ///< the height of a line
};

} // namespace quillon
