#pragma once

#include <utility>

namespace quillon {

/// Gives a variable another value for as long as the scope lasts, also when a Fault ends it.
template <typename T> class Temporarily {
public:
    Temporarily(T& variable, T value)
        : variable_(variable), before_(std::exchange(variable, std::move(value))) {}
    ~Temporarily() { variable_ = std::move(before_); }
    Temporarily(const Temporarily&) = delete;
    Temporarily& operator=(const Temporarily&) = delete;

private:
    T& variable_;
    T before_;
};

} // namespace quillon
