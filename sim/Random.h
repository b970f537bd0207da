#pragma once

#include <cstdint>
#include <random>

namespace simulator {

/// Numbers that follow from the seed alone, on every machine: the standard distributions may differ.
class Random {
public:
    explicit Random(std::uint32_t seed) : engine_(seed) {}

    /// 0 to limit - 1.
    [[nodiscard]] int below(int limit) {
        return static_cast<int>(engine_() % static_cast<std::mt19937::result_type>(limit));
    }

private:
    std::mt19937 engine_;
};

} // namespace simulator
