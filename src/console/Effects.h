#pragma once

#include <cstdint>

#include "console/ConsoleKeys.h"

namespace quillon {

/// The status poll, which is off while a workflow holds it. Parked: it stays off after the workflow's end, up
/// to the next value, preparation, message or workflow.
enum class Poll : std::uint8_t { Stays, Held, Free, OffUntilReport, Resumed };
/// The event Busy: 1 when a workflow takes the console, 0 when it gives it back; Settled raises 0 only if it
/// is due.
enum class Busy : std::uint8_t { Stays, Taken, Given, Settled };
enum class Prompt : std::uint8_t { Stays, Cleared };
/// The caption of cmbClose.
enum class Caption : std::uint8_t { Stays, Close, Exit };
/// Whether the generator may make X-rays ("RX1", "RX0"). Given back: as soon as the phase allows the command.
enum class Rx : std::uint8_t { Stays, On, Off, GivenBack };

/// What a step of a workflow gives to the operator or the generator, and what it takes. Anything that it does
/// not name stays as it is.
struct Effects {
    Keys on{};     ///< enabled
    Keys off{};    ///< disabled
    Keys atRest{}; ///< in the colour of a key at rest
    Keys active{}; ///< in the colour of the mode that runs
    Poll poll = Poll::Stays;
    Busy busy = Busy::Stays;
    Prompt prompt = Prompt::Stays;
    Caption caption = Caption::Stays;
    Rx rx = Rx::Stays;
};

/// Those that more than one workflow uses; the others stand in the workflow's own file.
namespace effects {

using namespace keys;

inline constexpr Effects kPollFree{.poll = Poll::Free};
inline constexpr Effects kXRaysAllowed{.rx = Rx::On};
inline constexpr Effects kFrameTaken{.off = F};
inline constexpr Effects kCloseOffered{.on = X, .prompt = Prompt::Cleared, .caption = Caption::Close};
inline constexpr Effects kErrorReported{.on = E};
inline constexpr Effects kClosingBegins{.poll = Poll::Held, .rx = Rx::On};
inline constexpr Effects kCancelled{
    .on = X, .poll = Poll::Free, .busy = Busy::Settled, .prompt = Prompt::Cleared};
inline constexpr Effects kCancelledByExposure{
    .poll = Poll::Free, .busy = Busy::Settled, .prompt = Prompt::Cleared};

} // namespace effects

} // namespace quillon
