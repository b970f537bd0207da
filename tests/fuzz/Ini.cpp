// Files of sections and keys. The input is the file; what is looked up is a key that the system reads.

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "link/LinkSettings.h"
#include "runtime/MemoryPlatform.h"
#include "runtime/ProfileFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon;
    const std::string text(reinterpret_cast<const char*>(data), size);
    const ProfileFile file(text);
    constexpr std::array<std::array<std::string_view, 2>, 4> kKeys{
        {{"CONFIG", "PORT"}, {"CONFIG", "Width"}, {"PORTS", "COM1"}, {"Extended", "E01"}}};
    for (const auto& [section, key] : kKeys) {
        for (const std::size_t limit : {std::size_t{0}, std::size_t{7}, std::size_t{255}}) {
            const std::string value = file.read(section, key, "otherwise", limit);
            if (value.size() > limit || value.find('\n') != std::string::npos) {
                std::abort();
            }
        }
    }
    MemoryFolder folder;
    folder.put("temp.ini", text);
    (void)InstallationFacts::read(folder);
    return 0;
}
