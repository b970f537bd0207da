#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Clock.h"
#include "shell/RecordingFolder.h"

namespace quillon {

/// The text of a session as it comes to lie in its folder, from one part to the next. Where parts are gone, a
/// gap is told.
class GrowingSession {
public:
    GrowingSession(std::filesystem::path folder, const RecordedSession& session);

    /// What has come since this was asked last: whole lines.
    [[nodiscard]] std::string more();

private:
    [[nodiscard]] bool beginPart();
    /// The part behind the one that is read; nothing while there is none.
    [[nodiscard]] std::optional<std::int64_t> next() const;
    void add(std::string_view bytes, std::string& lines);

    std::filesystem::path folder_;
    std::int64_t session_;
    std::vector<std::int64_t> known_; // parts, when it began
    std::int64_t part_;               // that is read
    std::ifstream file_;              // stays readable when its packed part takes its place
    std::string partial_;             // a line whose end is still to come
    Milliseconds time_ = 0;           // of the session, up to here
};

} // namespace quillon
