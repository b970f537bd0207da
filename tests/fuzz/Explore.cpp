// An operator, a generator and a line whose choices are the input's bytes, before a console of its own: all
// that the search judges is judged here, and what is not covered yet leads the way.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>

#include "explore/Chance.h"

namespace {

constexpr int kMostMoves = 200;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace quillon;
    static const std::vector<Ground> kGrounds = allGrounds();
    ByteDice dice({data, size});
    const Ground& ground = dice.oneOf(kGrounds);
    Chance chance(ground, dice);
    Plan plan = chance.plan();
    Session session(plan);
    for (const std::string& line : plan.lines) {
        session.perform(line);
    }
    for (int i = 0; i < kMostMoves && !dice.empty() && !session.ended() && session.violations().empty();
         ++i) {
        session.perform(chance.next(session));
    }
    session.leave();
    if (!session.violations().empty()) {
        plan.lines = session.done();
        std::cerr << "panic: " << session.complaints() << scenarioOf(plan);
        std::abort();
    }
    return 0;
}
