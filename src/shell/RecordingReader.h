#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Clock.h"
#include "shell/RecordingFolder.h"

namespace quillon {

/// The text of a recording.
struct RecordingText {
    std::string text;    ///< whole lines
    std::string problem; ///< what is missing of it; empty when nothing is
};

/// The text of a file's content, which may be packed. What is no recording stays as it is.
[[nodiscard]] RecordingText recordingTextOf(std::string_view content);

/// It begins as a recording does.
[[nodiscard]] bool isRecording(std::string_view text);

/// The recordings that a text is made of, a saved visit of more than one. What is no recording is one piece.
[[nodiscard]] std::vector<std::string_view> recordingsIn(std::string_view text);

/// Each line of a recording but those of the files in its head.
void forEachRecordedLine(std::string_view recording, const std::function<void(std::string_view)>& each);
/// The time that goes by with a line of a recording.
[[nodiscard]] Milliseconds recordedTime(std::string_view line);

/// When a part of a recording begins; nothing where it does not tell.
[[nodiscard]] std::optional<Milliseconds> partBegin(std::string_view part);

[[nodiscard]] FileList filesOf(const std::filesystem::path& folder);
/// A session of the folder. Where parts of it are gone, a gap is told.
[[nodiscard]] RecordingText readSession(const std::filesystem::path& folder, const RecordedSession& session);

} // namespace quillon
