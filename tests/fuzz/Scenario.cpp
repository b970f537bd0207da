// Scenario files, as anybody could write them: a wrong one is told, and nothing else comes of it.

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string_view>

#include "scenario/Reader.h"
#include "scenario/Script.h"

namespace {

constexpr std::size_t kLongest = 2048;
constexpr int kMostDigits = 5; // a wait of years is no fault, but it is no use here either

bool takesLong(std::string_view text) {
    int digits = 0;
    return std::any_of(text.begin(), text.end(), [&digits](char c) {
        digits = std::isdigit(static_cast<unsigned char>(c)) != 0 ? digits + 1 : 0;
        return digits > kMostDigits;
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    if (size > kLongest || takesLong(text)) {
        return -1;
    }
    std::ostringstream out;
    try {
        quillon::Script script(text, out);
        (void)script.run();
    } catch (const quillon::BadScript&) {
        return 0;
    }
    return 0;
}
