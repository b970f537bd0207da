#include "runtime/ProfileFile.h"

#include "base/Text.h"

namespace quillon {

namespace {

/// Takes the next line off the text; lines end with LF, with CR LF, or with the text.
std::string_view takeLine(std::string_view& text) {
    const auto end = text.find('\n');
    std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

std::string_view trimBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string_view unquoted(std::string_view value) {
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.front() == value.back();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

} // namespace

ProfileFile::ProfileFile(std::string text) : text_(std::move(text)) {}

std::string ProfileFile::read(std::string_view section, std::string_view key, std::string_view otherwise,
                              std::size_t limit) const {
    std::string_view rest = withoutByteOrderMark(text_);
    bool inside = false;
    while (!rest.empty()) {
        const std::string_view line = trimBlanks(takeLine(rest));
        if (line.starts_with('[')) {
            if (inside) {
                break;
            }
            inside = equalsNoCase(trimBlanks(line.substr(1, line.find(']') - 1)), section);
            continue;
        }
        const auto equals = line.find('=');
        if (!inside || line.starts_with(';') || equals == std::string_view::npos) {
            continue;
        }
        if (equalsNoCase(trimBlanks(line.substr(0, equals)), key)) {
            return std::string(unquoted(trimBlanks(line.substr(equals + 1))).substr(0, limit));
        }
    }
    return std::string(otherwise.substr(0, limit));
}

} // namespace quillon
