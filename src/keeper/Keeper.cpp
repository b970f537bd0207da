#include "keeper/Keeper.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace quillon {

namespace {

constexpr Milliseconds kSyncAfter = 600; // ms behind the first byte that a power cut would take
constexpr std::size_t kSyncAt = 262'144; // bytes
constexpr Milliseconds kAgain = 1000;    // between two tries of a disk that takes nothing
constexpr int kTries = 1000;             // of a number that another session has taken

} // namespace

bool Keeper::begin() {
    if (!file_.empty()) {
        return disk_.create(file_) == Disk::Created::Yes;
    }
    const auto numbered = [this] {
        files_ = disk_.files();
        std::int64_t newest = 0;
        for (const FoundFile& file : files_) {
            newest = std::max(newest, sessionOf(file.name));
        }
        return newest + 1;
    };
    session_ = numbered();
    for (int tries = 0; tries < kTries; ++tries) {
        const Disk::Created created = disk_.create(part());
        if (created == Disk::Created::No) {
            return false;
        }
        // One that has come and gone since the list was made has left its packed part under the same number.
        const std::int64_t next = numbered();
        const auto same = std::ranges::count_if(
            files_, [this](const FoundFile& file) { return sessionOf(file.name) == session_; });
        if (created == Disk::Created::Yes && same <= 1) {
            return true;
        }
        if (created == Disk::Created::Yes && !disk_.remove(part())) {
            return false;
        }
        session_ = std::max(session_ + 1, next);
    }
    return false;
}

void Keeper::take(std::string_view bytes, Milliseconds now) {
    waiting_ += bytes;
    if (!again_) {
        write(now);
    }
}

void Keeper::work(Milliseconds now) {
    if (again_ && now >= *again_) {
        again_.reset();
        write(now);
    }
    if (dirtySince_ && !rewinds_ && now >= *dirtySince_ + kSyncAfter) {
        sync(now);
    }
    if (untidy_ && !again_) {
        // It takes its time: what is there is made safe before.
        sync(now);
        untidy_ = tidy();
    }
}

std::optional<Milliseconds> Keeper::due() const {
    if (again_) {
        return again_;
    }
    if (untidy_) {
        return 0;
    }
    return dirtySince_ ? std::optional(*dirtySince_ + kSyncAfter) : std::nullopt;
}

void Keeper::write(Milliseconds now) {
    if (rewinds_) {
        if (!disk_.cut(size_)) {
            again_ = now + kAgain;
            return;
        }
        waiting_.insert(0, std::exchange(unsynced_, {}));
        dirtySince_.reset();
        rewinds_ = false;
    }
    while (!waiting_.empty()) {
        const bool full = file_.empty() && size_ + unsynced_.size() >= limits_.part;
        if (full && atLineEnd_ && (!partAgain_ || now >= *partAgain_)) {
            nextPart(now);
            if (rewinds_) {
                return;
            }
        }
        // A part ends with a line.
        const std::size_t room =
            std::max(limits_.part - std::min(limits_.part, size_ + unsynced_.size()), std::size_t{1});
        const std::size_t lineEnd = waiting_.find('\n', file_.empty() ? room - 1 : waiting_.size());
        const std::string_view piece =
            std::string_view(waiting_).substr(0, lineEnd == std::string::npos ? lineEnd : lineEnd + 1);
        const std::size_t written = disk_.write(piece);
        if (written > 0) {
            atLineEnd_ = piece[written - 1] == '\n';
            dirtySince_ = dirtySince_.value_or(now);
            unsynced_ += piece.substr(0, written);
        }
        const bool whole = written == piece.size();
        waiting_.erase(0, written);
        if (unsynced_.size() >= kSyncAt) {
            sync(now);
            if (rewinds_) {
                return;
            }
        }
        if (!whole && !(file_.empty() && disk_.full() && removeOne(-1))) {
            again_ = now + kAgain;
            return;
        }
    }
}

