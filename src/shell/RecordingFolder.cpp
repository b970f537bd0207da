#include "shell/RecordingFolder.h"

#include <algorithm>
#include <charconv>
#include <map>
#include <numeric>
#include <optional>

namespace quillon {

namespace {

constexpr std::size_t kSessionDigits = 6;
constexpr std::size_t kPartDigits = 3;
constexpr std::string_view kPlain = ".scn";
constexpr std::string_view kPacked = ".scn.gz";
constexpr std::string_view kHalf = ".scn.gz.new";
constexpr int kVisitsKept = 3;
constexpr std::size_t kRunningKept = 2;

std::string digits(std::int64_t number, std::size_t width) {
    std::string text = std::to_string(number);
    return text.insert(0, text.size() < width ? width - text.size() : 0, '0');
}

/// A number of at least so many digits that the text begins with, which is taken off.
std::optional<std::int64_t> takeNumber(std::string_view& text, std::size_t width) {
    std::int64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const auto length = static_cast<std::size_t>(end - text.data());
    if (error != std::errc{} || length < width || text.front() == '-') {
        return std::nullopt;
    }
    text.remove_prefix(length);
    return number;
}

struct ReadName {
    std::int64_t session;
    std::int64_t part;
    std::string_view kind;
};

std::optional<ReadName> readName(std::string_view name) {
    const auto session = takeNumber(name, kSessionDigits);
    if (!session || !name.starts_with('.')) {
        return std::nullopt;
    }
    name.remove_prefix(1);
    const auto part = takeNumber(name, kPartDigits);
    if (!part || (name != kPlain && name != kPacked && name != kHalf)) {
        return std::nullopt;
    }
    return ReadName{*session, *part, name};
}

} // namespace

std::int64_t RecordedSession::bytes() const {
    return std::accumulate(parts.begin(), parts.end(), std::int64_t{0},
                           [](std::int64_t sum, const RecordingPart& part) { return sum + part.bytes; });
}

std::string sessionName(std::int64_t session) {
    return digits(session, kSessionDigits);
}

std::string partName(std::int64_t session, std::int64_t part, bool packed) {
    return sessionName(session) + "." + digits(part, kPartDigits) + std::string(packed ? kPacked : kPlain);
}

std::int64_t sessionOf(std::string_view name) {
    const auto read = readName(name);
    return read ? read->session : -1;
}

std::vector<RecordedSession> sessionsIn(const FileList& files) {
    std::map<std::int64_t, std::map<std::int64_t, RecordingPart>> found;
    for (const FoundFile& file : files) {
        const auto read = readName(file.name);
        if (!read || read->kind == kHalf) {
            continue;
        }
        auto& parts = found[read->session];
        if (read->kind == kPacked || !parts.contains(read->part)) {
            parts[read->part] = {read->part, read->kind == kPacked, file.name, file.bytes};
        }
    }
    std::vector<RecordedSession> sessions;
    for (auto& [number, parts] : found) {
        sessions.push_back({number, {}});
        for (auto& [part, file] : parts) {
            sessions.back().parts.push_back(std::move(file));
        }
    }
    return sessions;
}

FileList leftOversIn(const FileList& files) {
    const auto there = [&files](const std::string& name) {
        return std::ranges::find(files, name, &FoundFile::name) != files.end();
    };
    FileList left;
    std::ranges::copy_if(files, std::back_inserter(left), [&](const FoundFile& file) {
        const auto read = readName(file.name);
        return read && (read->kind == kHalf ||
                        (read->kind == kPlain && there(partName(read->session, read->part, true))));
    });
    return left;
}

std::vector<std::string> removable(const std::vector<RecordedSession>& sessions, std::int64_t bound,
                                   const std::function<bool(const RecordedSession&)>& running,
                                   const std::function<bool(const RecordedSession&)>& spoke) {
    std::int64_t total = 0;
    for (const RecordedSession& session : sessions) {
        total += session.bytes();
    }
    std::vector<std::string> names;
    if (total <= bound) {
        return names;
    }
    std::vector<std::int64_t> kept;
    for (auto session = sessions.rbegin(); session != sessions.rend() && kept.size() < kVisitsKept;
         ++session) {
        if (spoke(*session)) {
            kept.push_back(session->number);
        }
    }
    for (const RecordedSession& session : sessions) {
        const bool runs = running(session);
        if (!runs && std::ranges::find(kept, session.number) != kept.end()) {
            continue;
        }
        // The head comes last, as what stays of the others needs it.
        std::vector<const RecordingPart*> order;
        for (std::size_t at = 1; at + (runs ? kRunningKept : 0) < session.parts.size(); ++at) {
            order.push_back(&session.parts[at]);
        }
        if (!runs) {
            order.push_back(&session.parts.front());
        }
        for (const RecordingPart* part : order) {
            if (total <= bound) {
                return names;
            }
            names.push_back(part->name);
            total -= part->bytes;
        }
    }
    return names;
}

} // namespace quillon
