#include <gtest/gtest.h>

#include "link/LinkSettings.h"
#include "runtime/MemoryPlatform.h"

namespace quillon {
namespace {

TEST(InstallationFacts, AreTheDefaultsWhereTheFileSaysNothingThatCanBeUsed) {
    struct Row {
        const char* file;
        int mode;
        bool third, overlap, retry;
    };
    for (const Row& row : {
             Row{"", 4, false, false, false},
             Row{"[TM]\nTM=x\n[ThirdTube]\nThirdTube=?\n[SolapeFocos]\nSolapeFocos=x\n[AutocalRetry]"
                 "\nAutocalRetry=x",
                 4, false, false, false},
             Row{"[TM]\nTM=3\n[ThirdTube]\nThirdTube=1", 3, true, false, false},
             Row{"[SolapeFocos]\nSolapeFocos=True", 4, false, true, false},
             Row{"[AutocalRetry]\nAutocalRetry=-1\n[ThirdTube]\nThirdTube= false ", 4, false, false, true},
         }) {
        MemoryFolder folder;
        folder.put("temp.ini", row.file);
        const auto facts = InstallationFacts::read(folder);
        EXPECT_EQ(facts.techniqueMode, row.mode) << row.file;
        EXPECT_EQ(facts.ThirdTube, row.third) << row.file;
        EXPECT_EQ(facts.SolapeFocos, row.overlap) << row.file;
        EXPECT_EQ(facts.AutocalibrationRetry, row.retry) << row.file;
    }
}

} // namespace
} // namespace quillon
