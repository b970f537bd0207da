#pragma once

#include <array>
#include <string>
#include <vector>

#include "Dice.h"
#include "Moves.h"

namespace quillon {

/// Random actions of an operator and faults of a generator, with all that a hand can do; everything follows
/// from the dice. Each begins with odds of its own for its sorts of moves, some of them none: what a mix of
/// all would never do often enough comes in some walk.
class Chance {
public:
    Chance(const Ground& ground, Dice& dice);

    /// The ground's start; where that varies, with a simulated generator of some kind.
    [[nodiscard]] Plan plan();
    /// The next command: a key among those in reach, a wait, something that befalls the generator.
    [[nodiscard]] std::string next(Session& session);
    /// Whether it may end the program before its time.
    void mayEnd(bool may) { mayEnd_ = may; }

private:
    struct Sort {
        int usual;
        std::string (Chance::*move)(Session& session);
    };
    static constexpr std::size_t kSorts = 15;
    static const std::array<Sort, kSorts> kTable;

    [[nodiscard]] std::string modeKey(Session& session);
    [[nodiscard]] std::string anyKey(Session& session);
    [[nodiscard]] std::string newKey(Session& session);
    [[nodiscard]] std::string hold(Session& session);
    [[nodiscard]] std::string letGo(Session& session);
    [[nodiscard]] std::string slideOff(Session& session);
    [[nodiscard]] std::string shortWait(Session& session);
    [[nodiscard]] std::string anyWait(Session& session);
    [[nodiscard]] std::string phase(Session& session);
    [[nodiscard]] std::string mishap(Session& session);
    [[nodiscard]] std::string report(Session& session);
    [[nodiscard]] std::string valueFault(Session& session);
    [[nodiscard]] std::string answer(Session& session);
    [[nodiscard]] std::string machineFault(Session& session);
    [[nodiscard]] std::string end(Session& session);
    [[nodiscard]] std::string touch(Session& session, const std::vector<std::string>& names);

    const Ground& ground_;
    Dice& dice_;
    std::array<int, kSorts> odds_{};
    bool mayEnd_ = false;
};

} // namespace quillon
