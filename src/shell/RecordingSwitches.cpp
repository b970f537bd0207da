#include "shell/RecordingSwitches.h"

#include <algorithm>

#include "base/Numbers.h"
#include "base/Text.h"
#include "runtime/ProfileFile.h"

namespace quillon {

namespace {

constexpr std::string_view kSection = "RECORDINGS";
constexpr std::size_t kValue = 16; // characters of a value
constexpr double kLeast = 5;
constexpr double kMost = 2000;
constexpr std::int64_t kMegabyte = 1'000'000;

} // namespace

RecordingSwitches recordingSwitches(std::string profile) {
    const ProfileFile ini(std::move(profile));
    RecordingSwitches switches;
    switches.keep = !equalsNoCase(ini.read(kSection, "KEEP", "YES", kValue), "NO");
    if (const std::string bound = ini.read(kSection, "MB", {}, kValue); isNumeric(bound)) {
        switches.bytes = static_cast<std::int64_t>(std::clamp(toDouble(bound), kLeast, kMost)) * kMegabyte;
    }
    return switches;
}

} // namespace quillon
