#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "console/ServiceSession.h"
#include "runtime/Signal.h"

namespace quillon {

/// An error of this session.
struct SessionError {
    Milliseconds at;   ///< on the schedule's clock
    std::int16_t code; ///< 0 where the generator gives none
    std::string words;
};

/// What has ended an error.
enum class ErrorEnd : std::uint8_t {
    ResetAcknowledged,
    AnotherPhase, ///< the generator reports a phase that is none of an error
    AnotherError,
};

/// When an error is one, and when it is over. One that goes on, or is reported once more, is one.
class SessionErrors {
public:
    SessionErrors(ConsoleContext& context, const ServiceSession& session);

    Signal<SessionError> began;
    Signal<ErrorEnd> over; ///< of the one that stands

private:
    void note(std::int16_t code, std::string_view words);
    void end(ErrorEnd end);

    ConsoleContext& context_;
    std::int16_t standing_ = 0; ///< the code that has not been reset
};

} // namespace quillon
