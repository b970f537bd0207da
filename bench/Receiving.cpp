// The road of a message: from bytes to its handler, and through the whole link control.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

#include "Allocations.h"
#include "base/Numbers.h"
#include "link/FrameReceiver.h"
#include "link/InboundTable.h"
#include "link/MessageDecoder.h"
#include "link/TorvaneSerial.h"
#include "runtime/MemoryPlatform.h"
#include "shell/cGeneratorError.h"

namespace quillon {

namespace {

/// What comes in about a second of work in Ready: polls answered, settings stepped, an exposure.
constexpr std::array<std::string_view, 20> kMix{
    "ST2",    "AK",       "HE012", "AK",  "KV080", "KVS081", "MA050", "MAS0500", "MS010", "MSS0125",
    "MX0063", "MXS062.5", "FO2",   "PS1", "ST3",   "PR1",    "XR1",   "XR0",     "PS0",   "ST2"};

struct Traffic {
    std::string bytes;
    std::int64_t messages = 0;
    bool known = true; ///< its messages have handlers that come to an end

    void add(std::string_view message, std::string_view end) {
        bytes.append(message).append(end);
        ++messages;
    }
};

/// A frame a message, as the generator sends it.
Traffic realistic() {
    Traffic traffic;
    for (const std::string_view message : kMix) {
        traffic.add(message, "\r\n");
    }
    return traffic;
}

/// The longest frame that is taken at all, full of one message. The receiver loses a byte in 512.
Traffic longestFrameOf(std::string_view message) {
    Traffic traffic;
    while (traffic.bytes.size() + message.size() + 1 < FrameReceiver::kLongestFrame) {
        traffic.add(message, "\r");
    }
    traffic.bytes += '\n';
    return traffic;
}

Traffic unhandled(Traffic traffic) {
    traffic.known = false;
    return traffic;
}

/// Receiver and decoder; each handler turns its value into a number, as most of them begin.
struct BareRoad {
    LinkEvents events;
    MessageDecoder decoder;
    FrameReceiver receiver{events, [this](std::string_view frame) { decoder.DecodeMessages(frame); }};
    double sum = 0;
    std::int64_t handled = 0;

    BareRoad() {
        for (const InboundRow& row : kInboundTable) {
            decoder.bind(row.handler, [this](std::string_view value) {
                ++handled;
                if (isNumeric(value)) {
                    sum += toInt32(value);
                }
            });
        }
    }
    void receive(const std::string& bytes) { receiver.receive(bytes); }
};

/// The link control with its model and its panel, on a line of memory.
struct WholeLink {
    MemoryPlatform machine;
    cGeneratorError errorTable{machine.folder};
    TorvaneSerialV3_07_QLC1 link{{machine.time.schedule(), machine.port, machine.store, machine.folder,
                                  machine.desktop, errorTable, ""}};

    std::int64_t handled = 0; ///< phases and heats that reached the host

    WholeLink() {
        link.events().GeneratorPhaseChange.connect([this](Phase) { ++handled; });
        link.events().HUUpdate.connect([this](const auto&...) { ++handled; });
        link.setEventEnabled(true);
        link.setPortOpen(true);
    }
    void receive(const std::string& bytes) { machine.port.receive(bytes); }
};

template <typename Road> void receive(benchmark::State& state, const Traffic& traffic) {
    Road road;
    road.receive(traffic.bytes); // buffers get their size
    const std::uint64_t before = allocationCount();
    if (before == 0) {
        state.SkipWithError("allocations are not counted");
    }
    for ([[maybe_unused]] const auto turn : state) {
        road.receive(traffic.bytes);
    }
    if (traffic.known && road.handled == 0) {
        state.SkipWithError("nothing reached a handler");
    }
    const auto allocations = static_cast<double>(allocationCount() - before);
    const std::int64_t messages = state.iterations() * traffic.messages;
    state.SetItemsProcessed(messages);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(traffic.bytes.size()));
    state.counters["allocations_per_message"] = allocations / static_cast<double>(messages);
}

void bareRoad(benchmark::State& state, const Traffic& traffic) {
    receive<BareRoad>(state, traffic);
}

void wholeLink(benchmark::State& state, const Traffic& traffic) {
    receive<WholeLink>(state, traffic);
}

BENCHMARK_CAPTURE(bareRoad, mix, realistic());
BENCHMARK_CAPTURE(bareRoad, worst_frame_unknown, unhandled(longestFrameOf("ZZZZZZ")));
BENCHMARK_CAPTURE(bareRoad, worst_frame_known, longestFrameOf("KV080"));
BENCHMARK_CAPTURE(wholeLink, mix, realistic());
BENCHMARK_CAPTURE(wholeLink, worst_frame_unknown, unhandled(longestFrameOf("ZZZZZZ")));
// A number that does not fit ends its handler with a fault.
BENCHMARK_CAPTURE(wholeLink, worst_frame_faults, unhandled(longestFrameOf("HE99999999999")));

} // namespace

} // namespace quillon
