#include "shell/RecordingHeader.h"

#include <array>

#include "base/ScenarioText.h"
#include "base/Text.h"
#include "console/ConsoleVersion.h"
#include "runtime/ProfileFile.h"
#include "shell/TextFile.h"

namespace quillon {

namespace {

constexpr std::array<std::string_view, 4> kFiles{"Quillon.ini", "temp.ini", "error_info.txt", kTextFile};

/// The lines of a small file, as a scenario takes them in.
std::string fileBlock(std::string_view name, std::string_view content) {
    std::string block = "file " + std::string(name) + "\n";
    auto lines = split(content, "\n");
    if (lines.back().empty()) {
        lines.pop_back();
    }
    for (std::string_view line : lines) {
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        // A line of this word alone would end the block. It has no meaning in any of the files.
        block += trim(line) == "end" ? "# end" : line;
        block += '\n';
    }
    return block + "end\n";
}

} // namespace

std::string recordingHeader(const Folder& folder, const Desktop& desktop, std::string_view commandLine) {
    std::string header =
        "# Recorded by Quillon " QUILLON_VERSION ". Lines behind # tell what it did, with the time in ms.\n";
    header.append("# console ").append(kConsoleVersion).append("\n");
    for (const std::string_view name : kFiles) {
        if (const auto content = folder.read(name, kProfileFileLimit)) {
            header += fileBlock(name, *content);
        }
    }
    if (!commandLine.empty()) {
        header += "args " + scenarioText(commandLine) + "\n";
    }
    return header + "screen " + std::to_string(desktop.screenWidth()) + " " +
           std::to_string(desktop.screenHeight()) + "\n";
}

} // namespace quillon
