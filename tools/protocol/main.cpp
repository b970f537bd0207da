#include <algorithm>
#include <iostream>
#include <string_view>

#include "Document.h"
#include "Workflows.h"
#include "base/ProgramArguments.h"

namespace {

constexpr std::string_view kHelp = R"(Usage: quillon-protocol [workflows]

Writes a document of the project from the tables of the program: docs/protocol.md, or docs/workflows.md.
)";

} // namespace

int main(int argc, char** argv) {
    quillon::ProgramArguments read = quillon::readArguments({argv + std::min(argc, 1), argv + argc}, {});
    const bool workflows = !read.words.empty() && read.words.front() == "workflows";
    if (read.words.size() > (workflows ? 1U : 0U) && read.error.empty()) {
        read.error = "there is no document \"" + read.words.back() + "\"";
    }
    if (const auto status = quillon::answerAtOnce(read, "quillon-protocol", kHelp)) {
        return *status;
    }
    std::cout << (workflows ? quillon::workflowsDocument() : quillon::protocolDocument());
    return 0;
}
