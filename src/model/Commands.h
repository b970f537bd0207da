#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

#include "link/LinkState.h"
#include "link/SendPath.h"
#include "runtime/Operations.h"

namespace quillon {

/// When a command asks for an acknowledgement.
enum class AckRule : std::uint8_t {
    Never,
    Handshaking, ///< when Handshaking is on
    Caller,      ///< when Handshaking is on, or else as its last argument says, which may be left out
};

/// What stands behind the mnemonic: the command's first argument in the form that the generator wants.
enum class ValueForm : std::uint8_t {
    None,
    Plain,   ///< a whole number as plain decimal text
    Next,    ///< the number plus one
    Digits2, ///< exactly so many digits
    Digits3,
    Digits4,
    Signed, ///< blank or minus first
    Switch, ///< "1" or "0"
    Text,   ///< as given
};

/// How long it waits for its acknowledgement, and whether it throws away what waits before it.
enum class Urgency : std::uint8_t {
    Normal,
    ModeChange,      ///< twice the retries interval
    Autocalibration, ///< 1000 ms, and at once
};

/// A command that only sends.
struct CommandRow {
    std::string_view name;
    std::string_view mnemonic; ///< as its mask is looked up
    std::string_view plain;    ///< mnemonic while Handshaking is off; empty for the same one
    std::string_view suffix;   ///< what always stands behind the mnemonic, in front of the value
    ValueForm value;
    AckRule acknowledge;
    Urgency urgency = Urgency::Normal;
};

/// Sends the commands of the table, by row or by name.
class Commands {
public:
    /// Adds all commands to the operations. Arguments: the value, if the form has one, then WithACK for
    /// Caller.
    Commands(const LinkState& state, SendPath& send, Operations& operations);

    /// Fault 5 for a name that is not in the table, 450 for wrong arguments.
    void send(std::string_view name, std::initializer_list<Value> arguments = {}) const;

    /// The whole table, for whoever documents or checks it.
    [[nodiscard]] static std::span<const CommandRow> table();

private:
    void send(const CommandRow& row, std::span<const Value> arguments) const;

    const LinkState& state_;
    SendPath& send_;
};

} // namespace quillon
