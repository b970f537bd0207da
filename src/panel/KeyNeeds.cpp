#include "panel/KeyNeeds.h"

namespace quillon {

void KeyNeeds::add(const Control& key, std::string_view asks, Condition condition) {
    needs_.insert_or_assign(&key, Need{asks, std::move(condition)});
}

Hindrance KeyNeeds::of(const Control& key) const {
    const auto entry = needs_.find(&key);
    if (entry == needs_.end()) {
        return Hindrance::None;
    }
    const Need& need = entry->second;
    if (!need.asks.empty() && !allows_(need.asks)) {
        return Hindrance::Phase;
    }
    return need.condition ? need.condition() : Hindrance::None;
}

} // namespace quillon
