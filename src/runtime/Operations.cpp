#include "runtime/Operations.h"

namespace quillon {

namespace {

template <typename Map> const auto& lookUp(const Map& map, std::string_view name) {
    const auto entry = map.find(name);
    if (entry == map.end()) {
        throw Fault(Fault::kNotFound);
    }
    return entry->second;
}

} // namespace

std::optional<Value> Operations::call(std::string_view name, std::span<const Value> arguments) const {
    return lookUp(operations_, name)(arguments);
}

Value Operations::get(std::string_view name) const {
    return lookUp(getters_, name)();
}

void Operations::set(std::string_view name, const Value& value) const {
    lookUp(setters_, name)(value);
}

std::vector<std::string> Operations::names() const {
    std::vector<std::string> all;
    for (const auto& [name, operation] : operations_) {
        all.push_back(name);
    }
    return all;
}

} // namespace quillon
