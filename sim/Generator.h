#pragma once

#include "sim/Commands.h"
#include "sim/Gauges.h"
#include "sim/Options.h"
#include "sim/Outbox.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

class Assembly;

/// A generator as the console sees it: bytes in, bytes out. It has no clock of its own; everything happens
/// at the times it is given, which must not run backwards.
class Generator {
public:
    using Output = std::function<void(std::string_view bytes)>;

    /// Powers up at `nowMs`.
    Generator(Options options, Output output, std::int64_t nowMs);
    ~Generator();
    Generator(Generator&&) noexcept;
    Generator& operator=(Generator&&) noexcept;

    /// Bytes from the console.
    void receive(std::string_view bytes, std::int64_t nowMs);

    /// Does the first thing that is due up to `nowMs`; false when there is none.
    bool step(std::int64_t nowMs);

    /// Does everything due up to `nowMs`, in order.
    void advance(std::int64_t nowMs);

    /// When `advance` wants to be called next.
    [[nodiscard]] std::optional<std::int64_t> nextDue() const;

    /// As they are now: faults among them may have been set since the start.
    [[nodiscard]] const Options& options() const;

    /// What its gauges and lamps show.
    [[nodiscard]] Gauges gauges() const;

    /// Told of what passes: frames with what became of them, messages with theirs.
    struct Watch {
        std::function<void(std::string_view text, Verdict verdict)> frame;
        std::function<void(std::string_view text, Outbox::Fate fate)> message;
    };
    void watch(Watch watch);

    /// One command of its console. The answer may be empty; an error begins with '?'.
    std::string command(std::string_view line, std::int64_t nowMs);
    [[nodiscard]] static std::string commandsHelp();

private:
    struct Wires;

    void feed(std::string_view bytes);
    void send();
    void put(std::string_view bytes);

    std::unique_ptr<Assembly> assembly_;
    std::unique_ptr<Wires> wires_;
    Output output_;
};

} // namespace simulator
