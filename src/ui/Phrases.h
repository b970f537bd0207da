#pragma once

#include <map>
#include <string>
#include <string_view>

namespace quillon {

/// Replacements for words that controls hold, in another language. The controls keep their own words, with
/// which the system works; only what is painted is replaced.
class Phrases {
public:
    void replace(std::string_view words, std::string_view shown) { shown_[std::string(words)] = shown; }
    /// The words themselves where nobody has replaced them. Blanks around them count as little as a number
    /// behind them, which is kept.
    [[nodiscard]] std::string shown(std::string_view words) const;

private:
    std::map<std::string, std::string, std::less<>> shown_;
};

} // namespace quillon
