#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/ErrorTable.h"
#include "runtime/Platform.h"

namespace quillon {

/// The error table in a text file that can be changed or translated without changing the program. A line is
/// CODE=DESCRIPTION=CLASS and ends with CR LF.
class cGeneratorError final : public ErrorTable {
public:
    /// Why the last Setup left the table empty.
    struct Problem {
        int number;
        std::string_view source;
        std::string_view text;
    };

    explicit cGeneratorError(const Folder& folder) : m_Folder(folder) {}

    /// A file that can't be used is reported in problem() only.
    void Setup(std::string_view txtfilePath = kDefaultFile) override;
    [[nodiscard]] std::string Description(std::int32_t error_code) const override;
    [[nodiscard]] std::int32_t ErrorType(std::int32_t error_code) const override;

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
