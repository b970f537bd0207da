#include "sim/Plug.h"

namespace simulator {

namespace {

// Of a loose plug, in ms: how long it has contact, and how long it has none.
constexpr int kShortestContact = 1500;
constexpr int kContactMore = 4000;
constexpr int kShortestBreak = 80;
constexpr int kBreakMore = 900;

} // namespace

void Plug::put(State state, std::int64_t nowMs) {
    state_ = state;
    touching_ = state != State::Out;
    changesMs_ = nowMs + kShortestContact;
}

bool Plug::passes(std::int64_t nowMs) {
    while (state_ == State::Loose && changesMs_ <= nowMs) {
        touching_ = !touching_;
        changesMs_ += touching_ ? kShortestContact + random_.below(kContactMore)
                                : kShortestBreak + random_.below(kBreakMore);
    }
    return touching_;
}

} // namespace simulator
