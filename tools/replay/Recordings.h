#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "shell/RecordingFacts.h"
#include "shell/RecordingFolder.h"
#include "shell/RecordingReader.h"

namespace quillon {

/// The recordings of an installation.
class Recordings {
public:
    explicit Recordings(std::filesystem::path folder);
    /// Where a console that lies beside this program keeps them.
    [[nodiscard]] static std::filesystem::path folderBeside(const std::filesystem::path& program);

    [[nodiscard]] const std::filesystem::path& folder() const { return folder_; }
    /// A line each, newest first.
    [[nodiscard]] std::string list();
    /// The sessions of a visit as one text; 1 is the newest. Empty when there are not so many.
    [[nodiscard]] RecordingText visit(int number);
    /// Where a visit that is saved at `place` goes: a name of its own in a folder, else the place itself.
    [[nodiscard]] std::filesystem::path nameAt(const std::filesystem::path& place, int visit);

private:
    struct Known {
        RecordingText text;
        RecordingFacts facts;
    };
    const Known& known(std::size_t session);
    [[nodiscard]] std::vector<std::size_t> sessionsOf(int visit);

    std::filesystem::path folder_;
    std::vector<RecordedSession> sessions_;
    std::map<std::size_t, Known> known_;
};

/// Writes a text as a packed file, which stands whole on its disk when this returns an empty text; else why
/// not.
[[nodiscard]] std::string savePacked(const std::filesystem::path& file, std::string_view text);

} // namespace quillon
