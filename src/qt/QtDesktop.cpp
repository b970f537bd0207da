#include "qt/QtDesktop.h"

#include <QApplication>
#include <QEventLoop>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QWindow>

#include "qt/Convert.h"
#include "qt/FormWindow.h"
#include "qt/Look.h"

namespace quillon {

namespace {

constexpr QSize kButtonSize{120, 52}; // for a finger

/// A flat sign in the console's own colours.
QPixmap signOf(QMessageBox::Icon icon) {
    constexpr int kEdge = 52;
    QPixmap sign(kEdge, kEdge);
    sign.fill(Qt::transparent);
    QPainter painter(&sign);
    const bool critical = icon == QMessageBox::Critical;
    paintPlate(painter, sign.rect(), QColor::fromRgb(critical ? kAlarmInk : kStrongEdge), Qt::transparent, 0,
               critical ? 6 : kEdge / 2.0);
    painter.setPen(QColor::fromRgb(kField));
    const char* letter = critical ? "!" : icon == QMessageBox::Question ? "?" : "i";
    paintText(painter, sign.rect(), QString::fromLatin1(letter), consoleFont(24, true), Qt::AlignCenter);
    return sign;
}

/// Without a letter that presses a button unasked, whoever wrote the words.
void fitForFingers(QMessageBox& box, const QtDesktop::ButtonWords& words) {
    const std::pair<QMessageBox::StandardButton, std::string_view> all[]{
        {QMessageBox::Yes, words.yes}, {QMessageBox::No, words.no}, {QMessageBox::Ok, words.ok}};
    for (const auto& [which, text] : all) {
        if (QAbstractButton* button = box.button(which)) {
            button->setMinimumSize(kButtonSize);
            button->setIcon({});
            button->setText(toQt(text).replace(QLatin1Char('&'), QStringLiteral("&&")));
        }
    }
}

} // namespace

int QtDesktop::screenWidth() const {
    return QGuiApplication::primaryScreen()->availableGeometry().width();
}

int QtDesktop::screenHeight() const {
    // The foot of the window is not the form's.
    return FormWindow::formHeight(QGuiApplication::primaryScreen()->availableGeometry().height());
}

int QtDesktop::twipsPerPixelX() const {
    return kTwipsPerPixel;
}

int QtDesktop::twipsPerPixelY() const {
    return kTwipsPerPixel;
}

void QtDesktop::message(BoxKind kind, std::string_view title, std::string_view text) {
    run(kind == BoxKind::Critical ? QMessageBox::Critical : QMessageBox::Information, title, text,
        QMessageBox::Ok);
}

bool QtDesktop::ask(std::string_view title, std::string_view text) {
    return run(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No) == QMessageBox::Yes;
}

int QtDesktop::run(QMessageBox::Icon icon, std::string_view title, std::string_view text,
                   QMessageBox::StandardButtons buttons) {
    QWidget* parent = window_ != nullptr && window_->isVisible() ? window_.data() : nullptr;
    QMessageBox box(QMessageBox::NoIcon, toQt(title), toQtLines(text), buttons, parent);
    box.setTextFormat(Qt::PlainText); // what a file holds is shown as it is
    box.setIconPixmap(signOf(icon));
    box.setWindowModality(Qt::ApplicationModal);
    box.setWindowFlag(Qt::WindowStaysOnTopHint, topMost_);
    box.setFont(consoleFont(13));
    if (buttons.testFlag(QMessageBox::No)) {
        box.setDefaultButton(QMessageBox::No);
    }
    fitForFingers(box, words_ ? words_() : ButtonWords{"Yes", "No", "OK"});

    if (f2_) {
        QObject::connect(new QShortcut(QKeySequence(Qt::Key_F2), &box), &QShortcut::activated, f2_);
    }

    // A box that comes while one is up waits in the queue. Its own loop runs inside the other's, so the calls
    // return in the reverse order, each with its own answer.
    QEventLoop loop;
    QObject::connect(&box, &QDialog::finished, &loop, [this, &loop] {
        boxes_.pop_front();
        if (!boxes_.empty()) {
            boxes_.front()->show();
        }
        loop.quit();
    });
    boxes_.push_back(&box);
    if (boxes_.size() == 1) {
        box.show();
    }
    loop.exec();
    std::erase(boxes_, &box); // the application ended while it was up
    return box.result();
}

void QtDesktop::setTopMost(bool topMost) {
    topMost_ = topMost;
    // The platform's window is told: the widget would hide and come back for the same.
    if (window_ != nullptr && window_->windowHandle() != nullptr) {
        window_->windowHandle()->setFlag(Qt::WindowStaysOnTopHint, topMost);
        if (topMost) {
            window_->raise();
        }
    }
}

void QtDesktop::beep() {
    QApplication::beep();
}

} // namespace quillon
