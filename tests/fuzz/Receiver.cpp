// The line as the generator's end could ever use it: the receiver, the decoder, every handler, and the
// console behind them. The application lives on from input to input, so that states follow one another as
// they do in service, and is made anew from time to time.

#include <cstddef>
#include <cstdint>
#include <memory>

#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"

namespace {

using namespace quillon;

constexpr std::size_t kLongest = 1024;
constexpr int kInputsOfOneLife = 5000;
constexpr Milliseconds kBetween = 100;

struct Life {
    MemoryPlatform machine;
    Application application{Platform{machine.time.schedule(), machine.time, machine.port, machine.store,
                                     machine.folder, machine.desktop, machine.power},
                            "-P1 -swsync"};
    int inputs = 0;

    Life() {
        machine.folder.put("error_info.txt", "12=Door open=1\r\n13=Rotor=2\r\n");
        application.start();
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::unique_ptr<Life> life;
    if (life == nullptr || ++life->inputs > kInputsOfOneLife) {
        life = std::make_unique<Life>();
    }
    if (size > kLongest) {
        return -1;
    }
    life->machine.port.receive({reinterpret_cast<const char*>(data), size});
    life->machine.port.receive("\r\n");
    life->machine.time.advance(kBetween);
    (void)life->machine.port.takeWritten();
    return 0;
}
