#pragma once

#include <cstdint>
#include <string_view>

#include "console/ServiceSession.h"

namespace quillon {

/// Errors of the generator on the console, the loss of the generator, and the key that resets them.
class ErrorReactions {
public:
    ErrorReactions(ConsoleContext& context, ServiceSession& session);

private:
    void generatorError(std::int16_t code, std::string_view description);
    void generatorLost();
    void aecError(std::int32_t code);
    void resetAcknowledged();
    void resetKey();
    void flash();
    void describe(Role rank, std::string_view words);
    void describeNothing();

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsoleScreen screen_;
    ConsoleState& state_;
    Control& lblErrorDescription_;
    Control& cmbResetError_;
    Timer& tmrError_;
};

} // namespace quillon
