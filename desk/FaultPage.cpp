#include "desk/FaultPage.h"

#include <array>
#include <utility>

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

namespace desk {

namespace {

constexpr std::array kPlugs{"in", "out", "loose"};
constexpr int kHighestNumber = 9999;

} // namespace

FaultPage::FaultPage(Station& station, QWidget* parent)
    : QWidget(parent), station_(station), form_(new QFormLayout(this)), answer_(new QLabel) {
    form_->setContentsMargins(8, 4, 8, 4);
    form_->setVerticalSpacing(4);
    addToggle("Cable out at the console's end", "cable out", "cable in",
              [](const Seen& s) { return !s.cableIn; });
    addPlug();
    addToggle("Silent: works, says nothing", "silence on", "silence off",
              [](const Seen& s) { return s.options.silent; });
    addToggle("No acknowledgement at all", "set ack off", "set ack 20",
              [](const Seen& s) { return !s.options.acknowledges; });
    addToggle("Each value stays as it is now", "set stuck 1", "set stuck 0",
              [](const Seen& s) { return s.options.stuck; });
    addNumber("Every n-th AK lost", 99, "", "drop every", [](const Seen& s) { return s.options.dropEvery; });
    addNumber("AK after", kHighestNumber, " ms", "set ack",
              [](const Seen& s) { return static_cast<int>(s.options.ackMs); });
    addNumber("Answers after", kHighestNumber, " ms", "set answer",
              [](const Seen& s) { return static_cast<int>(s.options.answerMs); });
    addNumber("Garbage beside", 100, " %", "noise", [](const Seen& s) { return s.options.noisePercent; });
    addNumber("Told twice", 100, " %", "set twice", [](const Seen& s) { return s.options.twicePercent; });
    addNumber("Wrong values", 100, " %", "set wrong", [](const Seen& s) { return s.options.wrongPercent; });
    addNumber("Seed of the chance", kHighestNumber, "", "set seed",
              [](const Seen& s) { return static_cast<int>(s.options.seed); });
    addLine("Error", "12", "Raise", "error ");
    addLine("Warning", "3", "Give", "warning ");
    addLine("Exposure control", "4", "Raise", "aec ");
    addLine("Next AKs lost", "2", "Lose", "drop ");
    addLine("Fixed value", "KV 81, or off", "Fix", "stick ");
    addLine("Any command", "help", "Do", "");
    answer_->setWordWrap(true);
    answer_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    answer_->setAccessibleDescription(tr("Answer to the last command"));
    form_->addRow(answer_);
}

void FaultPage::addToggle(const char* words, const char* on, const char* off,
                          std::function<bool(const Seen&)> now) {
    auto* box = new QCheckBox(tr(words));
    box->setMinimumHeight(26);
    connect(box, &QCheckBox::clicked, this,
            [this, on = std::string(on), off = std::string(off)](bool checked) { obey(checked ? on : off); });
    form_->addRow(box);
    refreshers_.emplace_back([box, now = std::move(now)](const Seen& seen) { box->setChecked(now(seen)); });
}

void FaultPage::addNumber(const char* words, int high, const char* unit, const char* command,
                          std::function<int(const Seen&)> now) {
    auto* box = new QSpinBox;
    box->setRange(0, high);
    box->setSuffix(tr(unit));
    box->setKeyboardTracking(false);
    connect(box, &QSpinBox::valueChanged, this, [this, command = std::string(command)](int value) {
        obey(command + " " + std::to_string(value));
    });
    form_->addRow(tr(words), box);
    box->setAccessibleName(tr(words));
    refreshers_.emplace_back([box, now = std::move(now)](const Seen& seen) {
        if (!box->hasFocus()) { // somebody is typing
            const QSignalBlocker quiet(box);
            box->setValue(now(seen));
        }
    });
}

void FaultPage::addPlug() {
    auto* choice = new QComboBox;
    choice->addItems({tr("in"), tr("out"), tr("loose: contact by chance")});
    choice->setAccessibleName(tr("Plug at the machine"));
    connect(choice, &QComboBox::activated, this,
            [this](int at) { obey(std::string("plug ") + kPlugs.at(static_cast<std::size_t>(at))); });
    form_->addRow(tr("Plug at the machine"), choice);
    refreshers_.emplace_back(
        [choice](const Seen& seen) { choice->setCurrentIndex(static_cast<int>(seen.gauges.plug)); });
}

void FaultPage::addLine(const char* words, const char* example, const char* verb, const char* command) {
    auto* edit = new QLineEdit;
    edit->setPlaceholderText(tr(example));
    edit->setAccessibleName(tr(words));
    auto* key = new QPushButton(tr(verb));
    key->setAccessibleName(tr("%1: %2").arg(tr(words), tr(verb)));
    auto* row = new QHBoxLayout;
    row->addWidget(edit, 1);
    row->addWidget(key);
    form_->addRow(tr(words), row);
    const auto run = [this, edit, command = std::string(command)] {
        obey(command + edit->text().toStdString());
    };
    connect(key, &QPushButton::clicked, this, run);
    connect(edit, &QLineEdit::returnPressed, this, run);
}

void FaultPage::obey(const std::string& command) {
    const QString answer = QString::fromStdString(station_.obey(command));
    answer_->setText(answer.startsWith(QLatin1Char('?')) ? tr("Not possible: %1").arg(answer.mid(1))
                                                         : answer);
}

void FaultPage::reset() {
    const simulator::Options none;
    for (const auto& refresh : refreshers_) {
        refresh({{}, none, true});
    }
    answer_->clear();
}

void FaultPage::show(const simulator::Gauges& gauges, const simulator::Options& options, bool inLesson) {
    if (inLesson) {
        return;
    }
    const Seen seen{gauges, options, station_.cableIn()};
    for (const auto& refresh : refreshers_) {
        refresh(seen);
    }
}

} // namespace desk
