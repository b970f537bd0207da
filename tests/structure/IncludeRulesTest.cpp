#include "IncludeRules.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace structure {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& path) {
    std::ifstream in{path, std::ios::binary};
    return {std::istreambuf_iterator<char>{in}, {}};
}

TEST(IncludeRules, SourcesPointOnlyDownwards) {
    const fs::path top{QUILLON_SOURCE_DIR};
    int files = 0;
    for (const auto* folder : {"src", "sim", "tools"}) {
        if (!fs::exists(top / folder)) {
            continue;
        }
        for (const auto& entry : fs::recursive_directory_iterator{top / folder}) {
            if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp") {
                continue;
            }
            ++files;
            const auto file = entry.path().lexically_relative(top).generic_string();
            for (const auto& line : wrongIncludes(file, contentOf(entry.path()))) {
                ADD_FAILURE() << line;
            }
        }
    }
    EXPECT_GT(files, 0) << "no source was found under " << top;
}

struct Example {
    const char* file;
    const char* include;
    bool right;
};

// clang-format off
constexpr Example kExamples[] = {
    {"src/model/Phase.cpp",           "\"link/SendPath.h\"",             true},
    {"src/model/Phase.cpp",           "\"panel/layout/Fields.h\"",       true},
    {"src/model/Phase.cpp",           "\"panel/Pages.h\"",               false},
    {"src/link/SendPath.cpp",         "\"model/GeneratorState.h\"",      false},
    {"src/link/SendPath.cpp",         "\"link/TorvaneSerial.h\"",        false},
    {"src/link/SendPath.cpp",         "\"TorvaneSerial.h\"",             false},
    {"src/link/TorvaneSerial.cpp",    "\"panel/Pages.h\"",               true},
    {"src/link/TorvaneSerial.h",      "\"console/Console.h\"",           false},
    {"src/panel/Pages.cpp",           "\"link/TorvaneSerial.h\"",        false},
    {"src/console/Console.cpp",       "\"link/TorvaneSerial.h\"",        true},
    {"src/panel/layout/Fields.cpp",   "\"ui/Control.h\"",                true},
    {"src/panel/layout/Fields.cpp",   "\"link/Log.h\"",                  false},
    {"src/console/layout/Places.cpp", "\"panel/layout/Fields.h\"",       false},
    {"src/base/Text.cpp",             "\"runtime/Timer.h\"",             false},
    {"src/base/Text.cpp",             "\"nowhere/Timer.h\"",             false},
    {"sim/Generator.cpp",             "\"base/Numbers.h\"",              true},
    {"sim/Generator.cpp",             "\"runtime/Clock.h\"",             false},
    {"src/shell/MainForm.cpp",        "\"sim/Generator.h\"",             false},
    {"tools/scenario/Runner.cpp",     "\"sim/Generator.h\"",             true},
    {"tools/scenario/Runner.cpp",     "\"qt/MainWindow.h\"",             false},
    {"tools/screenshots/Stage.h",     "\"qt/Screen.h\"",                 true},
    {"tools/screenshots/Stage.h",     "<QImage>",                        true},
    {"src/qt/Screen.cpp",             "\"tools/screenshots/Stage.h\"",   false},
    {"src/ui/Control.h",              "<QWidget>",                       false},
    {"src/ui/Control.h",              "<QtWidgets/QLabel>",              false},
    {"src/qt/main.cpp",               "<QApplication>",                  true},
    {"src/qt/main.cpp",               "\"shell/MainForm.h\"",            true},
    {"src/ui/Control.h",              "<queue>",                         true},
};
// clang-format on

TEST(IncludeRules, TellRightFromWrong) {
    for (const auto& [file, include, right] : kExamples) {
        const auto wrong =
            wrongIncludes(file, std::string{"#pragma once\n  #  include "} + include + " // why\n");
        EXPECT_EQ(wrong.empty(), right) << file << " includes " << include;
        if (!wrong.empty()) {
            EXPECT_TRUE(wrong.front().starts_with(std::string{file} + ":2: ")) << wrong.front();
        }
    }
    EXPECT_EQ(wrongIncludes("src/odd/Thing.h", "").size(), 1U) << "a file outside every layer";
}

} // namespace
} // namespace structure
