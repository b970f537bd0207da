#include "base/Text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/CodePage.h"

namespace quillon {
namespace {

using testing::ElementsAre;

TEST(Text, OnlySpacesAreTrimmed) {
    EXPECT_EQ(trim("  a b  "), "a b");
    EXPECT_EQ(trimLeft("  a "), "a ");
    EXPECT_EQ(trimRight(" a  "), " a");
    EXPECT_EQ(trim("   "), "");
    EXPECT_EQ(trim("\ta\r "), "\ta\r");
}

TEST(Text, SplitsAtEveryMark) {
    EXPECT_THAT(split("a-b--c", "-"), ElementsAre("a", "b", "", "c"));
    EXPECT_THAT(split("", "-"), ElementsAre(""));
    EXPECT_THAT(split("\r\na\r\n", "\r\n"), ElementsAre("", "a", ""));
    EXPECT_EQ(without("\ta\tb\t", '\t'), "ab");
}

TEST(Text, OnlyAsciiLettersHaveCase) {
    EXPECT_TRUE(equalsNoCase("cmbClose", "CMBCLOSE"));
    EXPECT_FALSE(equalsNoCase("\xC4", "\xE4"));
    EXPECT_FALSE(equalsNoCase("a", "ab"));
    EXPECT_TRUE(containsNoCase("x -LOGfile", "-logFile"));
    EXPECT_FALSE(containsNoCase("-log", "-logFile"));
    EXPECT_FALSE(NoCaseLess{}("KV", "kv") || NoCaseLess{}("kv", "KV"));
    EXPECT_TRUE(NoCaseLess{}("KV", "kvs"));
    EXPECT_EQ(NoCaseHash{}("FlKVP"), NoCaseHash{}("FLkvp"));
}

TEST(CodePage, KeepsWhatTheWireCanHold) {
    EXPECT_EQ(codePageFromUtf8("plain \x7F"), "plain \x7F");
    EXPECT_EQ(codePageFromUtf8("T\xC3\xBCr \xE2\x82\xAC \xC5\xB8"), "T\xFCr \x80 \x9F");
    EXPECT_EQ(codePageFromUtf8("\xC2\x81\xC2\xA0"), "\x81\xA0");
}

TEST(CodePage, RefusesTheRest) {
    // a Greek letter, a control character where the page has the euro sign, a character of four bytes
    for (const char* text : {"\xCE\xB1", "\xC2\x80", "\xF0\x9F\x98\x80"}) {
        EXPECT_EQ(codePageFromUtf8(text), std::nullopt) << text;
    }
    // Windows-1252 itself, a cut character, a lone middle byte, two bytes too many for their character
    for (const char* text : {"T\xFCr", "\xC3", "\xE2\x82", "\xBC", "\xC0\xAF", "\xE0\x80\xAF"}) {
        EXPECT_EQ(codePageFromUtf8(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace quillon