void Keeper::sync(Milliseconds now) {
    if (!dirtySince_ || rewinds_) {
        return;
    }
    if (disk_.sync()) {
        size_ += unsynced_.size();
        unsynced_.clear();
        dirtySince_.reset();
    } else {
        rewinds_ = true;
        again_ = now + kAgain;
    }
}

void Keeper::nextPart(Milliseconds now) {
    sync(now);
    if (rewinds_) {
        return;
    }
    if (disk_.create(partName(session_, part_ + 1)) != Disk::Created::Yes) {
        partAgain_ = now + kAgain;
        return;
    }
    partAgain_.reset();
    ++part_;
    size_ = 0;
    untidy_ = true;
}

void Keeper::end(Milliseconds now) {
    again_.reset();
    write(now);
    sync(now);
    if (rewinds_) {
        write(now);
        sync(now);
    }
    if (!file_.empty()) {
        return;
    }
    if (size_ == 0 && unsynced_.empty()) {
        (void)disk_.remove(part());
    } else if (waiting_.empty() && !rewinds_) {
        (void)disk_.pack(part());
    }
}

std::string Keeper::takeBack() {
    (void)disk_.remove(part());
    return std::exchange(unsynced_, {}) + std::exchange(waiting_, {});
}

/// One step: what was left half packed goes, what is complete is packed, what is too much goes. False when
/// there is nothing left to do.
bool Keeper::tidy() {
    if (!file_.empty()) {
        return false;
    }
    files_ = disk_.files();
    for (const FoundFile& left : leftOversIn(files_)) {
        const std::int64_t session = sessionOf(left.name);
        if (!failed_.contains(left.name) && !own(session) && disk_.seize(plainOf(session))) {
            return failed(left.name, disk_.remove(left.name));
        }
    }
    return packOne() || removeOne(limits_.bound);
}

bool Keeper::packOne() {
    for (const RecordedSession& session : sessionsIn(files_)) {
        for (const RecordingPart& found : session.parts) {
            if (found.packed || failed_.contains(found.name) ||
                (own(session.number) && found.number >= part_)) {
                continue;
            }
            if (own(session.number) || disk_.seize(plainOf(session.number))) {
                return failed(found.name,
                              found.bytes == 0 ? disk_.remove(found.name) : disk_.pack(found.name));
            }
            break;
        }
    }
    return false;
}

/// Removes one part, if that many bytes are too many; of any at all when the bound is below 0.
bool Keeper::removeOne(std::int64_t bound) {
    if (!disk_.seize({std::string(kRecordingsLock)})) {
        return false; // somebody else does
    }
    files_ = disk_.files();
    const auto sessions = sessionsIn(files_);
    const auto running = [this](const RecordedSession& session) {
        auto names = plainOf(session.number);
        names.emplace_back(kRecordingsLock);
        return own(session.number) || !disk_.seize(names);
    };
    const auto spoke = [this](const RecordedSession& session) {
        return std::ranges::any_of(session.parts,
                                   [this](const RecordingPart& each) { return disk_.spoke(each.name); });
    };
    for (const std::string& name : removable(sessions, bound, running, spoke)) {
        if (!failed_.contains(name) && disk_.seize({std::string(kRecordingsLock)})) {
            return failed(name, disk_.remove(name)) && !failed_.contains(name);
        }
    }
    return false;
}

std::vector<std::string> Keeper::plainOf(std::int64_t session) const {
    std::vector<std::string> names;
    for (const FoundFile& file : files_) {
        if (sessionOf(file.name) == session && file.name.ends_with(".scn")) {
            names.push_back(file.name);
        }
    }
    return names;
}

/// A step was tried: there may be more to do. What fails once is left to the next session.
bool Keeper::failed(const std::string& name, bool done) {
    if (!done) {
        failed_.insert(name);
    }
    return true;
}

} // namespace quillon
