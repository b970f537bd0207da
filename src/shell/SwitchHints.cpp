#include "shell/SwitchHints.h"

#include <algorithm>
#include <array>

#include "base/Text.h"

namespace quillon {

namespace {

struct KnownSwitch {
    std::string_view name;
    bool exact;    ///< capitals matter
    bool anywhere; ///< also at the beginning of a longer word
};

// clang-format off
constexpr std::array kKnown{
    KnownSwitch{"P",             true,  true},
    KnownSwitch{"S",             true,  true},
    KnownSwitch{"FitToScreen",   true,  false},
    KnownSwitch{"ResetCounters", true,  false},
    KnownSwitch{"ORLA",          true,  false},
    KnownSwitch{"logFile",       false, true},
    KnownSwitch{"swsync",        false, true},
    KnownSwitch{"d",             false, true},
};
// clang-format on

bool startsWith(std::string_view piece, const KnownSwitch& known) {
    const std::string_view head = piece.substr(0, known.name.size());
    return known.exact ? head == known.name : equalsNoCase(head, known.name);
}

/// What stands in front of the first hyphen counts as well, but for those that are looked for with theirs.
bool isKnown(std::string_view piece, bool first) {
    return std::any_of(kKnown.begin(), kKnown.end(), [piece, first](const KnownSwitch& known) {
        if (first && !known.exact) {
            return false;
        }
        const bool fits = piece.size() == known.name.size() || (known.exact && known.anywhere);
        return fits && startsWith(piece, known);
    });
}

std::string hintFor(std::string_view piece) {
    std::string given = "\"-" + std::string(piece) + "\" is no switch";
    for (const KnownSwitch& known : kKnown) {
        if (!known.exact && startsWith(piece, known)) {
            return given + ", and is taken for -" + std::string(known.name);
        }
        if (known.exact && known.name.size() > 1 && equalsNoCase(piece, known.name)) {
            return given + "; it is written -" + std::string(known.name);
        }
    }
    return given;
}

} // namespace

std::vector<std::string> switchHints(std::string_view commandLine) {
    std::vector<std::string> hints;
    const auto pieces = split(commandLine, "-");
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const std::string_view piece = trimRight(pieces[i]);
        const bool first = i == 0;
        // Without any hyphen there are no switches at all.
        if (piece.empty() || (pieces.size() > 1 && isKnown(piece, first))) {
            continue;
        }
        hints.push_back(first ? inQuotes(piece) + " is no switch: they begin with a hyphen" : hintFor(piece));
    }
    return hints;
}

} // namespace quillon
