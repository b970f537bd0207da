#include "desk/StatusStrip.h"

#include <array>

#include <QGridLayout>

namespace desk {

namespace {

using simulator::Phase;

struct PhaseLook {
    const char* words;
    Rank rank;
};

constexpr std::array kPhases{PhaseLook{"Off", Rank::Off},
                             PhaseLook{"Starting up", Rank::On},
                             PhaseLook{"Ready", Rank::Good},
                             PhaseLook{"Preparation", Rank::On},
                             PhaseLook{"EXPOSURE", Rank::On},
                             PhaseLook{"FLUOROSCOPY", Rank::On},
                             PhaseLook{"Calibration", Rank::On},
                             PhaseLook{"Error", Rank::Alarm},
                             PhaseLook{"Configuration", Rank::On},
                             PhaseLook{"Autocalibration", Rank::On},
                             PhaseLook{"Tube too hot", Rank::On},
                             PhaseLook{"Asks: confirm?", Rank::On},
                             PhaseLook{"Autocalibration failed", Rank::Alarm},
                             PhaseLook{"Autocalibration done", Rank::Good}};

} // namespace

StatusStrip::StatusStrip(Station& station, QWidget* parent)
    : QWidget(parent), mains_(new QPushButton), phase_(new Lamp), allowed_(new Lamp), radiation_(new Lamp) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    mains_->setCheckable(true);
    mains_->setMinimumHeight(40);
    mains_->setAccessibleDescription(tr("Mains switch of the generator"));
    connect(mains_, &QPushButton::clicked, this,
            [&station](bool on) { (void)station.obey(on ? "power on" : "power off"); });
    QFont large = font();
    large.setPointSizeF(large.pointSizeF() * 1.35);
    phase_->setFont(large);
    grid->addWidget(mains_, 0, 0);
    grid->addWidget(phase_, 0, 1);
    grid->addWidget(allowed_, 1, 0);
    grid->addWidget(radiation_, 1, 1);
    grid->setColumnStretch(1, 1);
}

void StatusStrip::show(const simulator::Gauges& g) {
    const bool on = g.phase != simulator::kOff;
    const int number = quillon::numberOf(g.phase);
    const PhaseLook& look = kPhases.at(static_cast<std::size_t>(number));
    mains_->setChecked(on);
    mains_->setText(on ? tr("Mains ON") : tr("Mains OFF"));
    QString words = on ? tr("%1  %2").arg(number).arg(tr(look.words)) : tr(look.words);
    if (on && g.error != 0) {
        words += tr(" %1").arg(g.error);
    }
    phase_->tell(words, look.rank);
    const bool allowed = on && g.raysAllowed;
    allowed_->tell(allowed ? tr("X-rays\nallowed") : tr("X-rays\nNOT allowed"),
                   allowed ? Rank::Good : Rank::Off);
    const bool rays = g.phase == Phase::RadExposure || g.phase == Phase::FluoroExposure;
    radiation_->tell(rays                         ? tr("\u2622  RADIATION")
                     : on && !g.hindrance.empty() ? QString::fromStdString(g.hindrance)
                                                  : tr("no radiation"),
                     rays ? Rank::On : Rank::Off);
}

} // namespace desk
