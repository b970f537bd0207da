#include "ScenarioWriter.h"

#include "base/ScenarioText.h"
#include "tools/words/Words.h"

namespace quillon {

namespace {

// The console's own pace when nobody touches it.
constexpr Milliseconds kSendDelay = 350;  // from the request to the frame
constexpr Milliseconds kPollDelay = 1350; // from frame to frame while the console only polls
constexpr Milliseconds kAnswerDelay = 40;

constexpr std::string_view kHead =
    R"(# Made from a communication log by quillon-replay.
# It holds what the generator said, word by word and in order: the console's screen, events and state follow
# as they did. The log has no times, so those here are assumed: 40 ms to an answer, 350 ms to a frame that
# follows another, 1350 ms to a poll. Nor does it hold what the operator did, so only what the console sends by
# itself goes out again. Lines behind # tell what it sent then; where such a frame was a key's doing, put
# the key in front of it (click Quillon.cmbConfiguration), or its command (call Configuration True).
start
)";

bool isPoll(std::string_view frame) {
    return frame == "ST" || frame == "HU";
}

std::string waitLine(Milliseconds ms) {
    return ms > 0 ? "wait " + std::to_string(ms) + "\n" : std::string();
}

} // namespace

std::string scenarioOf(const Journal& log) {
    std::string text(kHead);
    Milliseconds sinceFrame = 0;
    for (const Entry& entry : log.entries) {
        if (entry.kind == Entry::Kind::Note) {
            text += "# " + scenarioText(entry.text) + "\n";
        } else if (entry.kind != Entry::Kind::Received) {
            // A device that took nothing changed nothing of the console's pace.
            const bool sent = entry.kind == Entry::Kind::Sent;
            text += waitLine((isPoll(entry.text) ? kPollDelay : kSendDelay) - sinceFrame);
            text += (sent ? "# tx " : "# lost ") + scenarioText(entry.text) + "  " +
                    explained(Direction::Out, entry.text) + "\n";
            sinceFrame = 0;
        } else {
            text += waitLine(kAnswerDelay);
            text += "rx " + scenarioText(entry.text + "\r\n") + "\n";
            sinceFrame += kAnswerDelay;
        }
    }
    return text + waitLine(kSendDelay);
}

} // namespace quillon
