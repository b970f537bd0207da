#include "desk/RoomPage.h"

#include <algorithm>
#include <array>

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

namespace desk {

namespace {

struct Named {
    const char* name;
    const char* words;
};

constexpr std::array kLamps{Named{"door", "Door open"},
                            Named{"collimator", "Collimator open"},
                            Named{"rotor", "Rotor does not turn"},
                            Named{"overheat", "Housing too hot"},
                            Named{"generator", "Generator overloaded"},
                            Named{"tube", "Tube overloaded"},
                            Named{"technique", "Technique not possible"}};

struct Action {
    const char* words;
    const char* command;
};
constexpr std::array kActions{Action{"Push the plug in", "plug in"}, Action{"Cold tube", "heat 0"},
                              Action{"Hot tube (89 %)", "heat 89"}};

} // namespace

RoomPage::RoomPage(Station& station, QWidget* parent)
    : QWidget(parent), station_(station),
      dip_(toggle(tr("Dip switch: service"), "set dipswitch 1", "set dipswitch 0")), reading_(new QSpinBox) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(8, 4, 8, 4);
    grid->setVerticalSpacing(4);
    int place = 0;
    const auto add = [&](QWidget* widget) {
        grid->addWidget(widget, place / 2, place % 2);
        ++place;
    };
    for (const Named& each : kLamps) {
        const std::string name(each.name);
        lamps_[name] = toggle(tr(each.words), name + " 1", name + " 0");
        add(lamps_[name]);
    }
    add(dip_);
    for (const Action& each : kActions) {
        auto* key = new QPushButton(tr(each.words));
        connect(key, &QPushButton::clicked, this,
                [this, command = std::string(each.command)] { obey(command); });
        add(key);
    }
    auto* raise = new QPushButton(tr("Report the interlock"));
    auto* interlock = new QSpinBox;
    interlock->setRange(0, 99);
    interlock->setPrefix(tr("Interlock "));
    interlock->setAccessibleName(tr("Number of a workstation's interlock"));
    connect(raise, &QPushButton::clicked, this,
            [this, interlock] { obey("error L" + std::to_string(interlock->value())); });
    ++place;
    add(interlock);
    add(raise);
    reading_->setRange(0, 4095);
    reading_->setAccessibleName(tr("Reading of the remote positioner"));
    reading_->setKeyboardTracking(false);
    connect(reading_, &QSpinBox::valueChanged, this,
            [this](int value) { obey("set reading " + std::to_string(value)); });
    add(new QLabel(tr("Remote positioner reads")));
    add(reading_);
    grid->setRowStretch(place / 2 + 1, 1);
}

void RoomPage::obey(const std::string& command) {
    (void)station_.obey(command);
}

QCheckBox* RoomPage::toggle(const QString& words, const std::string& on, const std::string& off) {
    auto* box = new QCheckBox(words);
    box->setMinimumHeight(26);
    connect(box, &QCheckBox::clicked, this, [this, on, off](bool checked) { obey(checked ? on : off); });
    return box;
}

void RoomPage::show(const simulator::Gauges& g) {
    for (const auto& [name, box] : lamps_) {
        box->setChecked(std::ranges::find(g.lamps, name) != g.lamps.end());
    }
    dip_->setChecked(g.dipSwitch);
    dip_->setText(g.dipSwitchCounts ? tr("Dip switch: service") : tr("Dip switch: service *"));
    dip_->setAccessibleDescription(g.dipSwitchCounts ? QString() : tr("counts from the next start on"));
    dip_->setToolTip(dip_->accessibleDescription());
    if (!reading_->hasFocus()) {
        const QSignalBlocker quiet(reading_);
        reading_->setValue(g.reading);
    }
}

} // namespace desk
