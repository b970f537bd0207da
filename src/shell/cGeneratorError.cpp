#include "shell/cGeneratorError.h"

#include "base/CodePage.h"
#include "base/Fault.h"
#include "base/Numbers.h"
#include "base/Text.h"

namespace quillon {

namespace {

constexpr std::size_t kLargestFile = std::size_t{1} << 20;
constexpr std::string_view kSource = "CGeneratorError";
constexpr cGeneratorError::Problem kCannotOpen{513, kSource, "Cannot Open Error Description File"};
constexpr cGeneratorError::Problem kEmpty{514, kSource, "Error Description File Empty"};

// Fields of a row.
constexpr std::size_t kCode = 0;
constexpr std::size_t kDescription = 1;
constexpr std::size_t kClass = 2;

bool isCode(std::string_view field) {
    try {
        (void)toInt32(field);
        return true;
    } catch (const Fault&) {
        return false;
    }
}

} // namespace

void cGeneratorError::Setup(std::string_view txtfilePath) {
    m_Ready = false;
    m_Enable = false;
    m_Table.clear();
    m_Problem.reset();

    const std::optional<std::string> content = m_Folder.read(txtfilePath, kLargestFile);
    if (!content) {
        m_Problem = kCannotOpen;
        return;
    }
    // Not valid UTF-8: taken as Windows-1252.
    const std::string_view given = withoutByteOrderMark(*content);
    const std::string text = codePageFromUtf8(given).value_or(std::string(given));
    const auto lines = split(text, "\r\n");
    if (lines.size() < 2) {
        m_Problem = kEmpty;
        return;
    }
    for (const std::string_view line : lines) {
        const std::string plain = without(line, '\t');
        const auto fields = split(plain, "=");
        // A line that is none of the format must not end the search for those behind it.
        if (fields.size() > kDescription && isCode(fields[kCode])) {
            m_Table.emplace_back(fields.begin(), fields.end());
        }
    }
    m_Ready = true;
    m_Enable = true;
}

const cGeneratorError::Row* cGeneratorError::find(std::int32_t error_code) const {
    if (error_code == 0 || !m_Enable || !m_Ready) {
        return nullptr;
    }
    for (const Row& row : m_Table) {
        if (toDouble(row[kCode]) == error_code) {
            return &row;
        }
    }
    return nullptr;
}

std::string cGeneratorError::Description(std::int32_t error_code) const {
    const Row* row = find(error_code);
    return row == nullptr ? std::string{} : (*row)[kDescription];
}

std::int32_t cGeneratorError::ErrorType(std::int32_t error_code) const {
    // Of the row that gives the words, even where it has no class: those of two rows make no error.
    const Row* row = find(error_code);
    if (row == nullptr || row->size() <= kClass) {
        return kNoClass;
    }
    const std::string_view type = trim((*row)[kClass]);
    return type == "1" ? 1 : type == "2" ? 2 : 0;
}

} // namespace quillon
