#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace quillon {

/// Memory, zero at first, that this process shares with the copies of it.
class SharedBytes {
public:
    explicit SharedBytes(std::size_t size);
    ~SharedBytes();
    SharedBytes(const SharedBytes&) = delete;
    SharedBytes& operator=(const SharedBytes&) = delete;
    [[nodiscard]] std::span<std::uint8_t> bytes() const { return bytes_; }

private:
    std::span<std::uint8_t> bytes_;
};

/// A text that a copy leaves to its origin. What it has no room for is left out.
class SharedText {
public:
    explicit SharedText(std::size_t room) : shared_(room + sizeof(std::size_t)) {}
    void clear() { length() = 0; }
    void add(std::string_view text);
    [[nodiscard]] std::string_view text() const;

private:
    [[nodiscard]] std::size_t& length() const;
    SharedBytes shared_;
};

/// Does the work in a copy of this process, which ends with it: whatever it changes is changed there only.
/// Empty when it came to its end, or what ended it.
[[nodiscard]] std::string inACopy(const std::function<void()>& work);

} // namespace quillon
