#include "link/OutboundTable.h"

#include <algorithm>

#include "base/Fault.h"
#include "base/Text.h"

namespace quillon {

std::int16_t phasesOf(std::string_view mnemonic) {
    const auto row = std::find_if(kOutboundTable.begin(), kOutboundTable.end(), [&](const OutboundRow& each) {
        return equalsNoCase(each.mnemonic, mnemonic);
    });
    if (row == kOutboundTable.end()) {
        throw Fault(Fault::kNotFound);
    }
    return row->phase;
}

} // namespace quillon
