#include "model/ReportedSwitches.h"

#include "base/Numbers.h"

namespace quillon {

void bindSwitches(ModelContext& context, std::span<const SwitchRow> rows) {
    for (const SwitchRow& row : rows) {
        Control& key = context.panel[row.key];
        context.decoder.bind(row.handler, [&context, &row, &key](std::string_view value) {
            bool& member = context.state.*row.member;
            if (!isNumeric(value)) {
                return;
            }
            if (toBoolean(value) == member) {
                confirmState(key);
                return;
            }
            member = !member;
            if (context.link.EventEnabled) {
                (context.events.*row.event).raise(member);
            }
            key.setBackColour(member ? row.on : row.off);
        });
    }
}

} // namespace quillon
