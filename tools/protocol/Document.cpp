#include "Document.h"

#include <algorithm>

#include "base/Text.h"
#include "link/InboundTable.h"
#include "link/LinkEvents.h"
#include "link/OutboundTable.h"
#include "tools/words/Meanings.h"

namespace quillon {

namespace {

constexpr std::string_view kHead = R"(# The protocol

Written by `quillon-protocol` from the tables of the program. Change those, then run
`quillon-protocol > docs/protocol.md`.

One RS-232 line, 19200 baud, 8 data bits, no parity, 1 stop bit. A message is a mnemonic with its value right
behind it. The console ends each message with CR LF ETX; the generator ends each with CR, and a frame of one or
more messages with LF or ETX. Which mnemonic a message begins with is decided by the longest one that fits.
)";

constexpr std::string_view kOutbound = R"(
## From the console to the generator

A message that the present phase does not allow is not sent; the event `WrongPhase` reports it. The last `RX1`, when the
console closes the port, is sent in every phase. The phases are listed in
[terms.md](terms.md#phases).

| Acknowledgement | Meaning |
|---|---|
| asked | The generator is to answer `AK`. Until it does the message is sent again, four times in all. |
| on request | Only when the caller asks for it. While `Handshaking` is on, as in the console, always. |
| no | Sent once. |

With `Handshaking` off a message in the row "asked" is sent once, too. A name in brackets sends this mnemonic only
then; otherwise it sends the one-step form (`BrightnessOneUp`: `BRU` for `BR+`). A step that asks for its
acknowledgement is executed again when only the `AK` was lost; see [safety.md](safety.md#what-remains).

| Mnemonic | Phases | Acknowledgement | Sent by | Meaning |
|---|---|---|---|---|
)";

constexpr std::string_view kInbound = R"(
## From the generator to the console

| Mnemonic | Handler | Events | Meaning |
|---|---|---|---|
)";

constexpr std::string_view kEvents = R"(
## Events of the link control

| No. | Event | Parameters | Raised by |
|---|---|---|---|
)";

/// Collects pieces with a mark between them, each once.
class List {
public:
    void add(std::string_view piece) {
        if (!piece.empty() && std::ranges::find(pieces_, piece) == pieces_.end()) {
            pieces_.emplace_back(piece);
        }
    }
    [[nodiscard]] std::string text(std::string_view mark = ", ") const {
        std::string all;
        for (const std::string& piece : pieces_) {
            all.append(all.empty() ? "" : mark).append(piece);
        }
        return all;
    }
    [[nodiscard]] bool empty() const { return pieces_.empty(); }

private:
    std::vector<std::string> pieces_;
};

std::string code(std::string_view text) {
    return text.empty() ? std::string() : "`" + std::string(text) + "`";
}

std::string row(std::initializer_list<std::string> cells) {
    std::string line = "|";
    for (const std::string& cell : cells) {
        line += (cell.empty() ? " " : " " + cell + " ") + "|";
    }
    return line + "\n";
}

static_assert(std::ranges::all_of(kInboundTable,
                                  [](const InboundRow& row) {
                                      return meanings::knows(Direction::In, row.key);
                                  }),
              "each message of the generator has its meaning");

std::string meaningText(const Meaning* meaning) {
    if (meaning == nullptr) {
        return {};
    }
    std::string text(meaning->name);
    if (!meaning->unit.empty()) {
        text += " (" + std::string(meaning->unit) + ")";
    }
    return text;
}

std::string phasesText(std::int16_t mask) {
    if (mask == kAllPhases) {
        return "all";
    }
    List phases;
    for (int phase = 1; phase <= kPhaseCount; ++phase) {
        if ((mask >> (phase - 1) & 1) != 0) {
            phases.add(std::to_string(phase));
        }
    }
    return phases.text();
}

