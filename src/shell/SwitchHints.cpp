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

bool isKnown(std::string_view piece) {
    return std::any_of(kKnown.begin(), kKnown.end(), [piece](const KnownSwitch& known) {
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
    bool first = true;
    for (const std::string_view part : split(commandLine, "-")) {
        const std::string_view piece = trimRight(part);
        if (first && !piece.empty()) {
            hints.push_back("\"" + std::string(piece) + "\" is no switch: they begin with a hyphen");
        } else if (!piece.empty() && !isKnown(piece)) {
            hints.push_back(hintFor(piece));
        }
        first = false;
    }
    return hints;
}

} // namespace quillon
