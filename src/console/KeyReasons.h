#pragma once

#include <string>

#include "console/ServiceSession.h"

namespace quillon {

/// Why a key would do nothing now. It only describes the effect of a press: no key is enabled or disabled by
/// it.
class KeyReasons {
public:
    KeyReasons(ConsoleContext& context, const ServiceSession& session)
        : context_(context), session_(session) {}

    /// The key is enabled, but a press would have no effect.
    [[nodiscard]] bool blocks(const Control& key) const;
    /// Why a press has no effect, in the operator's language; empty if it has one.
    [[nodiscard]] std::string why(const Control& key) const;
    /// How long the key has to be held, in the operator's language; empty for one that acts at once.
    [[nodiscard]] std::string whyHeld(const Control& key) const;
    /// A panel in front of it, or an open screen of a positioner, disables it.
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
