#include "sim/Generator.h"

#include "sim/Assembly.h"
#include "sim/Desk.h"
#include "sim/Line.h"

#include <algorithm>
#include <utility>

namespace simulator {

/// Both directions of the line.
struct Generator::Wires {
    explicit Wires(const Options& options) : fromConsole(options), toConsole(options) {}

    Line fromConsole;
    Line toConsole;
};

Generator::Generator(Options options, Output output, std::int64_t nowMs)
    : assembly_(std::make_unique<Assembly>(std::move(options))),
      wires_(std::make_unique<Wires>(assembly_->machine.options)), output_(std::move(output)) {
    Machine& machine = assembly_->machine;
    machine.setNow(nowMs);
    assembly_->tube.setPercent(machine.options.heatPercent);
    assembly_->powerOn();
    machine.outbox.release(nowMs);
}

Generator::~Generator() = default;
Generator::Generator(Generator&&) noexcept = default;
Generator& Generator::operator=(Generator&&) noexcept = default;

void Generator::receive(std::string_view bytes, std::int64_t nowMs) {
    advance(nowMs);
    if (wires_->fromConsole.paced()) {
        wires_->fromConsole.put(bytes, nowMs);
    } else {
        feed(bytes);
    }
}

void Generator::feed(std::string_view bytes) {
    if (assembly_->machine.phase() != kOff) {
        if (!assembly_->plug.passes(assembly_->machine.now())) {
            return;
        }
        assembly_->parser.receive(bytes, assembly_->machine.now(),
                                  [this](std::string_view text) { assembly_->takeFrame(text); });
    }
}

bool Generator::step(std::int64_t nowMs) {
    Machine& machine = assembly_->machine;
    const auto due = nextDue();
    if (!due || *due > nowMs) {
        return false;
    }
    machine.setNow(std::max(machine.now(), *due));
    if (wires_->fromConsole.nextDue() == due) {
        feed(wires_->fromConsole.take(machine.now()));
    } else if (wires_->toConsole.nextDue() == due) {
        put(wires_->toConsole.take(machine.now()));
    } else if (machine.outbox.nextDue() == due) {
        send();
    } else {
        machine.agenda.takeNext()();
        machine.outbox.release(machine.now());
    }
    return true;
}

void Generator::advance(std::int64_t nowMs) {
    while (step(nowMs)) {
    }
    assembly_->machine.setNow(std::max(assembly_->machine.now(), nowMs));
}

void Generator::send() {
    const std::string bytes = assembly_->machine.outbox.takeNext();
    if (wires_->toConsole.paced()) {
        wires_->toConsole.put(bytes, assembly_->machine.now());
    } else if (!bytes.empty()) {
        put(bytes);
    }
}

void Generator::put(std::string_view bytes) {
    if (assembly_->plug.passes(assembly_->machine.now())) {
        output_(bytes);
    }
}

std::optional<std::int64_t> Generator::nextDue() const {
    std::optional<std::int64_t> first;
    for (const auto& due : {assembly_->machine.outbox.nextDue(), assembly_->machine.agenda.nextDue(),
                            wires_->fromConsole.nextDue(), wires_->toConsole.nextDue()}) {
        if (due && (!first || *due < *first)) {
            first = due;
        }
    }
    return first;
}

std::string Generator::command(std::string_view line, std::int64_t nowMs) {
    advance(nowMs);
    std::string answer = carryOut(*assembly_, line);
    assembly_->machine.outbox.release(assembly_->machine.now());
    if (assembly_->machine.phase() == kOff) {
        wires_->fromConsole.clear();
        wires_->toConsole.clear();
    }
    return answer;
}

const Options& Generator::options() const {
    return assembly_->machine.options;
}

Gauges Generator::gauges() const {
    return readGauges(*assembly_);
}

void Generator::watch(Watch watch) {
    assembly_->onFrame = std::move(watch.frame);
    assembly_->machine.outbox.onMessage = [assembly = assembly_.get(), told = std::move(watch.message)](
                                              std::string_view text, Outbox::Fate fate) {
        const bool leaves = fate == Outbox::Fate::Sent || fate == Outbox::Fate::Garbled;
        const bool heard = !leaves || assembly->plug.passes(assembly->machine.now());
        if (told) {
            told(text, heard ? fate : Outbox::Fate::Unheard);
        }
    };
}

std::string Generator::commandsHelp() {
    return deskHelp();
}

} // namespace simulator
