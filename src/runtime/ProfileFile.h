#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillon {

/// The text of a file of sections and keys: [section], key=value, names without regard to case, blanks around
/// names and values ignored, one pair of quotes around a value taken off, lines that begin with ';' skipped.
/// The first section and the first key of a name count.
class ProfileFile {
public:
    explicit ProfileFile(std::string text);

    /// The value, cut to `limit` characters; `otherwise` when section or key is missing.
    [[nodiscard]] std::string read(std::string_view section, std::string_view key, std::string_view otherwise,
                                   std::size_t limit) const;

private:
    std::string text_;
};

/// Larger files are no configuration and are not read.
inline constexpr std::size_t kProfileFileLimit = std::size_t{1} << 20;

} // namespace quillon
