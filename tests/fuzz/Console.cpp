// An operator, a line and time against a fresh application: each input is one short service visit.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "console/ctrQuillonConsole.h"
#include "link/TorvaneSerial.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"

namespace {

using namespace quillon;

constexpr std::size_t kLongest = 600;
constexpr Milliseconds kUnit = 50; // ms; a wait is 1 to 256 of them

/// Takes the input byte by byte; zeros behind its end.
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}
    [[nodiscard]] bool empty() const { return left_ == 0; }
    std::uint8_t next() { return left_ == 0 ? std::uint8_t{0} : (--left_, *data_++); }
    /// Up to the next line feed.
    std::string line() {
        std::string text;
        while (!empty()) {
            const auto byte = static_cast<char>(next());
            if (byte == '\n') {
                break;
            }
            text += byte;
        }
        return text;
    }

private:
    const std::uint8_t* data_;
    std::size_t left_;
};

/// Controls in a fixed order: of the console, of the link control, of the panels that are open.
Control* chosen(Application& application, std::size_t number) {
    std::vector<const ControlHost*> hosts{&application.console(), &application.link()};
    for (const char* key :
         {"SelWSCal", "SelWSAutocal", "AutocalSelFocusOrParameter", "AutocalWarning", "Error"}) {
        if (const ControlHost* panel = application.console().keyed(key)) {
            hosts.push_back(panel);
        }
    }
    std::vector<Control*> reachable;
    for (const ControlHost* host : hosts) {
        for (const auto& control : host->controls()) {
            if (application.input().reachable(*control)) {
                reachable.push_back(control.get());
            }
        }
    }
    return reachable.empty() ? nullptr : reachable[number % reachable.size()];
}

void touch(Application& application, Bytes& bytes, Control*& held) {
    Input& input = application.input();
    Control* control = chosen(application, bytes.next());
    if (control == nullptr) {
        return;
    }
    const std::uint8_t how = bytes.next();
    switch (control->kind()) {
    case Kind::TextBox:
        input.type(*control, bytes.line());
        break;
    case Kind::List:
        if (!control->items().empty()) {
            input.select(*control, std::string(control->items()[how % control->items().size()]));
        }
        break;
    case Kind::Slider:
        input.slide(*control, how);
        break;
    default:
        if (how % 4 == 0 && held == nullptr && control->host() == &application.link()) {
            held = control; // only panels go away while they are held, and these are none
            input.press(*control);
        } else {
            input.click(*control);
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > kLongest) {
        return -1;
    }
    Bytes bytes(data, size);
    MemoryPlatform machine;
    Application application(Platform{machine.time.schedule(), machine.time, machine.port, machine.store,
                                     machine.folder, machine.desktop, machine.power},
                            "-P1 -swsync -ORLA");
    application.start();
    machine.port.receive("ST2\r\n");
    machine.time.advance(12000);
    Control* held = nullptr;
    while (!bytes.empty() && !application.ended()) {
        switch (bytes.next() % 5) {
        case 0:
            machine.time.advance(kUnit * (1 + bytes.next()), [&application] { return application.ended(); });
            break;
        case 1:
            machine.port.receive(bytes.line() + "\r\n");
            break;
        case 2:
            machine.port.receive("AK\r\n");
            break;
        case 3:
            if (held != nullptr) {
                application.input().release(*held);
                held = nullptr;
                break;
            }
            [[fallthrough]];
        default:
            touch(application, bytes, held);
        }
    }
    return 0;
}
