#pragma once

#include "runtime/Platform.h"

namespace quillon {

class ctrQuillonConsole;

inline constexpr std::string_view kTextFile = "texts.txt";

/// Replaces the operator's texts by those of "texts.txt", when there is one: lines name=text in UTF-8, \n for
/// a line break, \\ for a backslash, lines that begin with # skipped. What can't be used is told in one
/// message box, and the rest is used.
void replaceTexts(const ctrQuillonConsole& console, const Folder& folder, Desktop& desktop);

} // namespace quillon
