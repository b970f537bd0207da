#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Journal.h"
#include "Traffic.h"

namespace quillon {

/// The rows of a recording that is still written. Each comes once, when it is known what became of it, which
/// is with the next frame at the latest.
class Follower {
public:
    /// The recording has grown by these bytes. The rows that are ready, a line each.
    [[nodiscard]] std::string take(std::string_view bytes);

private:
    std::string partial_; // a line whose end is still to come
    RecordingReader reader_;
    Traffic traffic_;
    std::size_t told_ = 0;
};

} // namespace quillon
