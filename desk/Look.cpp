#include "desk/Look.h"

#include <array>

#include <QAccessible>
#include <QAccessibleWidget>
#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace desk {

namespace {

constexpr std::array kRanks{"off", "good", "on", "alarm"};

constexpr const char* kLook = R"(
desk--Lamp { padding: 3px; border-radius: 4px; font-weight: bold; }
desk--Lamp[rank="off"]   { background: #e6ebef; color: #46505a; border: 2px solid #a3adb6; }
desk--Lamp[rank="good"]  { background: #dcf1de; color: #0f4a20; border: 2px solid #17652d; }
desk--Lamp[rank="on"]    { background: #ffd54a; color: #14202b; border: 2px solid #8a5a00; }
desk--Lamp[rank="alarm"] { background: #b3161b; color: white;   border: 2px solid #6d0a0a; }
desk--News { color: #14324f; font-weight: bold; }
desk--News[trouble="true"] { color: #8e0f0f; }
)";

QPalette lightPalette() {
    QPalette palette(QColor(0xef, 0xef, 0xef));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xf2, 0xf5, 0xf8));
    palette.setColor(QPalette::Highlight, QColor(0x1f, 0x5f, 0x9e));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, QColor(0x60, 0x68, 0x70));
    return palette;
}

QAccessibleInterface* alertFor(const QString& kind, QObject* object) {
    auto* widget = qobject_cast<QWidget*>(object);
    return widget != nullptr && (kind == QLatin1String("desk::Lamp") || kind == QLatin1String("desk::News"))
               ? new QAccessibleWidget(widget, QAccessible::AlertMessage)
               : nullptr;
}

/// Its look follows a property that has changed.
void renew(QWidget& widget) {
    widget.style()->unpolish(&widget);
    widget.style()->polish(&widget);
}

/// For readers that listen to alerts, beside those that listen to names.
void alert(QLabel& label, const QString& words) {
    label.setText(words);
    label.setAccessibleName(QString(words).replace(QLatin1Char('\n'), QLatin1Char(' ')));
    if (!words.isEmpty()) {
        QAccessibleEvent event(&label, QAccessible::Alert);
        QAccessible::updateAccessibility(&event);
    }
}

} // namespace

void applyLook(QApplication& application) {
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("fusion")));
    QApplication::setPalette(lightPalette());
    application.setStyleSheet(QString::fromLatin1(kLook));
    QAccessible::installFactory(alertFor);
}

Lamp::Lamp(QWidget* parent) : QLabel(parent) {
    setAlignment(Qt::AlignCenter);
    setWordWrap(true);
}

void Lamp::tell(const QString& words, Rank rank) {
    const char* const name = kRanks.at(static_cast<std::size_t>(rank));
    if (property("rank").toString() != QLatin1String(name)) {
        setProperty("rank", name);
        renew(*this);
    }
    if (text() != words) {
        alert(*this, words);
    }
}

News::News(QWidget* parent) : QLabel(parent) {
    setWordWrap(true);
    setMinimumHeight(fontMetrics().height());
    QSizePolicy kept = sizePolicy();
    kept.setRetainSizeWhenHidden(true); // what stands below does not move
    setSizePolicy(kept);
    hide();
}

void News::tell(const QString& words, bool trouble) {
    if (text() != words) {
        setProperty("trouble", trouble);
        renew(*this);
        setVisible(!words.isEmpty());
        alert(*this, words);
    }
}

} // namespace desk
