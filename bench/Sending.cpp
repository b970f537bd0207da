// The road of a command, and a console that nobody touches.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <benchmark/benchmark.h>

#include "link/OutboundTable.h"
#include "link/SendPath.h"
#include "link/TorvaneSerial.h"
#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"
#include "shell/cGeneratorError.h"
#include "sim/Generator.h"

namespace quillon {

namespace {

/// The link control with an open port and no poll.
struct Link {
    MemoryPlatform machine;
    cGeneratorError errorTable{machine.folder};
    TorvaneSerialV3_07_QLC1 link{{machine.time.schedule(), machine.port, machine.store, machine.folder,
                                  machine.desktop, errorTable, ""}};

    Link() { link.setPortOpen(true); }
};

void enqueueAndTick(benchmark::State& state) {
    Link line;
    std::int64_t sent = 0;
    line.machine.port.onWritten = [&sent](std::string_view) { ++sent; };
    for ([[maybe_unused]] const auto turn : state) {
        line.link.SendMessage("KV+", kAllPhases);
        line.machine.time.advance(SendPath::kTimeout);
        line.machine.port.takeWritten();
    }
    if (sent < state.iterations()) {
        state.SkipWithError("not every message went out");
    }
    state.SetItemsProcessed(sent);
}
BENCHMARK(enqueueAndTick);

/// A message that waits at the far end of a long queue is found there and not queued again.
void enqueueWhatWaitsLast(benchmark::State& state) {
    Link line;
    constexpr int kWaiting = SendQueue::kCapacity - 1;
    for (int number = 0; number < kWaiting; ++number) {
        line.link.SendMessage("CV" + std::to_string(number), kAllPhases);
    }
    const std::string last = "CV" + std::to_string(kWaiting - 1);
    for ([[maybe_unused]] const auto turn : state) {
        line.link.SendMessage(last, kAllPhases);
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(enqueueWhatWaitsLast);

/// The whole application and a generator that answers its poll, in virtual time.
class IdleConsole {
public:
    IdleConsole() {
        machine_.port.onWritten = [this](std::string_view bytes) {
            ++frames_;
            generator_->receive(bytes, machine_.time.now());
            wakeGenerator();
        };
        simulator::Options options;
        options.startPhase = Phase::NormalOperation;
        generator_ = std::make_unique<simulator::Generator>(
            options, [this](std::string_view bytes) { answer(bytes); }, machine_.time.now());
        application_.start();
        wakeGenerator();
    }
    ~IdleConsole() { machine_.port.onWritten = {}; }
    IdleConsole(const IdleConsole&) = delete;
    IdleConsole& operator=(const IdleConsole&) = delete;

    void wait(Milliseconds ms) { machine_.time.advance(ms); }
    [[nodiscard]] std::int64_t frames() const { return frames_; }
    [[nodiscard]] std::int64_t answers() const { return answers_; }

private:
    void answer(std::string_view bytes) {
        machine_.time.schedule().post(0, [this, text = std::string(bytes)] {
            ++answers_;
            machine_.port.receive(text);
        });
    }

    void wakeGenerator() {
        const auto due = generator_->nextDue();
        if (!due || (wake_ && *wake_ <= *due)) {
            return;
        }
        wake_ = due;
        machine_.time.schedule().post(*due - machine_.time.now(), [this, at = *due] {
            if (wake_ == at) {
                wake_.reset();
                generator_->advance(machine_.time.now());
                wakeGenerator();
            }
        });
    }

    std::int64_t frames_ = 0;
    std::int64_t answers_ = 0;
    std::optional<Milliseconds> wake_;
    MemoryPlatform machine_;
    std::unique_ptr<simulator::Generator> generator_;
    Application application_{Platform{machine_.time.schedule(), machine_.time, machine_.port, machine_.store,
                                      machine_.folder, machine_.desktop, machine_.power},
                             ""};
};

void idleHour(benchmark::State& state) {
    constexpr Milliseconds kHour = 3600 * 1000;
    IdleConsole console;
    console.wait(60 * 1000);
    const std::int64_t framesBefore = console.frames();
    const std::int64_t answersBefore = console.answers();
    for ([[maybe_unused]] const auto turn : state) {
        console.wait(kHour);
    }
    // One poll in 1350 ms, each answered.
    const std::int64_t expected = state.iterations() * kHour / 1400;
    if (console.frames() - framesBefore < expected || console.answers() - answersBefore < expected) {
        state.SkipWithError("the poll or its answers stopped");
    }
    state.counters["days_per_second"] =
        benchmark::Counter(static_cast<double>(state.iterations()) / 24, benchmark::Counter::kIsRate);
}
BENCHMARK(idleHour)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace quillon
