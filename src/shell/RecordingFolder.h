#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// The files of a folder by name, with their sizes.
struct FoundFile {
    std::string name;
    std::int64_t bytes;
};
using FileList = std::vector<FoundFile>;

/// The file that keeps two programs from removing recordings at once.
inline constexpr std::string_view kRecordingsLock = "lock";

/// A session's recording is written in parts, "000123.000.scn" and so on, and a part that is complete is
/// packed: "000123.000.scn.gz". Numbers tell the order, whatever the PC's clock does.
struct RecordingPart {
    std::int64_t number; ///< from 0
    bool packed;
    std::string name;
    std::int64_t bytes;
};

struct RecordedSession {
    std::int64_t number;
    std::vector<RecordingPart> parts; ///< in order, one of each number: the packed one where there are two

    [[nodiscard]] std::int64_t bytes() const;
};

[[nodiscard]] std::string sessionName(std::int64_t session);
[[nodiscard]] std::string partName(std::int64_t session, std::int64_t part, bool packed = false);
/// The session that a file belongs to, whatever is left of it; -1 for a file of another kind.
[[nodiscard]] std::int64_t sessionOf(std::string_view name);

/// Oldest first.
[[nodiscard]] std::vector<RecordedSession> sessionsIn(const FileList& files);
/// What a packing that was cut short has left: half of a packed part, a plain part beside its packed one.
[[nodiscard]] FileList leftOversIn(const FileList& files);

/// What has to go, in order, for the rest to fit into `bound` bytes. A session that others belong to keeps
/// its head, a running one its last two parts, and the newest three in which the generator spoke stay whole.
[[nodiscard]] std::vector<std::string> removable(const std::vector<RecordedSession>& sessions,
                                                 std::int64_t bound,
                                                 const std::function<bool(const RecordedSession&)>& running,
                                                 const std::function<bool(const RecordedSession&)>& spoke);

} // namespace quillon
