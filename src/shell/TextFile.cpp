#include "shell/TextFile.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/CodePage.h"
#include "base/Text.h"
#include "console/ConsoleTexts.h"
#include "console/ctrQuillonConsole.h"
#include "runtime/ProfileFile.h"

namespace quillon {

namespace {

constexpr std::size_t kLongestReport = 10; // lines of the box

/// The text with its escapes resolved. A backslash in front of anything else stands for itself.
std::string resolved(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char next = text[at] == '\\' && at + 1 < text.size() ? text[at + 1] : '\0';
        if (next == 'n') {
            plain += kLineBreak;
        } else {
            plain += text[at];
        }
        at += next == 'n' || next == '\\' ? 1 : 0;
    }
    return plain;
}

/// Carries one line out. What is wrong with it; empty when nothing is.
std::string replace(std::string_view line,
                    const std::function<bool(const std::string&, const std::string&)>& take) {
    const auto equals = line.find('=');
    if (equals == std::string_view::npos) {
        return "no \"=\" behind a name";
    }
    const std::string name(trim(line.substr(0, equals)));
    const auto text = codePageFromUtf8(trim(line.substr(equals + 1)));
    if (!text) {
        return name + ": a character that cannot be shown, or no UTF-8";
    }
    return take(name, resolved(*text)) ? "" : name + ": there is no such text";
}

} // namespace

std::vector<std::string>
readTexts(std::string_view content,
          const std::function<bool(const std::string& name, const std::string& text)>& take) {
    std::vector<std::string> problems;
    std::size_t number = 0;
    for (std::string_view line : split(withoutByteOrderMark(content), "\n")) {
        ++number;
        line = trim(line.substr(0, line.find_last_not_of('\r') + 1));
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        if (const std::string problem = replace(line, take); !problem.empty()) {
            problems.push_back("Line " + std::to_string(number) + ": " + problem);
        }
    }
    return problems;
}

void replaceTexts(const ctrQuillonConsole& console, const Folder& folder, Desktop& desktop) {
    const auto content = folder.read(kTextFile, kProfileFileLimit);
    if (!content) {
        return;
    }
    const std::vector<std::string> names = console.textNames();
    const auto problems = readTexts(*content, [&](const std::string& name, const std::string& text) {
        const bool known =
            std::ranges::any_of(names, [&name](const std::string& each) { return equalsNoCase(each, name); });
        if (known) {
            console.operations().set(name, text);
        }
        return known;
    });
    std::string report;
    for (std::size_t at = 0; at < std::min(problems.size(), kLongestReport); ++at) {
        report.append(kLineBreak).append(problems[at]);
    }
    if (problems.size() > kLongestReport) {
        report.append(kLineBreak).append("and " + std::to_string(problems.size() - kLongestReport) + " more");
    }
    if (!problems.empty()) {
        desktop.message(BoxKind::Info, console.texts().sBoxTitle,
                        "Not all of \"" + std::string(kTextFile) + "\" can be used." + report);
    }
}

} // namespace quillon
