#include <gmock/gmock.h>

#include <optional>
#include <set>
#include <string>

#include "base/Text.h"
#include "link/InboundTable.h"
#include "link/LinkEvents.h"
#include "link/OutboundTable.h"
#include "link/TorvaneSerial.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"
#include "tools/protocol/Document.h"
#include "tools/words/Meanings.h"

namespace quillon {
namespace {

using Names = std::set<std::string>;

Names namesIn(std::string_view list) {
    Names names;
    for (const std::string_view name : split(list, ", ")) {
        if (!name.empty()) {
            names.emplace(name);
        }
    }
    return names;
}

class ProtocolTest : public testing::Test {
protected:
    ProtocolTest()
        : application(Platform{machine.time.schedule(), machine.time, machine.port, machine.store,
                               machine.folder, machine.desktop, machine.power},
                      "") {
        application.start();
    }

    MemoryPlatform machine;
    Application application;
};

/// Every message in every operating phase with all sorts of values: what it raises must be what is told of
/// it, and all that is told must be seen.
TEST_F(ProtocolTest, MessagesRaiseTheEventsThatAreToldOfThem) {
    Names seen;
    application.link().events().forEach(
        [&]<typename... A>(int, std::string_view name, std::string_view, Signal<A...>& signal) {
            signal.observe([&seen, name = std::string(name)](const A&...) { seen.insert(name); });
        });
    const auto receive = [this](const std::string& message) { machine.port.receive(message + "\r\n"); };
    for (const Meaning& meaning : meanings::kTable) {
        if (meaning.direction == Direction::Out) {
            continue;
        }
        const std::string mnemonic(meaning.mnemonic);
        Names raised;
        for (const char* phase : {"ST1", "ST2", "ST6", "ST8", "ST9", "ST7"}) {
            receive(phase);
            receive("MD8");
            for (std::string value : {"", "1", "0", "5", "11", "10", "21", "99", "L12", "E02", "120",
                                      "123-02", "100 12.5 0050", "2", "?CG1", "?RQ1234", "?SG0012"}) {
                if (value.starts_with('?')) { // letters would make another mnemonic of most
                    value.erase(0, mnemonic == "URS" ? 1 : value.size());
                }
                seen.clear();
                receive(mnemonic + value);
                raised.merge(Names(seen));
            }
        }
        raised.erase("WrongPhase"); // of what the console sends on it
        Names told = namesIn(meaning.related);
        if (mnemonic == "ST") {
            told.erase("GeneratorERROR"); // only after a long silence
        }
        EXPECT_EQ(raised, told) << mnemonic;
    }
}

} // namespace
} // namespace quillon
