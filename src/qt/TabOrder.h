#pragma once

#include <cstddef>
#include <vector>

#include "ui/ControlHost.h"
#include "ui/Input.h"

namespace quillon {

/// It can have the keyboard.
[[nodiscard]] bool takesKeyboard(Kind kind);

/// What is in reach, in the order in which the keyboard goes through it: a panel in front comes first.
[[nodiscard]] std::vector<Control*> keyboardOrder(const ControlHost& form, const Input& input);

/// Where Tab stops. Keys of a choice and the two of a step are one stop: the one in focus, the lit one or the
/// first.
[[nodiscard]] std::vector<Control*> tabStops(const std::vector<Control*>& order, const Control* focus);

/// The key so many further in the group of the one in focus; empty where there is none.
[[nodiscard]] Control* besideInGroup(const std::vector<Control*>& order, const Control* focus,
                                     std::ptrdiff_t step);

} // namespace quillon
