#pragma once

#include <cstdint>

namespace quillon {

/// How often this program has asked the heap for memory since it started. What a thrown fault takes does not
/// go through new and is not counted.
[[nodiscard]] std::uint64_t allocationCount();

} // namespace quillon
