#include "ui/ScalingLayout.h"

#include <algorithm>

#include "base/Numbers.h"

namespace quillon {

void ScalingLayout::record(const ControlHost& host, Twips designWidth, Twips designHeight) {
    designWidth_ = designWidth;
    designHeight_ = designHeight;
    records_.clear();
    records_.reserve(host.controls().size());
    for (const auto& control : host.controls()) {
        records_.push_back({control->has(Property::Geometry) ? control->place() : Place{},
                            control->has(Property::Font) ? toInt16(control->fontSize()) : std::int16_t{0}});
    }
}

void ScalingLayout::apply(ControlHost& host) const {
    if (designWidth_ <= 0 || designHeight_ <= 0) {
        return;
    }
    const double x = static_cast<double>(host.width()) / designWidth_;
    const double y = static_cast<double>(host.height()) / designHeight_;
    const std::size_t count = std::min(records_.size(), host.controls().size());
    for (std::size_t i = 0; i < count; ++i) {
        Control& control = *host.controls()[i];
        const Place& design = records_[i].place;
        const bool sized = rules_.keepsSize.empty() || !equalsNoCase(control.name(), rules_.keepsSize);
        if (control.has(Property::Geometry)) {
            const Twips parked = design.left < 0 ? rules_.parking : 0;
            const Twips left = toInt32((design.left + parked) * x) - parked;
            const Twips top = toInt32(design.top * y);
            control.setPlace({left, top, sized ? toInt32(design.width * x) : control.width(),
                              sized ? toInt32(design.height * y) : control.height()});
        }
        if (sized && control.has(Property::Font)) {
            control.setFontSize(records_[i].fontSize * std::min(x, y));
        }
    }
}

} // namespace quillon
