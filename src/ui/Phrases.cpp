#include "ui/Phrases.h"

#include "base/Text.h"

namespace quillon {

std::string Phrases::shown(std::string_view words) const {
    const std::string_view plain = trim(words);
    const auto blank = plain.find_last_of(' ');
    const bool numbered = blank != std::string_view::npos &&
                          plain.find_first_not_of("0123456789", blank + 1) == std::string_view::npos;
    if (const auto whole = shown_.find(plain); whole != shown_.end()) {
        return whole->second;
    }
    const auto start = numbered ? shown_.find(plain.substr(0, blank)) : shown_.end();
    return start == shown_.end() ? std::string(words) : start->second + std::string(plain.substr(blank));
}

} // namespace quillon
