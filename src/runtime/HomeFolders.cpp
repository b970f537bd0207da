#include "runtime/HomeFolders.h"

#include <cstdlib>
#include <string>

#ifdef _WIN32
#include <io.h>
#else
#include <unistd.h>
#endif

namespace quillon {

namespace {

namespace fs = std::filesystem;

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

/// As the desktop's rules for such folders have it: a relative path counts for none.
fs::path userFolder(const char* name, const char* below) {
#ifdef _WIN32
    const char* const home = "USERPROFILE";
#else
    const char* const home = "HOME";
#endif
    const fs::path named(variable(name));
    return named.is_absolute() ? named : fs::path(variable(home)) / below;
}

bool writable(const fs::path& folder) {
#ifdef _WIN32
    return ::_waccess(folder.c_str(), 2) == 0;
#else
    return ::access(folder.c_str(), W_OK) == 0;
#endif
}

} // namespace

HomeFolders homeFolders(const fs::path& program) {
    const std::string home = variable("QUILLON_HOME");
    return home.empty() ? homeOf(program) : HomeFolders{home, home};
}

HomeFolders homeOf(const fs::path& program) {
    std::error_code error;
    if (fs::exists(program / "Quillon.ini", error) || writable(program)) {
        return {program, program};
    }
    return {userFolder("XDG_CONFIG_HOME", ".config") / "quillon",
            userFolder("XDG_STATE_HOME", ".local/state") / "quillon"};
}

fs::path recordingsFolder(const HomeFolders& home) {
    return fs::absolute(home.written) / "recordings";
}

} // namespace quillon
