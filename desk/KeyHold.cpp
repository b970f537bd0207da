#include "desk/KeyHold.h"

namespace desk {

namespace {

constexpr int kRepeatGapMs = 60;

} // namespace

KeyHold::KeyHold() {
    release_.setSingleShot(true);
    release_.setInterval(kRepeatGapMs);
    connect(&release_, &QTimer::timeout, this, [this] {
        held_ &= ~letting_;
        letting_ = 0;
        emit changed();
    });
}

void KeyHold::set(int key, bool down) {
    if (!down) {
        letting_ |= key & held_;
        release_.start();
        return;
    }
    letting_ &= ~key;
    if ((held_ & key) == 0) {
        held_ |= key;
        emit changed();
    }
}

void KeyHold::clear() {
    release_.stop();
    letting_ = 0;
    if (held_ != 0) {
        held_ = 0;
        emit changed();
    }
}

} // namespace desk
