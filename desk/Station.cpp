#include "desk/Station.h"

#include <algorithm>

namespace desk {

namespace {

QString fromLine(std::string_view text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

Station::Station(const simulator::Options& options, std::string link)
    : station_(options, std::move(link), {[this] { connectCable(); }, {}, {}}) {
    simulator::Classroom& classroom = station_.classroom();
    classroom.watch({[this](std::string_view text, simulator::Verdict verdict) {
                         emit frame(station_.now(), fromLine(text), verdict);
                     },
                     [this](std::string_view text, simulator::Outbox::Fate fate) {
                         emit message(station_.now(), fromLine(text), fate);
                     }});
    classroom.told = [this](const std::string& line) { emit lessonTold(QString::fromStdString(line)); };
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, [this] {
        station_.advance();
        wake();
        emit moved();
    });
    connectCable();
    wake();
}

std::string Station::obey(const std::string& command) {
    std::string answer = station_.obey(command);
    wake();
    emit moved();
    return answer;
}

void Station::restart(const simulator::Options& options) {
    station_.classroom().restart(options, station_.now());
    wake();
    emit moved();
}

void Station::begin(const simulator::Lesson& lesson) {
    if (!station_.cableIn()) {
        (void)station_.obey("cable in");
    }
    station_.classroom().begin(lesson, station_.now());
    wake();
    emit moved();
}

void Station::hint() {
    station_.classroom().hint();
    emit moved();
}

simulator::Gauges Station::gauges() {
    station_.advance();
    wake();
    return station_.classroom().gauges();
}

void Station::connectCable() {
    readable_.reset();
    writable_.reset();
    if (!station_.cableIn()) {
        return;
    }
    readable_ = std::make_unique<QSocketNotifier>(station_.descriptor(), QSocketNotifier::Read);
    connect(readable_.get(), &QSocketNotifier::activated, this, [this] {
        station_.readable();
        wake();
        emit moved();
    });
    writable_ = std::make_unique<QSocketNotifier>(station_.descriptor(), QSocketNotifier::Write);
    writable_->setEnabled(false);
    connect(writable_.get(), &QSocketNotifier::activated, this, [this] {
        station_.writable();
        wake();
    });
}

void Station::wake() {
    if (writable_) {
        writable_->setEnabled(station_.wantsWrite());
    }
    if (const auto due = station_.nextDue()) {
        timer_.start(static_cast<int>(std::clamp<std::int64_t>(*due - station_.now(), 0, 60'000)));
    } else {
        timer_.stop();
    }
}

} // namespace desk
