#pragma once

#include <cstdint>
#include <string>

namespace quillon {

/// What becomes of the recording of this session.
struct RecordingState {
    enum class Kind : std::uint8_t {
        Starting,  ///< nothing is told of it yet
        Recording, ///< to the disk
        InMemory,  ///< its folder cannot be written; gone at logout
        Full,      ///< its disk takes nothing at the moment
        Off,       ///< it is not wanted
        None,      ///< it is wanted, and there is none
    };
    Kind kind = Kind::Starting;
    std::string name{};   ///< the session's number, or the file
    std::string folder{}; ///< that it lies in; empty for a file
    std::string why{};    ///< in the system's words
};

} // namespace quillon
