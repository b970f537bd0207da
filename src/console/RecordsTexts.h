#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillon {

struct RecordsTextName;

/// The words of the key to the records and of their window, as the operator reads them. Each can be replaced
/// by name.
class RecordsTexts {
public:
    RecordsTexts();

    [[nodiscard]] const std::string& operator[](RecordsTextName name) const;
    /// Says whether there is a text of that name, in letters of any case.
    bool replace(std::string_view name, std::string_view text);

private:
    std::vector<std::string> texts_;
};

} // namespace quillon
