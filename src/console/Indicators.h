#pragma once

#include <string>

#include "runtime/Signal.h"

namespace quillon {

class Control;
class Exposures;
class GeneratorSummary;
class KeyReasons;
class PendingKeys;
class SessionErrors;
class StatusLine;
class UnsavedValue;
struct ConsoleTexts;

/// The box that holds, or held, the value; and what it takes.
using RefusedValues = Signal<const Control*, std::string>;

/// What the screen shows beside the controls. A front end reads it, paints it, and is told of changes by each
/// part's own signal; nothing of it can be reached, named or replaced like a control.
struct Indicators {
    GeneratorSummary& summary;
    SessionErrors& errors;
    Exposures& exposures;
    PendingKeys& pending;
    KeyReasons& reasons;
    UnsavedValue& unsaved;
    StatusLine& status;
    RefusedValues& refused;
    const ConsoleTexts& texts; ///< words for states that are otherwise only painted
};

} // namespace quillon
