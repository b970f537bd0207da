#include "TrafficFeed.h"

#include <algorithm>
#include <charconv>

namespace quillon {

namespace {

constexpr std::string_view kPhase = "ST";
constexpr std::string_view kHeatAsked = "HU";
constexpr std::string_view kHeat = "HE";

} // namespace

TrafficFeed::TrafficFeed(const std::filesystem::path& folder, const std::vector<RecordedSession>& sessions,
                         std::size_t most)
    : most_(most) {
    for (const RecordedSession& session : sessions) {
        sessions_.push_back({GrowingSession(folder, session)});
    }
}

std::vector<std::size_t> TrafficFeed::read() {
    std::vector<std::size_t> changed;
    while (reading_ < sessions_.size()) {
        const std::string text = sessions_[reading_].text.more();
        take(text, changed);
        if (reading_ + 1 == sessions_.size()) {
            break;
        }
        for (const std::size_t number : traffic_.end()) {
            changed.push_back(number);
        }
        ++reading_;
    }
    if (beside_.size() > most_) {
        const std::size_t gone = beside_.size() - most_;
        beside_.erase(beside_.begin(), beside_.begin() + static_cast<std::ptrdiff_t>(gone));
        first_ += gone;
        traffic_.forget(first_ - 1);
    }
    std::ranges::sort(changed);
    changed.erase(std::unique(changed.begin(), changed.end()), changed.end());
    std::erase_if(changed, [this](std::size_t number) { return number < first_; });
    return changed;
}

void TrafficFeed::take(std::string_view text, std::vector<std::size_t>& changed) {
    while (!text.empty()) {
        const auto end = text.find('\n');
        line(text.substr(0, end), changed);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
}

void TrafficFeed::line(std::string_view line, std::vector<std::size_t>& changed) {
    Session& session = sessions_[reading_];
    constexpr std::string_view kClock = " clock ";
    if (const auto at = line.find(kClock); line.starts_with("# ") && at != std::string_view::npos) {
        Milliseconds time = 0;
        const auto wall = wallTimeOf(line.substr(at + kClock.size()));
        if (wall && std::from_chars(line.data() + 2, line.data() + at, time).ptr == line.data() + at) {
            session.wall = wall;
            session.at = time;
        }
    }
    session.reader.line(line);
    for (const Entry& entry : session.reader.take()) {
        const auto numbers = traffic_.add(entry);
        changed.insert(changed.end(), numbers.begin(), numbers.end());
        while (beside_.size() < traffic_.size()) {
            const TrafficRow& row = traffic_.row(first_ + beside_.size());
            std::optional<WallTime> wall = session.wall;
            if (wall && row.time) {
                wall->sinceEpoch += *row.time - session.at;
            }
            beside_.push_back({reading_, asksOrRepeats(row), row.time ? wall : std::nullopt});
        }
    }
}

bool TrafficFeed::asksOrRepeats(const TrafficRow& row) {
    const std::string_view text = row.text;
    if (row.kind == Entry::Kind::Sent) {
        return text == kPhase || text == kHeatAsked;
    }
    if (row.kind != Entry::Kind::Received) {
        return false;
    }
    for (const auto& [word, last] :
         {std::pair<std::string_view, std::string&>(kPhase, phase_), {kHeat, heat_}}) {
        if (text.starts_with(word)) {
            const bool same = last == text;
            last = text;
            return same;
        }
    }
    return false;
}

std::optional<Milliseconds> TrafficFeed::since(std::size_t number) const {
    if (number <= first_ || beside(number - 1).session != beside(number).session) {
        return std::nullopt;
    }
    const auto& time = traffic_.row(number).time;
    const auto& before = traffic_.row(number - 1).time;
    return time && before ? std::optional(*time - *before) : std::nullopt;
}

} // namespace quillon