std::string_view ackText(AckRule rule) {
    switch (rule) {
    case AckRule::Never:
        return "no";
    case AckRule::Handshaking:
        return "asked";
    case AckRule::Caller:
        return "on request";
    }
    return {};
}

/// Names in code, brackets kept, everything that begins with "the" as it stands.
void addNames(List& list, std::string_view names) {
    for (const std::string_view name : split(names, ", ")) {
        if (name.starts_with('(')) {
            list.add("(" + code(name.substr(1, name.size() - 2)) + ")");
        } else {
            list.add(name.starts_with("the ") ? std::string(name) : code(name));
        }
    }
}

std::string outboundRow(std::string_view mnemonic, std::int16_t phases) {
    List senders;
    List acknowledgement;
    for (const CommandRow& command : kCommands) {
        if (equalsNoCase(command.mnemonic, mnemonic)) {
            senders.add(code(command.name));
            acknowledgement.add(ackText(command.acknowledge));
        } else if (!command.plain.empty() && equalsNoCase(command.plain, mnemonic)) {
            senders.add("(" + code(command.name) + ")");
        }
    }
    const Meaning* meaning = meanings::find(Direction::Out, mnemonic);
    if (meaning != nullptr) {
        addNames(senders, meaning->related);
        acknowledgement.add(meaning->hasOtherSenders() ? ackText(meaning->acknowledge) : "");
    }
    return row({code(mnemonic), phasesText(phases), acknowledgement.text(" or "),
                senders.empty() ? "nobody" : senders.text(), meaningText(meaning)});
}

std::string inboundRow(std::string_view mnemonic, std::string_view handler) {
    const Meaning* meaning = meanings::find(Direction::In, mnemonic);
    List events;
    if (meaning != nullptr) {
        addNames(events, meaning->related);
    }
    return row({code(mnemonic), std::string(handler), events.text(), meaningText(meaning)});
}

/// The messages and the other things that raise an event.
std::string sourcesOf(std::string_view event) {
    List sources;
    for (const Meaning& meaning : meanings::kTable) {
        const auto events = split(meaning.related, ", ");
        if (meaning.direction == Direction::In && std::ranges::find(events, event) != events.end()) {
            sources.add(code(meaning.mnemonic));
        }
    }
    for (const OtherSource& other : otherEventSources()) {
        if (other.event == event) {
            sources.add(other.source);
        }
    }
    return sources.text();
}

} // namespace

const std::vector<OtherSource>& otherEventSources() {
    // clang-format off
    static const std::vector<OtherSource> kSources{
        {"CannotOpenPort",           "opening the port"},
        {"KVPCINEChangeValue",       "the receiver, while values come in binary"},
        {"MSDSIChangeValue",         "the receiver, while values come in binary"},
        {"AECDensityChange",         "a held density key"},
        {"GeneratorERROR",           "the poll, when nothing answers"},
        {"MessageProtocolError",     "nothing"},
        {"WarningMessageReset",      "3 s without a new warning"},
        {"AutocalibrationDismiss",   "a key of the panel"},
        {"AutocalibrationConfirm",   "a key of the panel"},
        {"WrongPhase",               "a message that the phase does not allow"},
    };
    // clang-format on
    return kSources;
}

std::string protocolDocument() {
    std::string text(kHead);
    text += kOutbound;
    for (const OutboundRow& out : kOutboundTable) {
        text += outboundRow(out.mnemonic, out.phases);
    }
    text += outboundRow("ER?", kAllPhases); // sent past the table
    text += kInbound;
    for (const InboundRow& in : kInboundTable) {
        text += inboundRow(in.key, code(in.handler));
    }
    text += inboundRow("PDK", "the host's `PostdisplayKVP`");
    text += kEvents;
    LinkEvents events;
    events.forEach([&text](int number, std::string_view name, std::string_view parameters, const auto&) {
        text += row({std::to_string(number), code(name), std::string(parameters), sourcesOf(name)});
    });
    return text;
}

} // namespace quillon
