#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/Platform.h"

namespace quillon {

class ctrQuillonConsole;

inline constexpr std::string_view kTextFile = "texts.txt";

/// Hands on each text of a file with lines name=text in UTF-8, \n for a line break, \\ for a backslash, lines
/// that begin with # skipped; `take` says whether there is one of that name. What can't be used, a line each.
[[nodiscard]] std::vector<std::string>
readTexts(std::string_view content,
          const std::function<bool(const std::string& name, const std::string& text)>& take);

/// Replaces the operator's texts by those of "texts.txt", when there is one. What can't be used is told in
/// one message box, and the rest is used.
void replaceTexts(const ctrQuillonConsole& console, const Folder& folder, Desktop& desktop);

} // namespace quillon
