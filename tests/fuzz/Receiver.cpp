// The line as the generator's end could ever use it: the receiver, the decoder, every handler, and the
// console behind them. Each input has an application of its own, so that a stored one shows again what it
// showed once; what leads through several states stands in one input.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"

namespace {

using namespace quillon;

constexpr std::size_t kLongest = 4096;
constexpr Milliseconds kBetween = 100;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > kLongest) {
        return -1;
    }
    MemoryPlatform machine;
    machine.folder.put("error_info.txt", "12=Door open=1\r\n13=Rotor=2\r\n");
    Application application{Platform{machine.time.schedule(), machine.time, machine.port, machine.store,
                                     machine.folder, machine.desktop, machine.power},
                            "-P1 -swsync"};
    application.start();
    // This byte, which no message has, is a pause of the line.
    std::string_view rest{reinterpret_cast<const char*>(data), size};
    while (!rest.empty()) {
        const auto end = rest.find('\x1e');
        machine.port.receive(rest.substr(0, end));
        machine.port.receive("\r\n");
        machine.time.advance(kBetween);
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    machine.time.advance(kBetween);
    return 0;
}
