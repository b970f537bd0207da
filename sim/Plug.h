#pragma once

#include "sim/Random.h"

#include <cstdint>

namespace simulator {

/// The plug of the line at the machine. One that sits loose makes and breaks contact by chance; what passes
/// while it has none is lost, either way.
class Plug {
public:
    enum class State { In, Out, Loose };

    explicit Plug(std::uint32_t seed) : random_(seed) {}

    void put(State state, std::int64_t nowMs);
    [[nodiscard]] State state() const { return state_; }
    void reseed(std::uint32_t seed) { random_ = Random(seed); }

    /// Whether it has contact; the times must not run backwards.
    [[nodiscard]] bool passes(std::int64_t nowMs);

private:
    Random random_;
    State state_ = State::In;
    bool touching_ = true;
    std::int64_t changesMs_ = 0; ///< of a loose one
};

} // namespace simulator
