#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace structure {

/// Checks the includes of one source file against the order of the layers.
/// `file` is told from the top of the project ("src/model/Phase.cpp").
/// Gives one line "file:line: what is wrong" for each include that points the wrong way.
[[nodiscard]] std::vector<std::string> wrongIncludes(std::string_view file, std::string_view text);

} // namespace structure
