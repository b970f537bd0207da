#include "Visit.h"

#include <algorithm>

namespace quillon {

std::optional<Milliseconds> Trust::doubtFrom() const {
    std::optional<Milliseconds> from = differsAt;
    for (const Milliseconds gap : gaps) {
        from = std::min(from.value_or(gap), gap);
    }
    return from;
}

std::int64_t Visit::changedValues() const {
    return std::count_if(values.begin(), values.end(), [](const auto& each) {
        return each.first.subject != Subject::Counter && each.second.changed();
    });
}

bool Visit::knows(Subject subject, std::string_view scope) const {
    return std::any_of(values.begin(), values.end(), [&](const auto& each) {
        return each.first.subject == subject && each.first.scope == scope;
    });
}

} // namespace quillon
