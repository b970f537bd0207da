#pragma once

#include "sim/Options.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// One direction of a serial line that takes its time for every byte. Bytes come out as they have passed, so
/// a message may come in pieces.
class Line {
public:
    explicit Line(const Options& options) : options_(options) {}

    /// False where the line takes no time: its bytes need not go through here.
    [[nodiscard]] bool paced() const { return options_.baud > 0 || !waiting_.empty(); }

    void put(std::string_view bytes, std::int64_t nowMs);
    [[nodiscard]] std::optional<std::int64_t> nextDue() const;

    /// The bytes that have passed by now.
    [[nodiscard]] std::string take(std::int64_t nowMs);
    void clear() { waiting_.clear(); }

private:
    [[nodiscard]] std::int64_t byteNs() const;

    const Options& options_;
    std::string waiting_;
    std::int64_t firstNs_ = 0; ///< when the first byte that waits will have passed
    std::int64_t freeNs_ = 0;  ///< when the last byte that was taken had passed
};

} // namespace simulator
