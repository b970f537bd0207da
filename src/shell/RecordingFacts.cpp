#include "shell/RecordingFacts.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <numeric>

#include "shell/RecordingReader.h"

namespace quillon {

namespace {

constexpr Milliseconds kSameVisit = Milliseconds{15} * 60'000;

constexpr std::array<std::string_view, 4> kPresses{"press ", "type ", "select ", "slide "};

/// The word that a text begins with, which is taken off.
std::string_view takeWord(std::string_view& text) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(text.size(), word.size() + 1));
    return word;
}

std::optional<WallTime> later(const std::optional<WallTime>& time, Milliseconds ms) {
    return time ? std::optional(WallTime{time->sinceEpoch + ms, time->offset}) : std::nullopt;
}

/// What tells one device of the port from another: the adapter's own name where it has one, as its path
/// depends on when it was plugged in; else the path that the installation names.
std::string_view adapterOf(std::string_view device) {
    const auto name = device.rfind(", ");
    return name != std::string_view::npos ? device.substr(name) : device.substr(0, device.find(" = "));
}

} // namespace

RecordingFacts factsOf(std::string_view recording) {
    RecordingFacts facts;
    std::optional<WallTime> told;
    Milliseconds toldAt = 0;
    forEachRecordedLine(recording, [&](std::string_view line) {
        facts.length += recordedTime(line);
        facts.spoke = facts.spoke || line.starts_with("rx ");
        facts.gaps += line.starts_with("gap ") ? 1 : 0;
        facts.presses +=
            std::ranges::any_of(kPresses, [line](std::string_view word) { return line.starts_with(word); })
                ? 1
                : 0;
        if (!line.starts_with("# ")) {
            return;
        }
        line.remove_prefix(2);
        const Milliseconds at = std::atoll(std::string(takeWord(line)).c_str());
        const std::string_view what = takeWord(line);
        if (what == "clock") {
            told = wallTimeOf(line);
            toldAt = at;
            facts.begun = facts.begun ? facts.begun : later(told, -at);
        } else if (what == "port") {
            facts.device = line;
        }
    });
    facts.ended = later(told, facts.length - toldAt);
    return facts;
}

std::size_t visitBegin(std::size_t end, const FactsOfSession& facts) {
    const auto belongs = [](const RecordingFacts& earlier, const RecordingFacts& next) {
        return earlier.ended && next.begun && adapterOf(earlier.device) == adapterOf(next.device) &&
               std::abs(next.begun->sinceEpoch - earlier.ended->sinceEpoch) <= kSameVisit;
    };
    std::size_t first = end - 1;
    while (facts(end - 1).spoke && first > 0 && belongs(facts(first - 1), facts(first))) {
        --first;
    }
    return first;
}

std::vector<std::size_t> visitAmong(std::size_t sessions, const FactsOfSession& facts, int visit) {
    for (std::size_t end = sessions; end > 0;) {
        const bool spoke = facts(end - 1).spoke;
        std::size_t first = visitBegin(end, facts);
        if (spoke && --visit == 0) {
            std::vector<std::size_t> found(end - first);
            std::iota(found.begin(), found.end(), first);
            return found;
        }
        end = first;
    }
    return {};
}

} // namespace quillon
