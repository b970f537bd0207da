#include "qt/SummaryView.h"

#include <algorithm>
#include <string>

#include <QFontMetrics>

#include "base/Numbers.h"
#include "console/ConsoleTexts.h"
#include "console/Exposures.h"
#include "console/GeneratorSummary.h"
#include "console/Indicators.h"
#include "console/layout/ConsoleControls.h"
#include "qt/Art.h"
#include "qt/Convert.h"

namespace quillon {

namespace {

constexpr int kRows = 6;       ///< of the place at rest
constexpr int kInset = 14;     ///< of what is written, from the plate's edge
constexpr double kState = 0.5; ///< the left part of the place, which tells how it stands
constexpr double kSubject = 0.4;
constexpr double kBar = 0.6;
constexpr int kSmallestLetters = 9;

} // namespace

SummaryView::SummaryView(const Indicators& indicators, const ControlHost& console, QWidget* parent)
    : QWidget(parent), summary_(indicators.summary), exposures_(indicators.exposures),
      texts_(indicators.texts), console_(console) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    lower();
    hide();
}

QRect SummaryView::freeArea() const {
    const Control* picture = console_.find("imgQuillonConsole");
    const Control* keyboard = console_.find("fraTorvaneSerial");
    if (picture == nullptr || keyboard == nullptr) {
        return {};
    }
    QRect background = toPixels(keyboard->place());
    if (keyboard->visible()) {
        const int foot =
            toPixels({0, 0, 0,
                      toInt32(static_cast<double>(console_.height()) * kConsoleFoot / kConsoleDesignHeight)})
                .height();
        const bool worthIt =
            summary_.errorCount() > 0 || exposures_.count() > 0; // the keyboard tells the rest
        background = QRect(background.left(), background.bottom() + 3, background.width(),
                           worthIt ? foot - background.bottom() - 3 : 0);
    } else if (picture->visible()) {
        const QRect above = toPixels(picture->place());
        background.setTop(above.bottom() + 6);
        background.setLeft(above.left());
        background.setRight(above.right());
    } else {
        return {};
    }
    const bool taken =
        std::any_of(console_.stack().begin(), console_.stack().end(), [&background](const Control* control) {
            return control->visible() && toPixels(control->place()).intersects(background);
        });
    return taken ? QRect() : background;
}

void SummaryView::settle() {
    const QRect background = freeArea();
    setVisible(!background.isEmpty());
    if (!background.isEmpty() && background != geometry()) {
        setGeometry(background);
        row_ = console_.at("fraTorvaneSerial").visible() ? background.height()
                                                         : (background.height() - kInset) / kRows;
    }
}

Words SummaryView::line(const QRect& place, const std::string& text, bool strong) const {
    QFont font = consoleFont(1, strong);
    font.setPixelSize(std::clamp(row_ == height() ? row_ / 3 : row_ / 2, 10, 22));
    return {place,
            toQtLines(text),
            font,
            QColor::fromRgb(strong ? kInk : kMutedInk),
            QColor::fromRgb(kQuietFace),
            Qt::AlignVCenter | Qt::AlignLeft};
}

void SummaryView::addState(std::vector<Piece>& all, QRect place) const {
    const int subject = static_cast<int>(place.width() * kSubject);
    std::vector<SummaryLine> lines = summary_.lines();
    lines.pop_back(); // the errors have a part of their own
    for (const SummaryLine& row : lines) {
        QRect state(place.left() + subject, place.top(), place.width() - subject, row_);
        Piece piece{line(state, row.state)};
        if (row.percent >= 0) {
            piece.percent = row.percent;
            piece.bar =
                QRect(state.left(), state.top() + row_ / 4, static_cast<int>(state.width() * kBar), row_ / 2);
            state.setLeft(piece.bar.right() + row_ / 4);
            piece.words = line(state, row.state);
        } else if (row.alarm) {
            // What stands in the way may be much: it has all rows below.
            state = QRect(place.left(), place.top() + row_, place.width(), place.height() - row_);
            piece.sign = QRect(state.left(), state.top() + row_ / 4, row_ / 2, row_ / 2);
            piece.words.place = state.adjusted(row_ * 3 / 4, row_ / 4, 0, 0);
            piece.words.alignment = Qt::AlignTop | Qt::AlignLeft;
            piece.words.ink = QColor::fromRgb(kAlarmInk);
        }
        if (row.old && !row.alarm) {
            piece.words.font.setItalic(true);
            piece.words.ink = QColor::fromRgb(kMutedInk);
        }
        all.push_back({line(QRect(place.left(), place.top(), subject - row_ / 4, row_), row.subject, false)});
        place.setTop(piece.words.place.bottom() + 1);
        all.push_back(std::move(piece));
    }
}

