#include "ui/ModalSnapshot.h"

namespace quillon {

namespace {

bool passedOver(const Control& control) {
    return control.kind() == Kind::Frame || !control.has(Property::Enabled);
}

} // namespace

void ModalSnapshot::take(ControlHost& host) {
    for (const auto& control : host.controls()) {
        if (!passedOver(*control)) {
            enabled_.push_back(control->enabled());
            control->setEnabled(false);
        }
    }
}

void ModalSnapshot::restore(ControlHost& host) {
    std::size_t at = 0;
    for (const auto& control : host.controls()) {
        if (!passedOver(*control) && at < enabled_.size()) {
            control->setEnabled(enabled_[at++]);
        }
    }
    enabled_.clear();
}

} // namespace quillon
