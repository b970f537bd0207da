#include "ui/ControlHost.h"

#include <algorithm>

#include "base/Fault.h"

namespace quillon {

namespace {

constexpr int kKeyInUse = 457;

} // namespace

void ControlFactory::add(std::string_view className, Make make) {
    makers_.insert_or_assign(std::string(className), std::move(make));
}

std::unique_ptr<ControlHost> ControlFactory::make(std::string_view className) const {
    const auto maker = makers_.find(className);
    if (maker == makers_.end()) {
        throw Fault(Fault::kNoSuchName);
    }
    return maker->second();
}

bool ControlHost::KeyLess::operator()(const Key& a, const Key& b) const {
    if (equalsNoCase(a.name, b.name)) {
        return a.index < b.index;
    }
    return NoCaseLess{}(a.name, b.name);
}

ControlHost::ControlHost(Kind kind, std::string_view name, Schedule& schedule)
    : Control(kind, name), schedule_(schedule),
      removed_(std::make_shared<std::vector<std::unique_ptr<Control>>>()) {
    setBackColour(kSurfaceColour);
}

ControlHost::~ControlHost() {
    while (!controls_.empty()) {
        controls_.pop_back(); // what was made last may hold a lock on what was made before
    }
}

Control& ControlHost::take(std::unique_ptr<Control> control, Control* container) {
    Control& placed = *control;
    placed.host_ = this;
    placed.container_ = container == nullptr ? this : container;
    if (placed.has(Property::Geometry)) {
        placed.container_->stack_.push_back(&placed);
    }
    byName_[{placed.name(), placed.index().value_or(-1)}] = &placed;
    controls_.push_back(std::move(control));
    if (ChangeSink* window = sink()) {
        window->controlAdded(placed);
    }
    return placed;
}

Control& ControlHost::add(Kind kind, std::string_view name, std::optional<int> index, Control* container) {
    return take(std::make_unique<Control>(kind, name, index), container);
}

Timer& ControlHost::addTimer(std::string_view name, int interval) {
    auto control = std::make_unique<TimerControl>(name, schedule_);
    Timer& timer = control->timer();
    timer.setInterval(interval);
    take(std::move(control), nullptr);
    return timer;
}

ControlHost& ControlHost::adopt(std::unique_ptr<ControlHost> child, Control* container) {
    ControlHost& host = *child;
    take(std::move(child), container);
    return host;
}

ControlHost& ControlHost::addByClass(std::string_view className, std::string_view key,
                                     const ControlFactory& factory) {
    if (byKey_.contains(key)) {
        throw Fault(kKeyInUse);
    }
    std::unique_ptr<ControlHost> made = factory.make(className);
    made->name_ = key;
    made->setVisible(false);
    ControlHost& host = adopt(std::move(made));
    byKey_.emplace(key, &host);
    return host;
}

ControlHost* ControlHost::keyed(std::string_view key) const {
    const auto entry = byKey_.find(key);
    return entry == byKey_.end() ? nullptr : entry->second;
}

bool ControlHost::removeKeyed(std::string_view key) {
    const auto entry = byKey_.find(key);
    if (entry == byKey_.end()) {
        return false;
    }
    ControlHost* host = entry->second;
    byKey_.erase(entry);
    host->removed();
    if (ChangeSink* window = sink()) {
        window->controlRemoved(*host);
    }
    std::erase(host->container_->stack_, host);
    std::erase_if(byName_, [host](const auto& named) { return named.second == host; });
    const auto owned = std::find_if(controls_.begin(), controls_.end(),
                                    [host](const auto& control) { return control.get() == host; });
    removed_->push_back(std::move(*owned));
    controls_.erase(owned);
    host->container_ = nullptr;
    host->host_ = nullptr;
    schedule_.post(0, [removed = removed_] { removed->clear(); });
    return true;
}

Control* ControlHost::find(std::string_view name, std::optional<int> index) const {
    const auto entry = byName_.find(Key{std::string(name), index.value_or(-1)});
    return entry == byName_.end() ? nullptr : entry->second;
}

Control& ControlHost::at(std::string_view name, std::optional<int> index) const {
    Control* control = find(name, index);
    if (control == nullptr) {
        throw Fault(Fault::kNoSuchName);
    }
    return *control;
}

Timer& ControlHost::timer(std::string_view name) const {
    auto* control = dynamic_cast<TimerControl*>(&at(name));
    if (control == nullptr) {
        throw Fault(Fault::kTypeMismatch);
    }
    return control->timer();
}

std::vector<Control*> ControlHost::all(std::string_view name) const {
    std::vector<Control*> row;
    for (auto entry = byName_.lower_bound(Key{std::string(name), 0});
         entry != byName_.end() && equalsNoCase(entry->first.name, name); ++entry) {
        row.push_back(entry->second);
    }
    return row;
}

void ControlHost::showAge() {
    for (const auto& control : controls_) {
        if (control->old()) {
            control->notify();
        }
    }
}

std::string nameOf(const Control& control) {
    const bool alone = dynamic_cast<const ControlHost*>(&control) != nullptr;
    std::string name =
        alone || control.host() == nullptr ? control.name() : control.host()->name() + "." + control.name();
    if (control.index()) {
        name += "(" + std::to_string(*control.index()) + ")";
    }
    return name;
}

} // namespace quillon
