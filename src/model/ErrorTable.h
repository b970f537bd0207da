#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon {

/// Words and severity for the error numbers of the generator.
class ErrorTable {
public:
    static constexpr std::string_view kDefaultFile = "error_info.txt";
    static constexpr std::int32_t kNoClass = 3; ///< the table has nothing to say

    ErrorTable() = default;
    ErrorTable(const ErrorTable&) = delete;
    ErrorTable& operator=(const ErrorTable&) = delete;
    virtual ~ErrorTable() = default;

    /// Reads a file, by name in the executable's directory or by its path, and replaces the table. A file
    /// that can't be used leaves the table empty.
    virtual void Setup(std::string_view txtfilePath = kDefaultFile) = 0;
    /// Empty when the table has nothing to say.
    [[nodiscard]] virtual std::string Description(std::int32_t error_code) const = 0;
    /// 0, 1 or 2, or kNoClass.
    [[nodiscard]] virtual std::int32_t ErrorType(std::int32_t error_code) const = 0;
};

} // namespace quillon
