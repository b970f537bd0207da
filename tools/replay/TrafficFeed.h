#pragma once

#include <cstddef>
#include <deque>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "GrowingSession.h"
#include "Journal.h"
#include "Traffic.h"
#include "runtime/WallTime.h"

namespace quillon {

/// The traffic of a visit for somebody who looks on: what its last session adds comes by itself.
class TrafficFeed {
public:
    /// Of the rows, the last `most` are kept.
    TrafficFeed(const std::filesystem::path& folder, const std::vector<RecordedSession>& sessions,
                std::size_t most);

    /// Reads on. The numbers, from 1, of the rows that are new or tell more than before, in order.
    std::vector<std::size_t> read();

    // Rows are counted from 1, whatever is kept of them.
    [[nodiscard]] std::size_t first() const { return first_; }
    [[nodiscard]] std::size_t last() const { return traffic_.size(); }
    [[nodiscard]] const TrafficRow& row(std::size_t number) const { return traffic_.row(number); }
    /// By the PC's clock.
    [[nodiscard]] std::optional<WallTime> timeOf(std::size_t number) const { return beside(number).wall; }
    /// Since the row before in its session.
    [[nodiscard]] std::optional<Milliseconds> since(std::size_t number) const;
    /// The console asks how the generator is, or hears the same as before.
    [[nodiscard]] bool isPoll(std::size_t number) const { return beside(number).poll; }

private:
    /// What is told beside a row.
    struct Beside {
        std::size_t session;
        bool poll;
        std::optional<WallTime> wall;
    };
    [[nodiscard]] const Beside& beside(std::size_t number) const { return beside_.at(number - first_); }
    void take(std::string_view text, std::vector<std::size_t>& changed);
    void line(std::string_view line, std::vector<std::size_t>& changed);
    [[nodiscard]] bool asksOrRepeats(const TrafficRow& row);

    struct Session {
        GrowingSession text;
        RecordingReader reader{};
        std::optional<WallTime> wall{}; ///< the PC's clock
        Milliseconds at = 0;            ///< when it showed that
    };
    std::deque<Session> sessions_;
    std::size_t reading_ = 0; ///< the session that is read, or waited for
    std::size_t most_;
    std::size_t first_ = 1;
    Traffic traffic_;
    std::deque<Beside> beside_;
    std::string phase_; ///< as reported last
    std::string heat_;
};

} // namespace quillon
