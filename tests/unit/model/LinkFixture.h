#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>

#include "base/Numbers.h"
#include "link/TorvaneSerial.h"
#include "runtime/MemoryPlatform.h"
#include "shell/cGeneratorError.h"
#include "ui/Input.h"

namespace quillon {

/// The link control on an open line in virtual time, with a record of what it sends and of the events that it
/// raises. The poll is off, so that only what a test does is sent; events are on.
class LinkTest : public testing::Test {
protected:
    explicit LinkTest(std::string commandLine = "");

    /// One message of the generator.
    void msg(std::string_view text) { platform.port.receive(std::string(text) + "\r\n"); }
    /// The generator reports a phase, and what that sends and raises is forgotten.
    void phase(int number) {
        msg("ST" + decimalText(number));
        settle();
        forget();
    }
    /// What a field shows after a message.
    const std::string& captionAfter(std::string_view message, std::string_view field) {
        msg(message);
        return caption(field);
    }
    /// What a message alone has raised.
    const std::vector<std::string>& eventsAfter(std::string_view message) {
        forget();
        msg(message);
        return events;
    }
    void advance(Milliseconds ms) { platform.time.advance(ms); }
    /// Whatever waits to be sent is sent, and all its tries have run out.
    void settle() { advance(20000); }
    /// What happened since the last call.
    std::vector<std::string> takeEvents() { return std::exchange(events, {}); }
    std::vector<std::string> takeTimeline() { return std::exchange(timeline, {}); }
    void forget() {
        sent.clear();
        timeline.clear();
        events.clear();
        begin = platform.time.now();
    }

    [[nodiscard]] Control& control(std::string_view name) const { return link.ControlHost::at(name); }
    [[nodiscard]] Control& control(std::string_view name, int index) const {
        return link.ControlHost::at(name, index);
    }
    [[nodiscard]] const std::string& caption(std::string_view name) const { return control(name).caption(); }
    [[nodiscard]] bool visible(std::string_view name) const { return control(name).visible(); }
    [[nodiscard]] bool active(std::string_view name) const {
        return control(name).backColour() == kActiveColour;
    }
    void click(std::string_view name) {
        ASSERT_TRUE(input.press(control(name))) << name << " cannot be reached";
        input.release(control(name));
    }
    void call(std::string_view operation, std::initializer_list<Value> arguments = {}) const {
        link.operations().call(operation, arguments);
    }
    template <typename T> [[nodiscard]] T get(std::string_view property) const {
        return valueTo<T>(link.operations().get(property));
    }
    void put(std::string_view property, const Value& value) const { link.operations().set(property, value); }

    MemoryPlatform platform;
    cGeneratorError errorTable{platform.folder};
    Input input;
    ControlHost form{Kind::Form, "frm", platform.time.schedule()};
    TorvaneSerialV3_07_QLC1& link;
    std::vector<std::string> sent;     ///< frames without their end bytes
    std::vector<std::string> timeline; ///< the same with the time since forget(), as "350 ST"
    std::vector<std::string> events;   ///< as "Name(1, True, "text")"
    Milliseconds begin = 0;

private:
    TorvaneSerialV3_07_QLC1& made(std::string commandLine);
};

} // namespace quillon
