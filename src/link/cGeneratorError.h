#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Platform.h"

namespace quillon {

/// Words and severity for the error numbers of the generator, from a text file that can be changed or
/// translated without changing the program. A line is CODE=DESCRIPTION=CLASS and ends with CR LF.
class cGeneratorError {
public:
    /// Why the last Setup left the table empty.
    struct Problem {
        int number;
        std::string_view source;
        std::string_view text;
    };

    static constexpr std::string_view kDefaultFile = "error_info.txt";
    static constexpr std::int32_t kNoClass = 3; ///< the table has nothing to say

    explicit cGeneratorError(const Folder& folder) : m_Folder(folder) {}

    /// Reads a file, by name in the executable's directory or by its path, and replaces the table. A file
    /// that can't be used leaves the table empty and is reported in problem() only.
    void Setup(std::string_view txtfilePath = kDefaultFile);

    /// Empty when the table has nothing to say.
    [[nodiscard]] std::string Description(std::int32_t error_code) const;
    /// 0, 1 or 2, or kNoClass.
    [[nodiscard]] std::int32_t ErrorType(std::int32_t error_code) const;

    /// While False the table keeps its rows and does not answer.
    [[nodiscard]] bool Enable() const { return m_Enable; }
    void setEnable(bool enable) { m_Enable = enable; }

    [[nodiscard]] const std::optional<Problem>& problem() const { return m_Problem; }

private:
    using Row = std::vector<std::string>;

    [[nodiscard]] const Row* find(std::int32_t error_code) const;

    const Folder& m_Folder;
    std::vector<Row> m_Table;
    std::optional<Problem> m_Problem;
    bool m_Ready = false;
    bool m_Enable = false;
};

} // namespace quillon
