// The table of error descriptions. The input is the file.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "runtime/MemoryPlatform.h"
#include "shell/cGeneratorError.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon;
    MemoryFolder folder;
    folder.put("error_info.txt", {reinterpret_cast<const char*>(data), size});
    cGeneratorError table(folder);
    table.Setup("error_info.txt");
    for (const int code : {-1, 0, 1, 12, 33, 32767, 2147483647}) {
        const int type = table.ErrorType(code);
        if (type < 0 || type > 3 || table.Description(code).find('\t') != std::string::npos) {
            std::abort();
        }
        if (code == 0 && (type != 3 || !table.Description(code).empty())) {
            std::abort();
        }
    }
    return 0;
}