void SummaryView::addError(std::vector<Piece>& all, QRect row, const SessionError& error) const {
    const QString clock = start_.addMSecs(error.at).time().toString(QStringLiteral("hh:mm"));
    const auto add = [&](const std::string& text, bool strong, int letters) {
        Words words = line(row, text, strong);
        const int wide = letters > 0 ? QFontMetrics(words.font).averageCharWidth() * letters : row.width();
        words.place.setWidth(wide);
        row.setLeft(row.left() + wide);
        all.push_back({std::move(words)});
    };
    add(clock.toStdString(), false, 8);
    add(error.code > 0 ? decimalText(error.code) : "", true, 4);
    add(error.words, false, 0);
    Words& last = all.back().words;
    if (const Fit fit = fitWords(last); !fit.whole || fit.font.pixelSize() < kSmallestLetters) {
        // As much of it as there is room for.
        last.text = QFontMetrics(last.font).elidedText(last.text, Qt::ElideRight, last.place.width());
    }
}

void SummaryView::addExposure(std::vector<Piece>& all, QRect place) const {
    const SessionExposure& exposure = exposures_.last().front();
    const QString clock = start_.addMSecs(exposure.at).time().toString(QStringLiteral("hh:mm:ss"));
    QRect row(place.left(), place.top(), place.width(), row_);
    const auto add = [&](const std::string& text, bool strong) {
        Words words = line(row, text, strong);
        words.place.setWidth(
            std::min(row.width(), QFontMetrics(words.font).horizontalAdvance(words.text) + row_ / 2));
        row.setLeft(words.place.right());
        all.push_back({std::move(words)});
    };
    add(ConsoleTexts::filled(texts_.sExposuresMade, {exposures_.count()}), true);
    add(clock.toStdString(), false);
    add(exposure.values, true);
}

void SummaryView::addErrors(std::vector<Piece>& all, QRect place) const {
    const bool oneRow = place.height() < 2 * row_;
    QRect row(place.left(), place.top(), place.width(), row_);
    const SummaryLine errors = summary_.lines().back();
    Words heading = line(row, errors.subject + "   " + errors.state, summary_.errorCount() > 0);
    if (oneRow) {
        heading.place.setWidth(QFontMetrics(heading.font).horizontalAdvance(heading.text) + row_);
        row.setLeft(heading.place.right());
    } else {
        row.translate(0, row_);
    }
    all.push_back({std::move(heading)});
    for (const SessionError& error : summary_.errors()) {
        addError(all, row, error);
        row.translate(0, row_);
        if (oneRow) {
            return;
        }
    }
}

std::vector<SummaryView::Piece> SummaryView::pieces() const {
    std::vector<Piece> all;
    QRect place = rect().adjusted(kInset, 0, -kInset, 0);
    if (place.height() < 2 * row_) {
        if (exposures_.count() > 0) {
            const int half = summary_.errorCount() > 0 ? place.width() / 2 : place.width();
            addExposure(all, QRect(place.left(), place.top(), half, place.height()));
            place.setLeft(place.left() + half);
        }
        if (summary_.errorCount() > 0) {
            addErrors(all, place);
        }
        return all;
    }
    const int state = static_cast<int>(place.width() * kState);
    const QRect inner = place.adjusted(0, kInset / 2, 0, -kInset / 2);
    addState(all, QRect(inner.left(), inner.top(), state - kInset, inner.height()));
    addErrors(all, QRect(inner.left() + state + kInset, inner.top(), inner.width() - state - kInset,
                         inner.height()));
    return all;
}

std::vector<Words> SummaryView::words() const {
    std::vector<Words> all;
    if (isVisibleTo(parentWidget())) {
        for (Piece& piece : pieces()) {
            all.push_back(std::move(piece.words));
        }
    }
    return all;
}

void SummaryView::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    paintPlate(painter, rect(), QColor::fromRgb(kQuietFace), Qt::transparent, 0, 8);
    for (const Piece& piece : pieces()) {
        if (!piece.bar.isEmpty()) {
            paintPlate(painter, piece.bar, QColor::fromRgb(kField), QColor::fromRgb(kEdge), 1, 3);
            QRectF filled = QRectF(piece.bar).adjusted(2, 2, -2, -2);
            filled.setWidth(filled.width() * std::clamp(piece.percent, 0, 100) / 100);
            painter.fillRect(filled, QColor::fromRgb(kStrongEdge));
        }
        if (!piece.sign.isEmpty()) {
            paintArt(painter, "alarm", piece.sign, piece.words.ink);
        }
        paintWords(painter, piece.words);
    }
    if (height() >= 2 * row_) {
        const int middle = kInset + static_cast<int>((width() - 2 * kInset) * kState);
        painter.fillRect(QRect(middle, kInset, 1, height() - 2 * kInset), QColor::fromRgb(kFaintEdge));
    }
}

} // namespace quillon
