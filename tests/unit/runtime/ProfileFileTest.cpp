#include "runtime/ProfileFile.h"

#include <gtest/gtest.h>

namespace quillon {
namespace {

constexpr std::string_view kText = "\xEF\xBB\xBF; a comment\r\n"
                                   "PORT=9\r\n"
                                   "[ Config ]\r\n"
                                   " port = 2 \r\n"
                                   "PORT=3\r\n"
                                   ";Width=1\r\n"
                                   "Quoted=\" 4 \"\n"
                                   "Half=\"5\r\n"
                                   "Empty=\r\n"
                                   "NoSign\r\n"
                                   "Long=abcdef=g\r\n"
                                   "[Other]\r\n"
                                   "Height=5\r\n"
                                   "[CONFIG]\r\n"
                                   "Height=6";

TEST(ProfileFile, ReadsTheFirstKeyOfTheFirstSection) {
    struct Row {
        const char* section;
        const char* key;
        const char* value;
    };
    const ProfileFile file{std::string(kText)};
    for (const auto& [section, key, value] :
         {Row{"CONFIG", "PORT", "2"}, Row{"config", "quoted", " 4 "}, Row{"CONFIG", "Half", "\"5"},
          Row{"CONFIG", "Empty", ""}, Row{"CONFIG", "Width", "none"}, Row{"CONFIG", "NoSign", "none"},
          Row{"CONFIG", "Height", "none"}, Row{"OTHER", "Height", "5"}, Row{"Missing", "PORT", "none"}}) {
        EXPECT_EQ(file.read(section, key, "none", 255), value) << section << ' ' << key;
    }
    EXPECT_EQ(file.read("CONFIG", "Long", "", 4), "abcd");
    EXPECT_EQ(file.read("CONFIG", "Long", "", 255), "abcdef=g");
    EXPECT_EQ(file.read("CONFIG", "None", "abcdef", 4), "abcd");
    EXPECT_EQ(ProfileFile({}).read("CONFIG", "PORT", "1", 255), "1");
}

} // namespace
} // namespace quillon
