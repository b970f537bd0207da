#include "runtime/Operations.h"

namespace quillon {

namespace {

template <typename Map> const auto& lookUp(const Map& map, std::string_view name) {
    const auto entry = map.find(name);
    if (entry == map.end()) {
        throw Fault(Fault::kNoSuchName);
    }
    return entry->second;
}

} // namespace

void Operations::addAny(std::string_view name, Function operation) {
    operations_.insert_or_assign(std::string(name), std::move(operation));
}

void Operations::addGetter(std::string_view name, Getter get) {
    getters_.insert_or_assign(std::string(name), std::move(get));
}

void Operations::addSetter(std::string_view name, Setter set) {
    setters_.insert_or_assign(std::string(name), std::move(set));
}

std::string_view Operations::spelling(std::string_view name) const {
    const auto getter = getters_.find(name);
    return getter == getters_.end() ? name : std::string_view(getter->first);
}

std::optional<Value> Operations::call(std::string_view name, std::span<const Value> arguments) const {
    return lookUp(operations_, name)(arguments);
}

Value Operations::get(std::string_view name) const {
    return lookUp(getters_, name)();
}

void Operations::set(std::string_view name, const Value& value) const {
    lookUp(setters_, name)(value);
}

} // namespace quillon
