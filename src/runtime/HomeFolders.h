#pragma once

#include <filesystem>

namespace quillon {

/// Where the program's small files lie: read from one folder, written to another or the same.
struct HomeFolders {
    std::filesystem::path read;
    std::filesystem::path written;
};

/// What QUILLON_HOME names; else as homeOf() says.
[[nodiscard]] HomeFolders homeFolders(const std::filesystem::path& program);
/// The directory of an executable, if the installation lies there or can be made there; the user's own
/// folders.
[[nodiscard]] HomeFolders homeOf(const std::filesystem::path& program);
/// The folder that recordings are written to.
[[nodiscard]] std::filesystem::path recordingsFolder(const HomeFolders& home);

} // namespace quillon
