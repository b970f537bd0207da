#include "LinkFixture.h"

namespace quillon {
namespace {

std::string shown(const std::string& text) {
    return '"' + text + '"';
}
std::string shown(const auto& value) {
    return valueTo<std::string>(toValue(value));
}

} // namespace

// Here and not in the header: to listen to every event costs seconds to compile.
LinkTest::LinkTest(std::string commandLine) : link(made(std::move(commandLine))) {
    link.events().forEach(
        [this]<typename... A>(int, std::string_view name, std::string_view, Signal<A...>& signal) {
            signal.connect([this, name = std::string(name)](const A&... arguments) {
                std::string list;
                ((list += (list.empty() ? "" : ", ") + shown(arguments)), ...);
                events.push_back(name + "(" + list + ")");
            });
        });
    platform.port.onWritten = [this](std::string_view bytes) {
        constexpr std::string_view kEnd = "\r\n\x03";
        ASSERT_TRUE(bytes.ends_with(kEnd));
        sent.emplace_back(bytes.substr(0, bytes.size() - kEnd.size()));
        timeline.push_back(decimalText(static_cast<double>(platform.time.now() - begin)) + " " + sent.back());
    };
    link.setPortOpen(true);
    link.setEventEnabled(true);
}

TorvaneSerialV3_07_QLC1& LinkTest::made(std::string commandLine) {
    const TorvaneSerialV3_07_QLC1::Context context{platform.time.schedule(), platform.port,    platform.store,
                                                   platform.folder,          platform.desktop, errorTable,
                                                   std::move(commandLine)};
    auto made = std::make_unique<TorvaneSerialV3_07_QLC1>(context);
    TorvaneSerialV3_07_QLC1& control = *made;
    form.adopt(std::move(made));
    return control;
}

} // namespace quillon
