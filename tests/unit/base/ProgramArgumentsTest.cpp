#include "base/ProgramArguments.h"

#include <array>

#include <gtest/gtest.h>

namespace quillon {
namespace {

constexpr std::array kKnown{ProgramSwitch{"--link", true}, ProgramSwitch{"--daemon"}};

TEST(ProgramArguments, TellsSwitchesTheirValuesAndWordsApart) {
    const auto read = readArguments({"--daemon", "seed=7", "--link", "--daemon", "-", "--", "-h"}, kKnown);
    EXPECT_EQ(read.error, "");
    EXPECT_FALSE(read.help);
    EXPECT_EQ(read.switches.size(), 2U);
    EXPECT_TRUE(read.has("--daemon"));
    EXPECT_EQ(read.value("--link"), "--daemon") << "the next word, whatever it is";
    EXPECT_EQ(read.words, (std::vector<std::string>{"seed=7", "-", "-h"}));
}

TEST(ProgramArguments, AWrongWordIsToldAndEndsTheProgram) {
    EXPECT_EQ(readArguments({"-x"}, kKnown).error, "there is no switch \"-x\"");
    EXPECT_EQ(readArguments({"--link"}, kKnown).error, "--link needs a value");
    EXPECT_EQ(answerAtOnce(readArguments({"--help", "-x"}, kKnown), "test", ""), 2);
    EXPECT_EQ(answerAtOnce(readArguments({"word"}, kKnown), "test", ""), std::nullopt);
}

} // namespace
} // namespace quillon
