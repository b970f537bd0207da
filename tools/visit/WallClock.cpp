#include "WallClock.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace quillon {

namespace {

constexpr Milliseconds kSecond = 1000;
constexpr Milliseconds kMinute = 60 * kSecond;
constexpr Milliseconds kHour = 60 * kMinute;

template <typename... Numbers> std::string printed(const char* format, Numbers... numbers) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, numbers...);
    return text.data();
}

} // namespace

std::optional<WallTime> WallClock::at(Milliseconds time) const {
    if (marks_.empty()) {
        return std::nullopt;
    }
    const auto behind =
        std::find_if(marks_.begin() + 1, marks_.end(), [time](const Mark& mark) { return mark.at > time; });
    const Mark& mark = *(behind - 1);
    return WallTime{mark.wall.sinceEpoch + time - mark.at, mark.wall.offset};
}

std::string WallClock::text(Milliseconds time) const {
    const auto wall = at(time);
    if (!wall) {
        return clockText(time);
    }
    const std::string date = dateText(*wall);
    return (date == dateText(*at(0)) ? "" : date + " ") + timeOfDayText(*wall);
}

std::vector<WallClock::Jump> WallClock::jumps(const std::vector<Milliseconds>& begins) const {
    std::vector<Jump> found;
    for (std::size_t i = 1; i < marks_.size(); ++i) {
        const Mark& before = marks_[i - 1];
        const Mark& mark = marks_[i];
        const Milliseconds by = (mark.wall.sinceEpoch - before.wall.sinceEpoch) - (mark.at - before.at);
        const bool sameSession = std::none_of(begins.begin(), begins.end(), [&](Milliseconds begin) {
            return begin > before.at && begin <= mark.at;
        });
        if (sameSession && (by > kSecond || by < -kSecond)) {
            found.push_back({mark.at, by});
        }
    }
    return found;
}

std::string clockText(Milliseconds ms) {
    return printed("%d:%02d:%02d", static_cast<int>(ms / kHour), static_cast<int>(ms / kMinute % 60),
                   static_cast<int>(ms / kSecond % 60));
}

} // namespace quillon
