#include "console/RecordsTexts.h"

#include <algorithm>
#include <iterator>

#include "base/Text.h"
#include "console/RecordsTextTable.h"

namespace quillon {

RecordsTexts::RecordsTexts() {
    std::ranges::transform(kRecordsTexts, std::back_inserter(texts_),
                           [](const RecordsText& row) { return std::string(row.english); });
}

const std::string& RecordsTexts::operator[](RecordsTextName name) const {
    return texts_.at(name.index);
}

bool RecordsTexts::replace(std::string_view name, std::string_view text) {
    const auto* const row = std::ranges::find_if(
        kRecordsTexts, [name](const RecordsText& each) { return equalsNoCase(each.name, name); });
    if (row == kRecordsTexts.end()) {
        return false;
    }
    texts_.at(static_cast<std::size_t>(row - kRecordsTexts.begin())) = text;
    return true;
}

} // namespace quillon
