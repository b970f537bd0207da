#pragma once

#include <string>

#include "console/ServiceSession.h"

namespace quillon {

/// Why a key would do nothing now. It says what a press would come to; it decides nothing, and no key is
/// enabled or disabled by it.
class KeyReasons {
public:
    KeyReasons(ConsoleContext& context, const ServiceSession& session)
        : context_(context), session_(session) {}

    /// The key is enabled, and a press would come to nothing.
    [[nodiscard]] bool blocks(const Control& key) const;
    /// Why a press comes to nothing, in the operator's language; empty where it does something.
    [[nodiscard]] std::string why(const Control& key) const;
    /// How long the key has to be held, in the operator's language; empty for one that acts at once.
    [[nodiscard]] std::string whyHeld(const Control& key) const;
    /// Something in front shuts it off: a panel, or a screen of its own.
    [[nodiscard]] static bool shutOff(const Control& key);

private:
    [[nodiscard]] Hindrance hindrance(const Control& key) const;
    [[nodiscard]] bool consoleKeyIsDead(const Control& key) const;
    [[nodiscard]] static std::string_view asks(Key key, Phase mode);
    [[nodiscard]] bool allowsInMode(Key key) const;
    [[nodiscard]] bool closeIsDead() const;
    [[nodiscard]] bool entryIsRefused(const Control& key) const;
    [[nodiscard]] std::string whyPhase() const;
    [[nodiscard]] std::string whyOf(Hindrance hindrance) const;
    [[nodiscard]] std::string whyState(const Control& key) const;

    ConsoleContext& context_;
    const ServiceSession& session_;
};

} // namespace quillon
