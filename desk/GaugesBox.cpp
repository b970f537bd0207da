#include "desk/GaugesBox.h"

#include <algorithm>
#include <cmath>

#include <QFormLayout>

namespace desk {

namespace {

using simulator::Phase;

constexpr int kFull = 1000;

QString number(double value) {
    return QString::number(value, 'g', 6);
}

QProgressBar* gauge(int full) {
    auto* bar = new QProgressBar;
    bar->setRange(0, full);
    return bar;
}

/// A line that never makes the window wider.
QLabel* line() {
    auto* label = new QLabel;
    label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    return label;
}

void setText(QLabel* label, const QString& words) {
    if (label->text() != words) {
        label->setText(words);
    }
}

} // namespace

GaugesBox::GaugesBox(QWidget* parent)
    : QGroupBox(tr("Gauges"), parent), exposure_(gauge(kFull)), heat_(gauge(100)), values_(line()),
      counters_(line()), console_(line()), answer_(line()) {
    auto* form = new QFormLayout(this);
    form->setContentsMargins(8, 4, 8, 4);
    form->setVerticalSpacing(3);
    const std::pair<QString, QWidget*> rows[] = {{tr("Exposure"), exposure_}, {tr("Tube heat"), heat_},
                                                 {tr("Set to"), values_},     {tr("Counters"), counters_},
                                                 {tr("Console"), console_},   {tr("Machine"), answer_}};
    for (const auto& [words, widget] : rows) {
        widget->setAccessibleDescription(words);
        form->addRow(words, widget);
    }
    exposure_->setAccessibleName(tr("Exposure"));
    heat_->setAccessibleName(tr("Tube heat"));
}

void GaugesBox::show(const simulator::Gauges& g, const simulator::Options& options) {
    showExposure(g);
    heat_->setValue(static_cast<int>(std::lround(g.heatPercent)));
    heat_->setFormat(
        g.restMs > 0
            ? tr("%p %, may expose again in %1 s").arg((g.restMs + 999) / 1000)
            : tr("%p % (rests from %1 to %2)").arg(options.tooHotPercent).arg(options.coolEnoughPercent));
    const simulator::Shot& set = g.technique;
    setText(values_, tr("%1 kVp  %2 mA  %3 ms  %4 mAs  %5")
                         .arg(number(set.kvp), number(set.ma), number(set.ms), number(set.mas()),
                              g.largeFocus ? tr("large") : tr("small")));
    setText(counters_, tr("tube 1: %1   tube 2: %2   tube 3: %3   fluoro: %4 s")
                           .arg(g.counters[0])
                           .arg(g.counters[1])
                           .arg(g.counters[3])
                           .arg(g.counters[2]));
}

void GaugesBox::showExposure(const simulator::Gauges& g) {
    const bool exposing = g.phase == Phase::RadExposure;
    const double ms = std::max(1.0, g.running.ms);
    const auto run = static_cast<double>(g.runningMs);
    exposure_->setValue(exposing ? static_cast<int>(std::min(1.0, run / ms) * kFull) : 0);
    exposure_->setFormat(exposing ? tr("%1 of %2 ms").arg(g.runningMs).arg(number(g.running.ms))
                         : g.phase == Phase::Preparation
                             ? (g.prepared ? tr("prepared") : tr("the rotor runs up"))
                             : tr("none"));
}

void GaugesBox::showTraffic(bool fromConsole, const QString& text, const QString& meaning) {
    QLabel* const label = fromConsole ? console_ : answer_;
    setText(label, tr("%1  %2").arg(text, meaning));
    label->setToolTip(meaning);
}

} // namespace desk
