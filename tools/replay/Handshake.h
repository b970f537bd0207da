#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

namespace quillon {

/// Finds out what became of each frame that was sent. Frames have the numbers that their owner gives them.
class Handshake {
public:
    /// What was sent last has had its time, and nothing acknowledged it.
    struct Unanswered {
        std::size_t frame;
        bool givenUp; ///< after as many transmissions as there are
    };
    struct Sent {
        std::optional<Unanswered> before{};
        /// It is another transmission of this one.
        std::optional<std::size_t> repeats{};
        int transmission = 1;
    };

    Sent sent(std::size_t frame, std::string_view text);
    /// The frame that it is for; nothing when none waits.
    std::optional<std::size_t> acknowledged();
    /// Nothing more can come for what was sent last.
    std::optional<Unanswered> over();
    /// The frame whose fate is still to come; nothing when that is told of all.
    [[nodiscard]] std::optional<std::size_t> waiting() const;

private:
    [[nodiscard]] bool open() const { return opened_ && !answered_; }
    [[nodiscard]] bool asks(std::string_view text);

    std::unordered_map<std::string, bool> asksByText_;
    std::string text_;
    std::size_t first_ = 0;
    std::size_t last_ = 0;
    int tries_ = 0;
    bool opened_ = false;
    bool asks_ = false;
    bool answered_ = true;
};

} // namespace quillon
