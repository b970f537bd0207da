#include "shell/cGeneratorError.h"

#include <gtest/gtest.h>

#include "runtime/MemoryPlatform.h"

namespace quillon {
namespace {

class cGeneratorErrorTest : public testing::Test {
protected:
    void setup(std::string_view content) {
        folder.put("error_info.txt", content);
        table.Setup("C:\\Torvane\\error_info.txt");
    }

    MemoryFolder folder;
    cGeneratorError table{folder};
};

struct Row {
    std::int32_t code;
    std::string_view description;
    std::int32_t type;
};

TEST_F(cGeneratorErrorTest, AnswersFromTheFirstRowThatFits) {
    setup("12=Door open=1\r\n"
          "no number=x=1\r\n"
          "\r\n"
          "0=nothing=1\r\n"
          "\t 013\t=Rotor\tfailed=\t 2 \r\n"
          "12=again=2\r\n"
          "14=A=B=1\r\n"
          "15=other class=7\r\n"
          "16=no class\r\n"
          "16=words of another row=2\r\n"
          "1e999=too large=1\r\n"
          "-17=T\xC3\xBCr=0\r\n");
    for (const auto& [code, description, type] :
         {Row{12, "Door open", 1}, Row{0, "", 3}, Row{13, "Rotorfailed", 2}, Row{14, "A", 0},
          Row{15, "other class", 0}, Row{16, "no class", 3}, Row{-17, "T\xFCr", 0}, Row{99, "", 3}}) {
        EXPECT_EQ(table.Description(code), description) << code;
        EXPECT_EQ(table.ErrorType(code), type) << code;
    }
    table.setEnable(false);
    EXPECT_EQ(table.Description(12), "");
    EXPECT_EQ(table.ErrorType(12), 3);
    table.setEnable(true);
    EXPECT_EQ(table.Description(12), "Door open");
}

TEST_F(cGeneratorErrorTest, AFileThatCannotBeUsedLeavesItEmpty) {
    setup("12=Door open=1\r\n");
    EXPECT_FALSE(table.problem());
    table.Setup("other.txt");
    EXPECT_EQ(table.problem()->number, 513);
    EXPECT_FALSE(table.Enable());
    table.setEnable(true);
    EXPECT_EQ(table.Description(12), "");
    setup("12=Door open=1\n13=LF alone=1\n");
    EXPECT_EQ(table.problem()->number, 514);
    EXPECT_EQ(table.ErrorType(12), 3);
    setup("13=Rotor=2\r\n");
    EXPECT_EQ(table.Description(12), "") << "nothing is left of the file before";
}

TEST_F(cGeneratorErrorTest, TheFileMayLieInAnotherDirectory) {
    folder.put("D:\\Texts\\error_info.txt", "12=Porte ouverte=2\r\n");
    setup("12=Door open=1\r\n");
    EXPECT_EQ(table.Description(12), "Door open");
    table.Setup("D:\\Texts\\error_info.txt");
    EXPECT_EQ(table.Description(12), "Porte ouverte");
    table.Setup("D:\\Texts\\other.txt");
    EXPECT_EQ(table.problem()->number, 513);
}

} // namespace
} // namespace quillon
