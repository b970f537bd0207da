#pragma once

#include <functional>

#include <QPushButton>
#include <QString>
#include <QWidget>

#include "FingerStyle.h"
#include "Speech.h"

namespace quillon {

/// What has come of what was asked for.
enum class Outcome { Going, Done, Failed };

/// What the pages have in common.
struct PageContext {
    const Speech& say;
    const PanelSizes& sizes;
    std::function<void(const QString& words, Outcome outcome)> tell;
};

/// A key that a finger, Enter and the space bar press.
[[nodiscard]] inline QPushButton* makeKey(const QString& words, QWidget* parent,
                                          std::function<void()> press) {
    // An ampersand is one, and no letter that presses the key.
    auto* key = new QPushButton(QString(words).replace(QLatin1Char('&'), QStringLiteral("&&")), parent);
    key->setAutoDefault(true);
    QObject::connect(key, &QPushButton::clicked, key, std::move(press));
    return key;
}

/// A key that stays on: a filled dot tells it beside the colour.
[[nodiscard]] inline QPushButton* makeToggle(const QString& words, QWidget* parent, bool on,
                                             std::function<void(bool on)> change) {
    QPushButton* key = makeKey({}, parent, [] {});
    key->setCheckable(true);
    key->setAccessibleName(words);
    const auto sign = [key, words](bool checked) {
        key->setText((checked ? QStringLiteral("\u25CF ") : QStringLiteral("\u25CB ")) +
                     QString(words).replace(QLatin1Char('&'), QStringLiteral("&&")));
    };
    QObject::connect(key, &QPushButton::toggled, key, sign);
    QObject::connect(key, &QPushButton::clicked, key, std::move(change));
    key->setChecked(on);
    sign(on);
    return key;
}

} // namespace quillon
