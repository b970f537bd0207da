#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Numbers.h"
#include "link/TorvaneSerial.h"
#include "runtime/MemoryPlatform.h"
#include "ui/Input.h"

namespace quillon {

/// A report of the generator, what the field then shows, and what the host has heard.
struct Report {
    std::string_view message;
    std::string_view field;
    std::string_view caption;
    std::vector<std::string> events;
};

/// The whole link control on a form, with its port open, the poll off, and all that leaves it written down:
/// frames on the line and events to the host.
class LinkBench {
public:
    using Entry = std::pair<Milliseconds, std::string>;

    LinkBench()
        : link(dynamic_cast<TorvaneSerialV3_07_QLC1&>(form.adopt(std::make_unique<TorvaneSerialV3_07_QLC1>(
              TorvaneSerialV3_07_QLC1::Context{platform.time.schedule(),
                                               platform.port,
                                               platform.store,
                                               platform.folder,
                                               platform.desktop,
                                               {}})))) {
        platform.port.onWritten = [this](std::string_view bytes) {
            frames.emplace_back(now(), bytes.substr(0, bytes.find('\r')));
        };
        link.events().forEach([this](int, std::string_view name, std::string_view, auto& signal) {
            signal.connect([this, name](const auto&... arguments) {
                std::string text(name);
                ((text += " " + shown(arguments)), ...);
                events.emplace_back(now(), text);
            });
        });
        link.setEventEnabled(true);
        link.setPortOpen(true);
    }

    [[nodiscard]] Milliseconds now() const { return platform.time.now(); }
    void wait(Milliseconds ms) { platform.time.advance(ms); }
    void receive(std::string_view message) { platform.port.receive(std::string(message) + "\r\n"); }
    void receive(std::initializer_list<std::string_view> messages) {
        for (const std::string_view message : messages) {
            receive(message);
        }
    }
    /// Receives messages and waits until everything they led to is over and forgotten.
    void prepare(std::initializer_list<std::string_view> messages) {
        receive(messages);
        settle();
    }
    void settle() {
        wait(10000);
        frames.clear();
        events.clear();
    }

    /// The frames that leave within the next seconds.
    [[nodiscard]] std::vector<std::string> sentSoon() {
        frames.clear();
        wait(3000);
        return texts(std::exchange(frames, {}));
    }
    [[nodiscard]] std::vector<std::string> takeEvents() { return texts(std::exchange(events, {})); }

    /// The finger goes down on a key, wherever its page is.
    bool press(std::string_view key) {
        Control& control = link[key];
        for (Control* at = &control; at != nullptr; at = at->container()) {
            at->setVisible(true);
        }
        return input.press(control);
    }
    void release(std::string_view key) { input.release(link[key]); }
    void hold(std::string_view key, Milliseconds ms) {
        press(key);
        wait(ms);
        release(key);
    }

    [[nodiscard]] std::string caption(std::string_view name) const { return link[name].caption(); }
    [[nodiscard]] bool lit(std::string_view name, std::optional<int> index = std::nullopt) const {
        return link.at(name, index).backColour() == kActiveColour;
    }

    MemoryPlatform platform;
    ControlHost form{Kind::Form, "frm", platform.time.schedule()};
    TorvaneSerialV3_07_QLC1& link;
    Input input;
    std::vector<Entry> frames;
    std::vector<Entry> events;

private:
    static std::string shown(const std::string& text) { return '"' + text + '"'; }
    static std::string shown(bool value) { return value ? "True" : "False"; }
    static std::string shown(std::int32_t value) { return decimalText(value); }

    static std::vector<std::string> texts(std::vector<Entry> entries) {
        std::vector<std::string> all;
        for (Entry& entry : entries) {
            all.push_back(std::move(entry.second));
        }
        return all;
    }
};

/// Receives the reports one after the other.
inline void expectReports(LinkBench& bench, const std::vector<Report>& reports) {
    for (const Report& report : reports) {
        bench.receive(report.message);
        EXPECT_EQ(bench.caption(report.field), report.caption) << report.message;
        EXPECT_EQ(bench.takeEvents(), report.events) << report.message;
    }
}

} // namespace quillon
