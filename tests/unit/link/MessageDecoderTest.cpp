#include "link/MessageDecoder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/Fault.h"
#include "link/InboundTable.h"
#include "link/OutboundTable.h"
#include "tests/unit/base/Faults.h"

namespace quillon {
namespace {

struct Decoder {
    Handlers handlers;
    MessageDecoder decoder{handlers};
    Operations host;
    std::vector<std::string> calls;
    int heard = 0;
    int handled = 0;
    std::string taken;

    Decoder() {
        for (const InboundRow& row : kInboundTable) {
            decoder.bind(row.handler, [this, &row](std::string_view value) {
                calls.push_back(std::string(row.handler) + " " + std::string(value));
            });
        }
        decoder.setNotices({.heard = [this] { ++heard; },
                            .handled = [this] { ++handled; },
                            .taken =
                                [this](std::string_view key, std::string_view value, bool known) {
                                    taken +=
                                        std::string(key) + "=" + std::string(value) + (known ? " " : "? ");
                                }});
    }
};

using Calls = std::vector<std::string>;

TEST(MessageDecoder, TheLongestPrefixThatIsAKeyWins) {
    struct Row {
        std::string text;
        Calls calls;
    };
    const Row rows[] = {
        {"KVS120", {"fmessKVPDisplay 120"}},
        {"KV120", {"fmessKVPValue 120"}},
        {"FLMAS5", {"fmessFlMADisplay 5"}},
        {"FLMA5", {"fmessFlMA 5"}},
        {"FLM1", {"fmessFlMAG 1"}},
        {"AK", {"fmessMessageAcknowledge "}},
        {"RX?", {"fmessRXEnableRequest "}},
        {"RX1", {"fmessRXEnable 1"}},
        {"st2", {"fmessGeneratorPhase 2"}},
        {"DOA123-02", {"fmessAccumulatedDose 123-02"}},
        {"\x01ST2", {}},
        {"12345", {}},
        {"ST2\r\rHE10\r", {"fmessGeneratorPhase 2", "fmessHU 10"}},
        {"\r", {}},
    };
    for (const Row& row : rows) {
        Decoder line;
        line.decoder.DecodeMessages(row.text);
        EXPECT_EQ(line.calls, row.calls) << row.text;
        EXPECT_EQ(line.handled, static_cast<int>(row.calls.size())) << row.text;
        EXPECT_EQ(line.heard > 0, row.text != "\r") << row.text;
    }
}

TEST(MessageDecoder, EveryKeyIsItsOwnAndEveryHandlerHasARow) {
    EXPECT_EQ(kInboundTable.size(), 85u);
    EXPECT_EQ(kOutboundTable.size(), 128u);
    for (const InboundRow& row : kInboundTable) {
        Decoder line;
        line.decoder.DecodeMessages(row.key);
        EXPECT_EQ(line.calls, Calls{std::string(row.handler) + " "}) << row.key;
    }
    Decoder line;
    EXPECT_EQ(faultOf([&] { line.decoder.bind("fmessNobody", {}); }), Fault::kNoSuchName);
}

TEST(MessageDecoder, OnlyTheNotFoundFaultSendsAMessageOnToTheHost) {
    Decoder line;
    Calls host;
    line.host.add("fmessOrla",
                  [&host](std::string_view value) { host.push_back("orla " + std::string(value)); });
    line.host.add("PostdisplayKVP", [&host](std::string_view value) {
        host.push_back("pdk " + std::string(value));
        throw Fault(Fault::kTypeMismatch);
    });
    line.decoder.AddParentMessage(line.host, "fmessOrla", "URS");
    line.decoder.AddParentMessage(line.host, "PostdisplayKVP", "PDK");

    EXPECT_EQ(faultOf([&] { line.decoder.AddParentMessage(line.host, "fmessOrle", "URS"); }),
              Fault::kNoSuchName);

    line.decoder.DecodeMessages("URSCG1,2,\r");
    EXPECT_EQ(line.calls, Calls{"fmessURS CG1,2,"});
    EXPECT_TRUE(host.empty());

    // The longer key of the host wins over the shorter one of the own table, and its fault ends with it.
    line.decoder.DecodeMessages("PDK80\r");
    EXPECT_EQ(host, Calls{"pdk 80"});
    EXPECT_EQ(line.handled, 1);

    line.decoder.bind("fmessURS", [](std::string_view) { throw Fault(Fault::kNotFound); });
    line.decoder.DecodeMessages("URSPS+0001234\r");
    EXPECT_EQ(host.back(), "orla PS+0001234");
    EXPECT_EQ(line.handled, 1);

    // Any other fault ends the handler; the message counts as handled and the next one is served.
    line.decoder.bind("fmessHU", [](std::string_view) { throw Fault(Fault::kOverflow); });
    line.decoder.DecodeMessages("HE99999\rST2\r");
    EXPECT_EQ(line.calls.back(), "fmessGeneratorPhase 2");
    EXPECT_EQ(line.handled, 3);
    line.decoder.DecodeMessages("Q=1\r");
    EXPECT_EQ(line.taken, "URS=CG1,2, PDK=80 URS=PS+0001234 HE=99999 ST=2 Q=1=? ") << "each once, at its end";
}

} // namespace
} // namespace quillon
