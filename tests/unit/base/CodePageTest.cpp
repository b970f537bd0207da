#include "base/CodePage.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

TEST(CodePage, HoldsItsUpperBlockBothWays) {
    const std::string_view words =
        "A~\u00A0\u00FF\u20AC\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u017D"
        "\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u017E\u0178\u0081\u008D";
    const std::string bytes =
        "A~\xA0\xFF\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E\x91\x92\x93\x94\x95\x96"
        "\x97\x98\x99\x9A\x9B\x9C\x9E\x9F\x81\x8D";
    EXPECT_EQ(codePageFromUtf8(words), bytes);
    for (int code = 0; code < 256; ++code) {
        const char byte = static_cast<char>(code);
        EXPECT_EQ(codePageByte(unicodeOf(byte)), byte) << code;
    }
}

TEST(CodePage, RefusesWhatItLacksAndWhatIsNoUtf8) {
    for (const char* text : {"\u0100", "\u2014\u4E00", "\x80", "\xC1\x81", "\xC3", "\xE2\x80", "\xC3(",
                             "\xE2\x28\xA1", "\xE0\x82\x80", "\xF0\x9F\x98\x80", "\xFF"}) {
        EXPECT_FALSE(codePageFromUtf8(text)) << text;
    }
}

} // namespace
} // namespace quillon
