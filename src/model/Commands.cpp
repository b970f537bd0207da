#include "model/Commands.h"

#include <algorithm>
#include <limits>
#include <string>

#include "base/Fault.h"
#include "base/Numbers.h"
#include "link/OutboundTable.h"

namespace quillon {

namespace {

using enum ValueForm;

constexpr std::int16_t kAutocalibrationTimeout = 1000;

std::string inForm(ValueForm form, const Value& value) {
    switch (form) {
    case None:
        return {};
    case Plain:
        return decimalText(valueTo<std::int32_t>(value));
    case Next:
        return decimalText(valueTo<std::int16_t>(value) + 1);
    case Digits2:
        return fixedDigits(valueTo<std::int16_t>(value), 2);
    case Digits3:
        return fixedDigits(valueTo<std::int16_t>(value), 3);
    case Digits4:
        return fixedDigits(valueTo<std::int16_t>(value), 4);
    case Signed:
        return signedText(valueTo<std::int32_t>(value));
    case Switch:
        return valueTo<bool>(value) ? "1" : "0";
    case Text:
        return valueTo<std::string>(value);
    }
    return {};
}

/// As far as a time-out goes.
std::int16_t twice(std::int16_t interval) {
    using Limits = std::numeric_limits<std::int16_t>;
    return static_cast<std::int16_t>(std::clamp<int>(interval * 2, Limits::min(), Limits::max()));
}

/// A value that can't be converted as it has to be is the caller's fault.
template <typename Conversion> auto accepted(Conversion convert) {
    try {
        return convert();
    } catch (const Fault&) {
        throw Fault(Fault::kArgumentsRefused);
    }
}

} // namespace

Commands::Commands(const LinkState& state, SendPath& send, Operations& operations)
    : state_(state), send_(send) {
    for (const CommandRow& row : kCommands) {
        operations.addAny(row.name, [this, &row](std::span<const Value> arguments) -> std::optional<Value> {
            sendRow(row, arguments);
            return std::nullopt;
        });
    }
}

void Commands::sendRow(const CommandRow& row, std::span<const Value> arguments) const {
    const std::size_t values = row.value == None ? 0 : 1;
    const std::size_t most = values + (row.acknowledge == AckRule::Caller ? 1 : 0);
    if (arguments.size() < values || arguments.size() > most) {
        throw Fault(Fault::kArgumentsRefused);
    }
    const bool asked =
        arguments.size() > values && accepted([&] { return valueTo<bool>(arguments[values]); });
    const bool acknowledge = row.acknowledge != AckRule::Never && (state_.Handshaking || asked);
    const std::string_view mnemonic = state_.Handshaking || row.plain.empty() ? row.mnemonic : row.plain;

    std::string message(mnemonic);
    message.append(row.suffix);
    if (values > 0) {
        message.append(accepted([&] { return inForm(row.value, arguments[0]); }));
    }
    const std::int16_t phases = phasesOf(mnemonic);
    switch (row.urgency) {
    case Urgency::Normal:
        send_.SendMessage(message, phases, acknowledge);
        break;
    case Urgency::ModeChange:
        send_.SendMessage(message, phases, acknowledge, twice(state_.RetriesInterval));
        break;
    case Urgency::Autocalibration:
        send_.SendMessage(message, phases, acknowledge, kAutocalibrationTimeout, true);
        break;
    }
}

} // namespace quillon
