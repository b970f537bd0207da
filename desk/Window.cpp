#include "desk/Window.h"

#include <array>
#include <utility>

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScrollArea>
#include <QVBoxLayout>

#include "tools/words/Words.h"

namespace desk {

namespace {

constexpr int kPaceMs = 100;
constexpr QSize kSmallest{392, 600};

// In the order of Verdict and of Outbox::Fate.
constexpr std::array kVerdicts{"", "refused: not in this phase", "refused: value", "refused: unknown"};
constexpr std::array kFates{"", "garbled", "lost on purpose", "kept back: silent", "lost at the plug"};

QScrollArea* scrolled(QWidget* inner) {
    auto* area = new QScrollArea;
    area->setWidget(inner);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    return area;
}

} // namespace

Window::Window(Station& station, simulator::Options options)
    : station_(station), options_(std::move(options)), strip_(new StatusStrip(station)),
      switches_(new SwitchBox(station)), gauges_(new GaugesBox), tabs_(new QTabWidget),
      lesson_(new LessonPage), room_(new RoomPage(station)), faults_(new FaultPage(station)),
      line_(new LinePage), memory_(new MemoryPage) {
    setWindowTitle(tr("The machine (simulated)"));
    build();
    listen();
    qApp->installEventFilter(this);
    pace_.start(kPaceMs);
    refresh();
}

void Window::build() {
    auto* middle = new QWidget;
    auto* column = new QVBoxLayout(middle);
    column->setContentsMargins(6, 6, 6, 6);
    column->setSpacing(4);
    column->addWidget(strip_);
    column->addWidget(switches_);
    column->addWidget(gauges_);
    tabs_->addTab(lesson_, tr("&Lesson"));
    tabs_->addTab(scrolled(room_), tr("&Room"));
    tabs_->addTab(scrolled(faults_), tr("&Faults"));
    tabs_->addTab(line_, tr("L&ine"));
    tabs_->addTab(memory_, tr("&Memory"));
    column->addWidget(tabs_, 1);
    setCentralWidget(middle);
    setMinimumSize(kSmallest);
}

/// Its parts let the switches go when they are hidden, and nothing more is heard of that here.
Window::~Window() {
    disconnect(&station_, nullptr, this, nullptr);
}

void Window::listen() {
    connect(&station_, &Station::frame, this,
            [this](qint64 ms, const QString& text, simulator::Verdict verdict) {
                addTraffic(ms, true, text, tr(kVerdicts.at(static_cast<std::size_t>(verdict))));
            });
    connect(&station_, &Station::message, this,
            [this](qint64 ms, const QString& text, simulator::Outbox::Fate fate) {
                addTraffic(ms, false, text, tr(kFates.at(static_cast<std::size_t>(fate))));
            });
    // Changes of one moment are shown together; answers do not wait for a picture each.
    connect(&station_, &Station::moved, this, [this] {
        if (!std::exchange(stale_, true)) {
            QTimer::singleShot(0, this, &Window::refresh);
        }
    });
    connect(&pace_, &QTimer::timeout, this, &Window::refresh);
    connect(lesson_, &LessonPage::chosen, this, &Window::begin);
    connect(lesson_, &LessonPage::hintAsked, &station_, &Station::hint);
    connect(lesson_, &LessonPage::consoleAsked, this, &Window::consoleAsked);
}

void Window::begin(const simulator::Lesson* lesson) {
    switches_->letGo();
    line_->clear();
    if (lesson != nullptr) {
        station_.begin(*lesson);
    } else {
        station_.restart(options_);
    }
    faults_->reset();
    lesson_->begun(station_.lesson());
    tabs_->setCurrentWidget(lesson_);
    refresh();
}

void Window::setConsoleClosed(bool closed) {
    lesson_->setConsoleClosed(closed);
    if (closed) {
        tabs_->setCurrentWidget(lesson_);
    }
}

void Window::refresh() {
    const simulator::Gauges gauges = station_.gauges();
    stale_ = false;
    strip_->show(gauges);
    gauges_->show(gauges, station_.options());
    room_->show(gauges);
    faults_->show(gauges, station_.options(), inLesson());
    memory_->show(gauges, inLesson());
    lesson_->show(station_.lesson());
}

void Window::addTraffic(qint64 ms, bool fromConsole, const QString& text, const QString& note) {
    const auto direction = fromConsole ? quillon::Direction::Out : quillon::Direction::In;
    QString meaning = QString::fromStdString(quillon::explained(direction, text.toStdString()));
    if (!note.isEmpty()) {
        meaning = tr("%1 (%2)").arg(meaning, note);
    }
    gauges_->showTraffic(fromConsole, text, meaning);
    line_->add(ms, fromConsole, text, meaning);
}

void Window::closeEvent(QCloseEvent* event) {
    event->setAccepted(!mayClose || mayClose());
}

/// The switches' keys count wherever the focus is.
bool Window::eventFilter(QObject* watched, QEvent* event) {
    const bool key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (key && watched->isWindowType()) {
        const auto* stroke = static_cast<QKeyEvent*>(event);
        if (switches_->key(stroke->key(), event->type() == QEvent::KeyPress)) {
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

} // namespace desk
