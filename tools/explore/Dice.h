#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>

namespace quillon {

/// Where choices come from.
class Dice {
public:
    virtual ~Dice() = default;
    /// 0 to limit - 1; limit is 1 at least.
    [[nodiscard]] virtual std::size_t below(std::size_t limit) = 0;
    template <typename List> [[nodiscard]] auto& oneOf(const List& list) {
        return list[below(std::size(list))];
    }
};

/// All follows from the seed, on every machine: the standard distributions differ between libraries.
class SeededDice final : public Dice {
public:
    explicit SeededDice(std::uint32_t seed) : engine_(seed) {}
    [[nodiscard]] std::size_t below(std::size_t limit) override { return engine_() % limit; }

private:
    std::mt19937 engine_;
};

/// All follows from the bytes, each choice from as few as it takes: whoever changes one byte changes one
/// choice.
class ByteDice final : public Dice {
public:
    explicit ByteDice(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    /// 0 when nothing is left.
    [[nodiscard]] std::size_t below(std::size_t limit) override {
        std::size_t number = 0;
        for (std::size_t most = limit - 1; most > 0 && !bytes_.empty(); most >>= 8U) {
            number = number << 8U | bytes_.front();
            bytes_ = bytes_.subspan(1);
        }
        return number % limit;
    }
    [[nodiscard]] bool empty() const { return bytes_.empty(); }

private:
    std::span<const std::uint8_t> bytes_;
};

} // namespace quillon
