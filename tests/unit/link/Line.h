#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "link/TorvaneSerial.h"
#include "runtime/MemoryPlatform.h"

namespace quillon {

/// A frame that went out and when.
struct Sent {
    Milliseconds at;
    std::string text;
    bool operator==(const Sent&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const Sent& sent) {
    return out << sent.at << " \"" << sent.text << "\"";
}

/// The link control alone on a line of memory. The poll is off unless a test turns it on.
struct Line {
    MemoryPlatform machine;
    TorvaneSerialV3_07_QLC1 link;
    std::vector<Sent> sent;
    std::vector<std::string> events; ///< "name(arguments)" of every event, in order

    explicit Line(std::string commandLine = "", std::string tempIni = "")
        : link({machine.time.schedule(), machine.port, machine.store, withFile(machine.folder, tempIni),
                machine.desktop, std::move(commandLine)}) {
        machine.port.onWritten = [this](std::string_view bytes) {
            EXPECT_TRUE(bytes.ends_with("\r\n\x03"));
            sent.push_back({machine.time.now(), std::string(bytes.substr(0, bytes.size() - 3))});
        };
        link.events().forEach([this](int, std::string_view name, std::string_view, auto& signal) {
            signal.observe([this, name](const auto&... arguments) {
                std::ostringstream line;
                line << name << '(';
                [[maybe_unused]] const char* separator = "";
                ((line << separator << arguments, separator = ", "), ...);
                line << ')';
                events.push_back(line.str());
            });
        });
    }

    void open() { link.setPortOpen(true); }
    void wait(Milliseconds ms) { machine.time.advance(ms); }
    void hear(std::string_view message) { machine.port.receive(std::string(message) + "\r\n"); }
    void send(std::string_view text, std::int16_t phases = 16383, bool acknowledged = false) {
        link.SendMessage(text, phases, acknowledged);
    }
    /// What went out since the last call.
    std::vector<Sent> takeSent() { return std::exchange(sent, {}); }
    std::vector<std::string> takeEvents() { return std::exchange(events, {}); }

private:
    static Folder& withFile(MemoryFolder& folder, const std::string& tempIni) {
        if (!tempIni.empty()) {
            folder.put("temp.ini", tempIni);
        }
        return folder;
    }
};

using Sends = std::vector<Sent>;
using Names = std::vector<std::string>;

} // namespace quillon
