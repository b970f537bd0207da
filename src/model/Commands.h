#pragma once

#include <initializer_list>
#include <span>
#include <type_traits>

#include "link/LinkState.h"
#include "link/SendPath.h"
#include "model/CommandTable.h"
#include "runtime/Operations.h"

namespace quillon {

/// Sends the commands of the table.
class Commands {
public:
    /// Adds all commands to the operations. Arguments: the value, if the form has one, then WithACK for
    /// Caller.
    Commands(const LinkState& state, SendPath& send, Operations& operations);

    /// Name and arguments are checked while compiling: send(command("Workstation"), 3).
    template <typename... Arguments>
    void send(CommandFor<std::type_identity_t<Arguments>...> command, const Arguments&... arguments) const {
        const std::initializer_list<Value> values{toValue(arguments)...};
        sendRow(command.row(), std::span(values.begin(), values.size()));
    }

private:
    void sendRow(const CommandRow& row, std::span<const Value> arguments) const;

    const LinkState& state_;
    SendPath& send_;
};

} // namespace quillon
