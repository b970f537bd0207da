#pragma once

namespace quillon {

class Exposures;
class Glance;
class KeyReasons;
class PendingKeys;
class StatusLine;
class UnsavedValue;
struct ConsoleTexts;

/// What the screen shows beside the controls. A front end reads it, paints it, and is told of changes by each
/// part's own signal; nothing of it can be reached, named or replaced like a control.
struct Signs {
    Glance& glance;
    Exposures& exposures;
    PendingKeys& pending;
    KeyReasons& reasons;
    UnsavedValue& unsaved;
    StatusLine& status;
    const ConsoleTexts& texts; ///< the words for what looks tell
};

} // namespace quillon
