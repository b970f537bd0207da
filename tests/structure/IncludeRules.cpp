#include "IncludeRules.h"

#include <algorithm>
#include <array>
#include <optional>
#include <sstream>

namespace structure {
namespace {

/// Where a file belongs. An include goes to a lower height or stays in its own layer.
struct Layer {
    std::string_view path; ///< a beginning of the file's path; the first row that fits counts
    std::string_view name;
    int height;
};

constexpr int kUiHeight = 2;

// clang-format off
constexpr std::array kLayers{
    Layer{"src/base/",               "base",           0},
    Layer{"src/runtime/",            "runtime",        1},
    Layer{"src/ui/",                 "ui",             kUiHeight},
    Layer{"src/panel/layout/",       "panel/layout",   3}, // below model, which writes to the panel's fields
    Layer{"src/link/TorvaneSerial.", "TorvaneSerial",  7}, // makes one control of link, model and panel
    Layer{"src/link/",               "link",           4},
    Layer{"src/model/",              "model",          5},
    Layer{"src/panel/",              "panel",          6},
    Layer{"src/console/layout/",     "console/layout", 7},
    Layer{"src/console/",            "console",        8},
    Layer{"src/shell/",              "shell",          9},
    Layer{"src/qt/",                 "qt",            10},
    Layer{"tools/screenshots/",      "screenshots",   11}, // takes its pictures of the window
    Layer{"tools/",                  "tools",         10},
    Layer{"sim/",                    "sim",           10},
};
// clang-format on

std::optional<Layer> layerOf(std::string_view path) {
    const auto row = std::ranges::find_if(kLayers, [&](const Layer& l) { return path.starts_with(l.path); });
    return row == kLayers.end() ? std::nullopt : std::optional{*row};
}

/// The included file's path from the top of the project.
std::string resolve(std::string_view includer, const std::string& included) {
    if (included.find('/') == std::string::npos) {
        return std::string{includer.substr(0, includer.rfind('/') + 1)} + included;
    }
    const bool fromTop = included.starts_with("sim/") || included.starts_with("tools/");
    return fromTop ? included : "src/" + included;
}

bool allowed(const Layer& from, const Layer& to) {
    if (from.name == to.name) {
        return true;
    }
    if (from.name == "sim") {
        return to.name == "base"; // the simulated generator shares no logic with the console
    }
    if (to.name == "sim") {
        return from.name == "tools";
    }
    if (from.name == "console/layout") {
        return to.height <= kUiHeight; // what stands where needs controls and nothing else
    }
    return to.height < from.height;
}

struct Include {
    bool angled;
    std::string path;
};

/// The include directive of a line, if it is one.
std::optional<Include> includeOf(std::string_view line) {
    const auto skip = [&](std::string_view word) {
        const auto begin = std::min(line.find_first_not_of(" \t"), line.size());
        const bool found = line.substr(begin).starts_with(word);
        line.remove_prefix(found ? begin + word.size() : 0);
        return found;
    };
    if (!skip("#") || !skip("include")) {
        return std::nullopt;
    }
    const bool angled = skip("<");
    if (!angled && !skip("\"")) {
        return std::nullopt;
    }
    return Include{angled, std::string{line.substr(0, line.find(angled ? '>' : '"'))}};
}

/// Qt's own headers are called Q and a capital ("QWidget"), or lie in a folder of such a name.
bool isQtHeader(std::string_view path) {
    const auto capital = [](char c) { return c >= 'A' && c <= 'Z'; };
    return path.starts_with("Qt") || (path.size() > 1 && path[0] == 'Q' && capital(path[1]));
}

/// What is wrong with one include; empty when nothing is.
std::string complaint(std::string_view file, const Layer& from, const Include& include) {
    if (include.angled) {
        const bool windowed = from.name == "qt" || from.name == "screenshots";
        const bool misplaced = !windowed && isQtHeader(include.path);
        return misplaced ? "Qt belongs to src/qt: <" + include.path + ">" : "";
    }
    if (from.name == "qt" && include.path.ends_with(".moc")) {
        return {};
    }
    const auto to = layerOf(resolve(file, include.path));
    if (!to) {
        return "belongs to no layer: \"" + include.path + "\"";
    }
    if (!allowed(from, *to)) {
        return std::string{from.name} + " must not know " + std::string{to->name} + ": \"" + include.path +
               "\"";
    }
    return {};
}

} // namespace

std::vector<std::string> wrongIncludes(std::string_view file, std::string_view text) {
    const auto from = layerOf(file);
    if (!from) {
        return {std::string{file} + ":1: the file belongs to no layer"};
    }
    std::vector<std::string> wrong;
    std::istringstream lines{std::string{text}};
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        const auto include = includeOf(line);
        if (!include) {
            continue;
        }
        const auto what = complaint(file, *from, *include);
        if (!what.empty()) {
            wrong.push_back(std::string{file} + ":" + std::to_string(number) + ": " + what);
        }
    }
    return wrong;
}

} // namespace structure
