#include "base/Text.h"

#include <algorithm>
#include <cstdint>

namespace quillon {

std::string_view trimLeft(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view{} : text.substr(first);
}

std::string_view trimRight(std::string_view text) {
    const auto last = text.find_last_not_of(' ');
    return last == std::string_view::npos ? std::string_view{} : text.substr(0, last + 1);
}

std::string_view trim(std::string_view text) {
    return trimLeft(trimRight(text));
}

std::vector<std::string_view> split(std::string_view text, std::string_view mark) {
    std::vector<std::string_view> pieces;
    for (;;) {
        const auto at = text.find(mark);
        pieces.push_back(text.substr(0, at));
        if (at == std::string_view::npos) {
            return pieces;
        }
        text.remove_prefix(at + mark.size());
    }
}

std::string_view withoutByteOrderMark(std::string_view text) {
    constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
    return text.starts_with(kByteOrderMark) ? text.substr(kByteOrderMark.size()) : text;
}

std::string inQuotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

std::string without(std::string_view text, char taken) {
    std::string rest(text);
    std::erase(rest, taken);
    return rest;
}

std::string lowerCase(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return lowerCase(c); });
    return lower;
}

bool equalsNoCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return lowerCase(x) == lowerCase(y); });
}

bool containsNoCase(std::string_view text, std::string_view part) {
    return std::search(text.begin(), text.end(), part.begin(), part.end(),
                       [](char x, char y) { return lowerCase(x) == lowerCase(y); }) != text.end();
}

bool NoCaseLess::operator()(std::string_view a, std::string_view b) const {
    return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                        [](char x, char y) { return lowerCase(x) < lowerCase(y); });
}

std::size_t NoCaseHash::operator()(std::string_view text) const {
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char c : text) {
        hash = (hash ^ static_cast<unsigned char>(lowerCase(c))) * 1099511628211ULL;
    }
    return static_cast<std::size_t>(hash);
}

} // namespace quillon
