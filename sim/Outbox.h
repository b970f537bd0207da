#pragma once

#include "sim/Options.h"
#include "sim/Random.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// Everything that is on its way to the console. A message never overtakes another: it is one line.
class Outbox {
public:
    explicit Outbox(const Options& options) : options_(options), random_(options.seed) {}

    /// What becomes of a message.
    enum class Fate {
        Sent,
        Garbled, ///< with garbage beside it
        Dropped, ///< an acknowledgement that is not sent
        Silent,  ///< the machine says nothing
        Unheard, ///< sent, but the plug has no contact
    };
    /// Told of every message when it would leave the machine, without its end.
    std::function<void(std::string_view text, Fate fate)> onMessage;

    /// Collects a message; it gets its time at `release`.
    void say(std::string_view text) { collected_.emplace_back(text); }

    /// Acknowledges the command in work, ahead of the messages collected meanwhile.
    void acknowledge(std::int64_t nowMs);

    /// Sends the collected messages off, due after the answer delay.
    void release(std::int64_t nowMs);

    /// Loses the next acknowledgements.
    void dropNext(int count) { dropNext_ = count; }
    void clear();

    /// From now on each message of this mnemonic has that value, whatever the machine means; without one it
    /// has its own again.
    void stick(std::string_view mnemonic, std::string_view value);
    void unstick() { fixed_.clear(); }
    [[nodiscard]] int fixedValues() const { return static_cast<int>(fixed_.size()); }

    /// Everything by chance begins anew.
    void reseed(std::uint32_t seed) { random_ = Random(seed); }

    [[nodiscard]] std::optional<std::int64_t> nextDue() const;

    /// Takes the next message off the queue, as bytes; empty while the machine is silent.
    [[nodiscard]] std::string takeNext();

    [[nodiscard]] int messagesSent() const { return messagesSent_; }
    [[nodiscard]] int acknowledgementsSent() const { return acknowledgementsSent_; }
    [[nodiscard]] int acknowledgementsDropped() const { return acknowledgementsDropped_; }

private:
    struct Item {
        std::int64_t dueMs;
        std::string bytes;
    };

    void tell(std::string_view bytes, Fate fate) const;
    [[nodiscard]] std::string asTold(const std::string& text);
    [[nodiscard]] std::string ended(std::string_view text) const;
    [[nodiscard]] std::string withNoise(std::string bytes);
    [[nodiscard]] std::string garbage();

    const Options& options_;
    Random random_; // its own: noise must not change what the machine does
    std::vector<std::string> collected_;
    std::deque<Item> queue_;
    std::map<std::string, std::string> stuck_; ///< what was told first, by mnemonic
    std::map<std::string, std::string> fixed_; ///< by mnemonic
    int dropNext_ = 0;
    int acknowledgements_ = 0;
    int messagesSent_ = 0;
    int acknowledgementsSent_ = 0;
    int acknowledgementsDropped_ = 0;
};

} // namespace simulator
