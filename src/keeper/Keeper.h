#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Clock.h"
#include "shell/RecordingFolder.h"

namespace quillon {

/// A folder of recordings on a disk, as one who writes there sees it. Anything may fail.
class Disk {
public:
    enum class Created { Yes, Taken, No };

    virtual ~Disk() = default;
    [[nodiscard]] virtual FileList files() = 0;
    /// A new file, which takes what is written from now on. While it does nobody else can seize it.
    [[nodiscard]] virtual Created create(const std::string& name) = 0;
    /// Writes behind what that file holds; how many of the bytes it has taken.
    [[nodiscard]] virtual std::size_t write(std::string_view bytes) = 0;
    /// The last write has failed for want of room.
    [[nodiscard]] virtual bool full() const = 0;
    /// Cuts it back to that length.
    [[nodiscard]] virtual bool cut(std::size_t length) = 0;
    /// What it holds survives a power cut from now on.
    [[nodiscard]] virtual bool sync() = 0;

    /// Takes hold of all these files until the next call, if nobody else has hold of one or writes it.
    [[nodiscard]] virtual bool seize(const std::vector<std::string>& names) = 0;
    /// Puts a packed file in the place of a plain one.
    [[nodiscard]] virtual bool pack(const std::string& name) = 0;
    [[nodiscard]] virtual bool remove(const std::string& name) = 0;
    /// Whether the generator says something in that part.
    [[nodiscard]] virtual bool spoke(const std::string& name) = 0;
};

/// Decides what becomes of a session's recording on the disk: which parts it is written in, when it is made
/// to survive a power cut, what is packed and what has to go, and what a disk that takes nothing means. Knows
/// no system and no clock.
class Keeper {
public:
    struct Limits {
        std::size_t part = 4'000'000;     ///< a part ends with the line that reaches it
        std::int64_t bound = 100'000'000; ///< of all that lies in the folder
    };

    Keeper(Disk& disk, Limits limits) : disk_(disk), limits_(limits) {}
    /// One file of that name, without parts and bounds.
    Keeper(Disk& disk, std::string file) : disk_(disk), file_(std::move(file)) {}

    /// Makes the file; false when there can be none.
    [[nodiscard]] bool begin();
    /// More may come. What the disk does not take waits here, and what follows it has to wait elsewhere.
    [[nodiscard]] bool hungry() const { return waiting_.empty() && !rewinds_; }
    void take(std::string_view bytes, Milliseconds now);
    /// Does what is due, or one piece of what has to be done some time.
    void work(Milliseconds now);
    /// When to work at the latest; nothing when only bytes bring more to do.
    [[nodiscard]] std::optional<Milliseconds> due() const;
    /// Nothing more comes.
    void end(Milliseconds now);
    /// Takes the recording back that no power cut was to survive yet, to be kept elsewhere.
    [[nodiscard]] std::string takeBack();

    /// The number of the session, or the name of the file.
    [[nodiscard]] std::string name() const { return file_.empty() ? sessionName(session_) : file_; }

private:
    [[nodiscard]] std::string part() const { return file_.empty() ? partName(session_, part_) : file_; }
    [[nodiscard]] bool own(std::int64_t session) const { return session == session_; }
    [[nodiscard]] std::vector<std::string> plainOf(std::int64_t session) const;
    void write(Milliseconds now);
    void sync(Milliseconds now);
    void nextPart(Milliseconds now);
    [[nodiscard]] bool tidy();
    [[nodiscard]] bool packOne();
    [[nodiscard]] bool removeOne(std::int64_t bound);
    [[nodiscard]] bool failed(const std::string& name, bool done);

    Disk& disk_;
    Limits limits_;
    std::string file_;
    std::int64_t session_ = 0;
    std::int64_t part_ = 0;
    FileList files_; ///< as they were when last looked at

    std::string waiting_;  ///< not written yet
    std::string unsynced_; ///< written, and lost in a power cut
    std::size_t size_ = 0; ///< of the part, both of them apart
    bool atLineEnd_ = true;
    bool rewinds_ = false; ///< what is unsynced has to be written again: the disk may have lost it
    bool untidy_ = true;
    std::set<std::string> failed_; ///< what could not be packed or removed is not tried again
    std::optional<Milliseconds> dirtySince_;
    std::optional<Milliseconds> again_; ///< when the disk is to be tried again
    std::optional<Milliseconds> partAgain_;
};

} // namespace quillon
