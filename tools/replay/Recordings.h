#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "shell/RecordingFacts.h"
#include "shell/RecordingFolder.h"
#include "shell/RecordingReader.h"

namespace quillon {

/// A visit, or a session alone in which the generator did not speak.
struct RecordedVisit {
    std::vector<RecordedSession> sessions; ///< oldest first
    std::optional<WallTime> begun;
    std::optional<WallTime> ended;
    Milliseconds length = 0;
    bool spoke = false;
    int presses = 0;
    int gaps = 0;
    std::string device;

    [[nodiscard]] std::int64_t bytes() const;
    /// It names the visit, whatever becomes of its files.
    [[nodiscard]] std::int64_t number() const { return sessions.front().number; }
};

/// The recordings of an installation. Nothing is written to their folder.
class Recordings {
public:
    explicit Recordings(std::filesystem::path folder);
    /// Where a console that lies beside this program keeps them.
    [[nodiscard]] static std::filesystem::path folderBeside(const std::filesystem::path& program);

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }
    /// Looks at the folder again. Says whether something has changed there.
    bool refresh();
    [[nodiscard]] std::size_t sessionCount() const { return sessions_.size(); }
    /// Of them, those before a visit.
    [[nodiscard]] std::size_t sessionsBefore(const RecordedVisit& visit) const;
    [[nodiscard]] std::int64_t bytes() const;
    /// A line each, newest first.
    [[nodiscard]] std::string list();

    /// The visit that ends with the last session before `end`; reads of it, and one more, what was not read.
    [[nodiscard]] RecordedVisit visitBefore(std::size_t end);
    /// The visits are counted from the newest, which is 1; nothing when there are not so many.
    [[nodiscard]] std::optional<RecordedVisit> visit(int number);
    /// The sessions of a visit as one text.
    [[nodiscard]] RecordingText textOf(const RecordedVisit& visit) const;

    /// Its last session is written at the moment.
    [[nodiscard]] bool isRunning(const RecordedVisit& visit) const;

private:
    const RecordingFacts& facts(std::size_t session);
    [[nodiscard]] RecordedVisit visitOf(std::size_t first, std::size_t end);

    struct Known {
        RecordingFacts facts;
        std::int64_t bytes;
        std::string problem;
    };
    std::filesystem::path folder_;
    std::vector<RecordedSession> sessions_;
    std::map<std::int64_t, Known> known_; ///< by the session's number
};

/// What files about a visit are called, without an ending.
[[nodiscard]] std::string visitName(const RecordedVisit& visit);

/// Where a visit that is saved at `place` goes: a name of its own in a folder, else the place itself.
[[nodiscard]] std::filesystem::path nameAt(const std::filesystem::path& place, const RecordedVisit& visit);

/// Writes a file, which stands whole on its disk when this returns an empty text; else why not.
[[nodiscard]] std::string saveWhole(const std::filesystem::path& file, std::string_view bytes);
/// The same, packed.
[[nodiscard]] std::string savePacked(const std::filesystem::path& file, std::string_view text);

} // namespace quillon
