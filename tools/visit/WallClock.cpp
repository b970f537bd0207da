#include "WallClock.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>

namespace quillon {

namespace {

constexpr Milliseconds kSecond = 1000;
constexpr Milliseconds kMinute = 60 * kSecond;
constexpr Milliseconds kHour = 60 * kMinute;
constexpr Milliseconds kDay = 24 * kHour;

template <typename... Numbers> std::string printed(const char* format, Numbers... numbers) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, numbers...);
    return text.data();
}

/// Takes so many digits off, and the mark behind them.
std::optional<int> takeNumber(std::string_view& text, std::size_t digits, std::string_view marks) {
    int number = 0;
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + std::min(digits, text.size()), number);
    if (error != std::errc{} || end != text.data() + digits) {
        return std::nullopt;
    }
    text.remove_prefix(digits);
    if (!marks.empty()) {
        if (text.empty() || marks.find(text.front()) == std::string_view::npos) {
            return std::nullopt;
        }
        text.remove_prefix(1);
    }
    return number;
}

} // namespace

std::optional<WallTime> WallTime::read(std::string_view iso) {
    std::array<int, 6> parts{};
    constexpr std::array<std::string_view, 6> kMarks{"-", "-", "T ", ":", ":", ""};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto number = takeNumber(iso, i == 0 ? 4 : 2, kMarks[i]);
        if (!number) {
            return std::nullopt;
        }
        parts[i] = *number;
    }
    const std::chrono::year_month_day day{std::chrono::year{parts[0]},
                                          std::chrono::month{static_cast<unsigned>(parts[1])},
                                          std::chrono::day{static_cast<unsigned>(parts[2])}};
    if (!day.ok() || parts[3] > 23 || parts[4] > 59 || parts[5] > 60) {
        return std::nullopt;
    }
    Milliseconds fraction = 0;
    if (iso.starts_with('.')) {
        iso.remove_prefix(1);
        for (Milliseconds unit = 100; !iso.empty() && iso.front() >= '0' && iso.front() <= '9'; unit /= 10) {
            fraction += unit * (iso.front() - '0');
            iso.remove_prefix(1);
        }
    }
    const auto days = std::chrono::sys_days{day}.time_since_epoch().count();
    return WallTime{days * kDay + parts[3] * kHour + parts[4] * kMinute + parts[5] * kSecond + fraction,
                    std::string(iso)};
}

std::string WallTime::date() const {
    const std::chrono::year_month_day day{std::chrono::floor<std::chrono::days>(
        std::chrono::sys_time<std::chrono::milliseconds>(std::chrono::milliseconds(ms)))};
    return printed("%04d-%02u-%02u", static_cast<int>(day.year()), static_cast<unsigned>(day.month()),
                   static_cast<unsigned>(day.day()));
}

std::string WallTime::timeOfDay() const {
    const Milliseconds inDay = ms - (ms >= 0 ? ms / kDay : (ms - kDay + 1) / kDay) * kDay;
    return printed("%02d:%02d:%02d", static_cast<int>(inDay / kHour), static_cast<int>(inDay / kMinute % 60),
                   static_cast<int>(inDay / kSecond % 60));
}

std::string WallTime::iso() const {
    return date() + "T" + timeOfDay() +
           printed(".%03d", static_cast<int>((ms % kSecond + kSecond) % kSecond)) + zone;
}

std::optional<WallTime> WallClock::at(Milliseconds time) const {
    if (marks_.empty()) {
        return std::nullopt;
    }
    const auto behind =
        std::find_if(marks_.begin() + 1, marks_.end(), [time](const Mark& mark) { return mark.at > time; });
    const Mark& mark = *(behind - 1);
    return WallTime{mark.wall.ms + time - mark.at, mark.wall.zone};
}

std::string WallClock::text(Milliseconds time) const {
    const auto wall = at(time);
    if (!wall) {
        return clockText(time);
    }
    const std::string date = wall->date();
    return (date == at(0)->date() ? "" : date + " ") + wall->timeOfDay();
}

std::vector<WallClock::Jump> WallClock::jumps(const std::vector<Milliseconds>& begins) const {
    std::vector<Jump> found;
    for (std::size_t i = 1; i < marks_.size(); ++i) {
        const Mark& before = marks_[i - 1];
        const Mark& mark = marks_[i];
        const Milliseconds by = (mark.wall.ms - before.wall.ms) - (mark.at - before.at);
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
