#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace quillon {

/// Whether this build packs and unpacks.
[[nodiscard]] bool canPack();

/// Packs a text that comes in pieces into a member of a gzip file.
class Packer {
public:
    Packer();
    ~Packer();
    Packer(const Packer&) = delete;
    Packer& operator=(const Packer&) = delete;

    /// What the file gets for it now, which may be nothing yet.
    [[nodiscard]] std::string add(std::string_view text) { return run(text, false); }
    /// The rest of the file.
    [[nodiscard]] std::string finish() { return run({}, true); }

private:
    struct Stream;
    std::string run(std::string_view text, bool last);
    std::unique_ptr<Stream> stream_;
};

struct Unpacked {
    std::string text;
    bool whole = true; ///< false: the file is cut or broken, or the text longer than the limit
};

/// The text of a gzip file, of all its members; any other content is taken as it is.
[[nodiscard]] Unpacked unpacked(std::string_view content, std::size_t limit = std::size_t{1} << 31U);

} // namespace quillon
