#include "sim/Commands.h"

#include "sim/Formats.h"

#include <algorithm>

namespace simulator {

namespace {

bool fits(Takes takes, const Request& request) {
    switch (takes) {
    case Takes::Nothing:
        return request.argument.empty();
    case Takes::Number:
        return request.number.has_value();
    case Takes::NumberOrNothing:
        return request.argument.empty() || request.number.has_value();
    case Takes::Text:
        return true;
    }
    return false;
}

} // namespace

Verdict CommandTable::run(std::string_view text, Phase phase) const {
    std::size_t longest = 0;
    for (const Entry& entry : entries_) {
        if (text.starts_with(entry.mnemonic)) {
            longest = std::max(longest, entry.mnemonic.size());
        }
    }
    if (longest == 0) {
        return Verdict::Unknown;
    }
    const std::string_view mnemonic = text.substr(0, longest);
    const std::string_view argument = text.substr(longest);
    Request request{argument, numberIn(argument), 0};
    for (const Entry& entry : entries_) {
        if (entry.mnemonic == mnemonic && entry.phases.has(phase)) {
            request.amount = entry.amount;
            return fits(entry.takes, request) && entry.handler(request) ? Verdict::Taken
                                                                        : Verdict::BadArgument;
        }
    }
    return Verdict::WrongPhase;
}

} // namespace simulator
