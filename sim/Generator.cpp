#include "sim/Generator.h"

#include "sim/Assembly.h"
#include "sim/Desk.h"

#include <algorithm>

namespace simulator {

Generator::Generator(Options options, Output output, std::int64_t nowMs)
    : assembly_(std::make_unique<Assembly>(std::move(options))), output_(std::move(output)) {
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
    if (assembly_->machine.phase() != 0) {
        assembly_->parser.receive(bytes, nowMs,
                                  [this](std::string_view text) { assembly_->takeFrame(text); });
    }
}

void Generator::advance(std::int64_t nowMs) {
    Machine& machine = assembly_->machine;
    while (const auto due = nextDue()) {
        if (*due > nowMs) {
            break;
        }
        machine.setNow(std::max(machine.now(), *due));
        if (machine.outbox.nextDue() == due) {
            if (const std::string bytes = machine.outbox.takeNext(); !bytes.empty()) {
                output_(bytes);
            }
        } else {
            machine.agenda.takeNext()();
            machine.outbox.release(machine.now());
        }
    }
    machine.setNow(std::max(machine.now(), nowMs));
}

std::optional<std::int64_t> Generator::nextDue() const {
    const auto message = assembly_->machine.outbox.nextDue();
    const auto action = assembly_->machine.agenda.nextDue();
    if (message && action) {
        return std::min(*message, *action);
    }
    return message ? message : action;
}

std::string Generator::command(std::string_view line, std::int64_t nowMs) {
    advance(nowMs);
    std::string answer = carryOut(*assembly_, line);
    assembly_->machine.outbox.release(assembly_->machine.now());
    return answer;
}

std::string Generator::commandsHelp() {
    return deskHelp();
}

} // namespace simulator
