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

std::string withKeep(std::string_view profile, bool keep) {
    const std::string lineEnd = profile.find("\r\n") != std::string_view::npos ? "\r\n" : "\n";
    const std::string wanted = (keep ? "KEEP=YES" : "KEEP=NO") + lineEnd;
    std::string text;
    bool inside = false;
    bool done = false;
    for (std::string_view rest = profile; !rest.empty();) {
        const auto end = rest.find('\n');
        const std::string_view whole = rest.substr(0, end == std::string_view::npos ? end : end + 1);
        rest.remove_prefix(whole.size());
        const std::string_view line = trim(whole.substr(0, whole.find_last_not_of("\r\n") + 1));
        if (line.starts_with('[')) {
            inside = !done && equalsNoCase(trim(line.substr(1, line.find(']') - 1)), kSection);
        } else if (inside && equalsNoCase(trim(line.substr(0, line.find('='))), "KEEP")) {
            continue; // it stands at the head of the section now
        }
        text += whole;
        if (inside && !done) {
            text += (text.ends_with('\n') ? "" : lineEnd) + wanted;
            done = true;
        }
    }
    if (!done) {
        text += (text.empty() || text.ends_with('\n') ? "" : lineEnd) + "[" + std::string(kSection) + "]" +
                lineEnd + wanted;
    }
    return text;
}

} // namespace quillon
