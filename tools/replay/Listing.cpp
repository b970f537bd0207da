#include "Listing.h"

#include "Traffic.h"
#include "tools/words/Meanings.h"

namespace quillon {

bool mayAsk(std::string_view message) {
    const Meaning* meaning = meaningOf(Direction::Out, message);
    if (meaning == nullptr) {
        return true;
    }
    bool listed = false;
    for (const CommandRow& row : kCommands) {
        if (equalsNoCase(row.mnemonic, meaning->mnemonic)) {
            listed = true;
            if (row.acknowledge != AckRule::Never) {
                return true;
            }
        }
    }
    return (meaning->hasOtherSenders() || !listed) && meaning->acknowledge != AckRule::Never;
}

std::string listing(const Journal& journal) {
    std::string text = journal.recorded ? "A recording; times in ms are exact.\n"
                                        : "A log; it tells the order of the messages and no times.\n";
    text +=
        "Commands that the console held back for the present phase were never sent and are not in it.\n\n";
    Traffic traffic;
    for (const Entry& entry : journal.entries) {
        traffic.add(entry);
    }
    traffic.end();
    for (std::size_t number = 1; number <= traffic.size(); ++number) {
        text += rowText(traffic, number, journal.recorded) + "\n";
    }
    return text;
}

} // namespace quillon
