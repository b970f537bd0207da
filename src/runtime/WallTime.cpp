#include "runtime/WallTime.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace quillon {

namespace {

constexpr Milliseconds kMinute = 60'000;
constexpr Milliseconds kHour = 60 * kMinute;

} // namespace

std::string isoText(const WallTime& time) {
    using namespace std::chrono;
    const milliseconds local(time.sinceEpoch + time.offset * kMinute);
    const auto day = floor<days>(local);
    const year_month_day date{sys_days(day)};
    const Milliseconds ms = (local - day).count();
    const int offset = std::abs(time.offset);
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%03d%c%02d:%02d",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(ms / kHour),
                  static_cast<int>(ms / kMinute % 60), static_cast<int>(ms / 1000 % 60),
                  static_cast<int>(ms % 1000), time.offset < 0 ? '-' : '+', offset / 60, offset % 60);
    return text.data();
}

std::string dateText(const WallTime& time) {
    return isoText(time).substr(0, 10);
}

std::string timeOfDayText(const WallTime& time) {
    return isoText(time).substr(11, 8);
}

std::optional<WallTime> wallTimeOf(std::string_view text) {
    using namespace std::chrono;
    int y = 0, hour = 0, minute = 0, second = 0, ms = 0, offsetHours = 0, offsetMinutes = 0;
    unsigned m = 0, d = 0;
    char sign = 0;
    if (std::sscanf(std::string(text).c_str(), "%4d-%2u-%2uT%2d:%2d:%2d.%3d%c%2d:%2d", &y, &m, &d, &hour,
                    &minute, &second, &ms, &sign, &offsetHours, &offsetMinutes) != 10) {
        return std::nullopt;
    }
    const year_month_day date{year(y), month(m), day(d)};
    if (!date.ok() || hour > 23 || minute > 59 || second > 60 || (sign != '+' && sign != '-')) {
        return std::nullopt;
    }
    const int offset = (sign == '-' ? -1 : 1) * (offsetHours * 60 + offsetMinutes);
    const Milliseconds days = sys_days(date).time_since_epoch().count();
    return WallTime{days * 24 * kHour + hour * kHour + (minute - offset) * kMinute +
                        second * Milliseconds{1000} + ms,
                    offset};
}

} // namespace quillon
