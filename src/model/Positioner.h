#pragma once

#include <string_view>

#include "model/ModelContext.h"

namespace quillon {

/// The answers of a remote positioner, which the generator relays under one mnemonic.
class Positioner {
public:
    explicit Positioner(ModelContext& context);

private:
    /// Leaves every sub-message but its own three to the host: another positioner talks under the same
    /// mnemonic.
    void fmessURS(std::string_view value);

    LinkEvents& events_;
};

} // namespace quillon
