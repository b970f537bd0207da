#pragma once

#include <cstdint>
#include <string_view>

#include "model/ErrorTable.h"
#include "model/ModelContext.h"

namespace quillon {

struct WarningLamp;

/// What is wrong at the generator: its errors, the short warnings that mark technique fields, the lamps for
/// conditions that last, and the reset.
class ErrorsAndWarnings {
public:
    /// `errors` knows the words for the error codes.
    ErrorsAndWarnings(ModelContext& context, const ErrorTable& errors);

    /// Forgets the error and asks the generator to do the same.
    void ResetError(bool WithACK = false);

private:
    void fmessERROR(std::string_view value);
    void fmessWarningMessage(std::string_view value);
    void fmessWarningRatingPercentage(std::string_view value);
    void fmessERRORAEC(std::string_view value);
    void fmessLamp(const WarningLamp& lamp, std::string_view value, Control& label);

    void clearWarning();
    void reportWarning(std::int32_t code);
    void startBlinking();
    void warningTick();

    ModelContext& context_;
    LinkState& link_;
    GeneratorState& state_;
    const ErrorTable& errors_;
    Control& lblWarning_;
    Control& cmbTM3_;
    Control& Iconized_;
    Timer& tmrWarning_;
    Timer& tmrBlinking_;
    Timer& tmrBlinkingOff_;
};

} // namespace quillon
