#include "Comparison.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <map>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "base/Text.h"
#include "tools/words/Words.h"

namespace quillon {

namespace {

constexpr std::string_view kAcknowledgement = "AK";
constexpr std::string_view kAnswer = "answer";
constexpr Milliseconds kFarthest = 60'000; // apart in time, for a message that came in another turn
constexpr Milliseconds kTolerance = 10;    // of a delay; a serial line and a busy PC make so much
constexpr Milliseconds kMoment = 500;      // apart, for a message that belongs to no command
constexpr Milliseconds kSlower = 25;       // than other answers: a command of its own

/// A message, and its other half.
struct Half {
    const Told* told;
    std::string kind; ///< the text; for an answer to the poll that says nothing new, that alone
    std::size_t pair = kNone;
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
};

struct Delays {
    std::vector<Milliseconds> real;
    std::vector<Milliseconds> simulated;
};

Milliseconds median(std::vector<Milliseconds> times) {
    std::ranges::sort(times);
    return times[times.size() / 2];
}

Milliseconds longest(const std::vector<Milliseconds>& times) {
    return *std::ranges::max_element(times);
}

bool isPhase(std::string_view text) {
    return text.starts_with("ST") && text.size() > 2;
}

std::vector<Half> halvesOf(const std::vector<Told>& messages) {
    std::vector<Half> halves;
    std::string phase;
    for (const Told& each : messages) {
        const bool again = each.text == phase;
        halves.push_back({&each, again ? "the phase again" : each.text});
        if (isPhase(each.text)) {
            phase = each.text;
        }
    }
    return halves;
}

class Comparer {
public:
    explicit Comparer(const Playback& playback)
        : playback_(playback), real_(halvesOf(playback.real)), simulated_(halvesOf(playback.simulated)) {}

    Comparison run() {
        pairUp();
        tellMissing();
        tellPairs();
        tellOrder();
        for (const std::string& each : playback_.strayed) {
            tell("8 another phase for long", each);
        }
        Comparison result;
        result.report = head() + delays(result.differences);
        for (const auto& [what, seen] : kinds_) {
            result.differences.push_back(what.substr(what.find(' ') + 1));
            result.report += "  " + std::to_string(seen.first) + " x " + result.differences.back() +
                             "   first: " + seen.second + "\n";
        }
        if (result.differences.empty()) {
            result.report += "No difference.\n";
        }
        result.report += hands();
        result.profile = profile();
        return result;
    }

private:
    template <class Fits> void pairWhere(const Fits& fits) {
        for (std::size_t at = 0; at < real_.size(); ++at) {
            if (real_[at].pair != Half::kNone) {
                continue;
            }
            std::size_t best = Half::kNone;
            for (std::size_t other = 0; other < simulated_.size(); ++other) {
                if (simulated_[other].pair == Half::kNone && fits(real_[at], simulated_[other]) &&
                    (best == Half::kNone || apart(at, other) < apart(at, best))) {
                    best = other;
                }
            }
            if (best != Half::kNone) {
                real_[at].pair = best;
                simulated_[best].pair = at;
            }
        }
    }

    [[nodiscard]] Milliseconds apart(std::size_t real, std::size_t simulated) const {
        const Milliseconds by = real_[real].told->time - simulated_[simulated].told->time;
        return by < 0 ? -by : by;
    }

    /// Same words behind the same frame first, then another value there; then the same words further off, for
    /// a machine that is slower; a phase that is told again has no value.
    void pairUp() {
        const auto sameTurn = [](const Half& a, const Half& b) { return a.told->turn == b.told->turn; };
        const auto near = [](const Half& a, const Half& b) {
            return std::max(a.told->time, b.told->time) - std::min(a.told->time, b.told->time) <= kFarthest;
        };
        pairWhere([&](const Half& a, const Half& b) { return sameTurn(a, b) && a.kind == b.kind; });
        pairWhere([&](const Half& a, const Half& b) {
            return isPhase(a.told->text) && near(a, b) && a.kind == b.kind;
        });
        pairWhere([&](const Half& a, const Half& b) {
            return sameTurn(a, b) && a.told->text != kAcknowledgement && !isPhase(a.told->text) &&
                   mnemonicOf(a.told->text) == mnemonicOf(b.told->text);
        });
        pairWhere([&](const Half& a, const Half& b) { return near(a, b) && a.kind == b.kind; });
        pairWhere([&](const Half& a, const Half& b) {
            // The poll that was answered while the other was in another phase already.
            return sameTurn(a, b) && isPhase(a.told->text) && isPhase(b.told->text);
        });
    }

    void tell(const std::string& what, const std::string& example) {
        auto& [count, first] = kinds_[what];
        if (count++ == 0) {
            first = example;
        }
    }

    [[nodiscard]] std::string placeOf(const Told& told) const {
        return std::to_string(told.time) + " behind " + playback_.turns[told.turn].command + ": " + told.text;
    }

    void tellMissing() {
        const auto every = [&](const std::vector<Half>& halves, const std::string& who) {
            for (const Half& each : halves) {
                if (each.pair == Half::kNone) {
                    const bool elsewhere = phaseAt(playback_.real, each.told->turn) !=
                                           phaseAt(playback_.simulated, each.told->turn);
                    tell(elsewhere ? "7 what only one says, as they were in different phases"
                                   : who + mnemonicOf(each.told->text),
                         placeOf(*each.told));
                }
            }
        };
        every(real_, "2 only the machine says ");
        every(simulated_, "3 only the simulator says ");
    }

    /// The phase that was told last before a frame.
    [[nodiscard]] std::string phaseAt(const std::vector<Told>& all, std::size_t turn) const {
        std::string phase;
        for (const Told& each : all) {
            if (each.time > playback_.turns[turn].time) {
                break;
            }
            phase = isPhase(each.text) ? each.text : phase;
        }
        return phase;
    }

    /// Where a change of the phase came from: the frame that asked for it, or the report of a hand.
    [[nodiscard]] std::optional<std::pair<std::string, Milliseconds>> causeOf(const Told& simulated) const {
        static constexpr std::array<std::string_view, 4> kAsk{"CF", "CA", "AR", "XR"};
        for (std::size_t turn = simulated.turn; turn > 0; --turn) {
            const Turn& each = playback_.turns[turn];
            if (std::ranges::any_of(kAsk, [&](auto ask) { return each.command.starts_with(ask); })) {
                return std::pair(each.command, each.time);
            }
        }
        return std::nullopt;
    }

    void tellPairs() {
        for (const Half& real : real_) {
            if (real.pair == Half::kNone) {
                continue;
            }
            const Told& machine = *real.told;
            const Half& half = simulated_[real.pair];
            const Told& other = *half.told;
            if (machine.text == other.text || isPhase(machine.text)) {
                ++alike_;
            } else {
                tell("4 another value of " + mnemonicOf(machine.text),
                     placeOf(machine) + ", simulated " + other.text);
            }
            const Turn& turn = playback_.turns[other.turn];
            if (machine.text == kAcknowledgement) {
                add(std::string(kAcknowledgement), machine.time - turn.time, other.time - turn.time);
            } else if (real.kind == half.kind && (isPhase(real.kind) || real.kind == "PR1")) {
                addChange(real, half);
            } else if (machine.turn == other.turn && turn.command.starts_with(mnemonicOf(machine.text))) {
                add(std::string(kAnswer), machine.time - turn.time, other.time - turn.time);
                answers_[turn.command].real.push_back(machine.time - turn.time);
                answers_[turn.command].simulated.push_back(other.time - turn.time);
            } else if (const Milliseconds by = apartSinceChange(real); machine.turn != other.turn &&
                                                                       real.kind == machine.text &&
                                                                       (by > kMoment || by < -kMoment)) {
                tell("5 another moment of " + mnemonicOf(machine.text),
                     placeOf(machine) + ", simulated at " + std::to_string(other.time));
            }
        }
    }

    /// How much later the machine says it than the simulator; counted from the change of its phase before,
    /// where that is less.
    [[nodiscard]] Milliseconds apartSinceChange(const Half& real) const {
        const Milliseconds by = real.told->time - simulated_[real.pair].told->time;
        for (auto at = static_cast<std::size_t>(&real - real_.data()); at-- > 0;) {
            const Half& change = real_[at];
            if (isPhase(change.kind) && change.pair != Half::kNone) {
                const Milliseconds since = by - (change.told->time - simulated_[change.pair].told->time);
                return std::abs(since) < std::abs(by) ? since : by;
            }
        }
        return by;
    }

    /// A step that follows another by itself, or a phase that was asked for: how long it took.
    void addChange(const Half& machine, const Half& other) {
        static constexpr std::array<std::pair<std::string_view, std::string_view>, 3> kSteps{
            {{"ST3", "ST4"}, {"ST1", "ST2"}, {"PS1", "PR1"}}};
        for (const auto& [from, to] : kSteps) {
            const auto real = machine.kind == to ? since(real_, machine, from) : std::nullopt;
            const auto simulated = machine.kind == to ? since(simulated_, other, from) : std::nullopt;
            if (real && simulated) {
                add(std::string(from) + " to " + std::string(to), *real, *simulated);
                return;
            }
        }
        const auto cause = causeOf(*other.told);
        const Milliseconds before = lastChange(machine);
        if (cause && isPhase(machine.kind) && cause->second < machine.told->time && cause->second > before) {
            add(cause->first + " to " + machine.kind, machine.told->time - cause->second,
                other.told->time - cause->second);
        } else if (const Milliseconds by = apartSinceChange(machine); by > kMoment || by < -kMoment) {
            tell("5 another moment of " + machine.kind,
                 placeOf(*machine.told) + ", simulated at " + std::to_string(other.told->time));
        }
    }

    /// When the machine's phase changed before this.
    [[nodiscard]] Milliseconds lastChange(const Half& until) const {
        for (auto at = static_cast<std::size_t>(&until - real_.data()); at-- > 0;) {
            if (isPhase(real_[at].kind)) {
                return real_[at].told->time;
            }
        }
        return 0;
    }

    /// The time since the last change, if it was to `from`; of a report that is no phase, since that report.
    [[nodiscard]] std::optional<Milliseconds> since(const std::vector<Half>& all, const Half& until,
                                                    std::string_view from) const {
        for (auto at = static_cast<std::size_t>(&until - all.data()); at-- > 0;) {
            if (all[at].kind == from) {
                const bool found = std::none_of(all.begin(), all.begin() + static_cast<std::ptrdiff_t>(at),
                                                [](const Half& each) { return isPhase(each.kind); });
                if (from == "ST1" && found && playback_.turns[all[at].told->turn].command == "ST") {
                    return std::nullopt; // it was starting already, nobody knows since when
                }
                return until.told->time - all[at].told->time;
            }
            if (isPhase(from) && isPhase(all[at].kind)) {
                return std::nullopt;
            }
        }
        return std::nullopt;
    }

    void add(const std::string& what, Milliseconds real, Milliseconds simulated) {
        delays_[what].real.push_back(real);
        delays_[what].simulated.push_back(simulated);
    }

    void tellOrder() {
        std::size_t farthest = 0;
        std::size_t turn = Half::kNone;
        for (const Half& each : real_) {
            if (each.pair == Half::kNone || simulated_[each.pair].told->turn != each.told->turn) {
                continue;
            }
            if (each.told->turn != turn) {
                turn = each.told->turn;
                farthest = each.pair;
            } else if (each.pair < farthest) {
                tell("6 another place in the order of " + mnemonicOf(each.told->text), placeOf(*each.told));
            }
            farthest = std::max(farthest, each.pair);
        }
    }

    [[nodiscard]] std::string head() const {
        return std::to_string(playback_.turns.size() - 1) + " frames, " + std::to_string(alike_) +
               " messages alike\n";
    }

    /// Each kind of delay, those that differ first among the differences.
    std::string delays(std::vector<std::string>& differences) {
        std::string same;
        std::string other;
        for (const auto& [command, each] : answers_) {
            const Milliseconds usual = median(delays_.at(std::string(kAnswer)).real);
            if (median(each.real) > usual + kSlower) {
                delays_["answer to " + command] = each;
            }
        }
        for (const auto& [what, each] : delays_) {
            const Milliseconds real = median(each.real);
            const Milliseconds simulated = median(each.simulated);
            const Milliseconds by = real < simulated ? simulated - real : real - simulated;
            const bool apart = by > kTolerance + real / 20;
            const std::string numbers =
                what + ": " + std::to_string(real) + " (" + std::to_string(longest(each.real)) +
                "), simulated " + std::to_string(simulated) + " (" + std::to_string(longest(each.simulated)) +
                "), " + std::to_string(each.real.size()) + " times\n";
            (apart ? other : same) += "  " + numbers;
            if (apart) {
                differences.push_back("delay of " + what);
            }
        }
        return (same.empty() ? same : "Delays alike, in ms, median (longest):\n" + same) +
               (other.empty() ? other : "Other delays:\n" + other) + (kinds_.empty() ? "" : "Differences:\n");
    }

    [[nodiscard]] std::string hands() const {
        std::string text;
        for (const std::string& each : playback_.hands) {
            text += "  " + each + "\n";
        }
        return text.empty() ? text : "Done at the machine, as its reports tell:\n" + text;
    }

    /// The time that a kind of delay takes beyond an answer's, as a line of a profile.
    [[nodiscard]] std::string line(std::string_view key, std::initializer_list<std::string_view> whats,
                                   Milliseconds less) const {
        std::vector<Milliseconds> times;
        for (const std::string_view what : whats) {
            if (const auto found = delays_.find(std::string(what)); found != delays_.end()) {
                times.insert(times.end(), found->second.real.begin(), found->second.real.end());
            }
        }
        return times.empty() ? "# not measured: " + std::string(key) + "\n"
                             : std::string(key) + "=" +
                                   std::to_string(std::max<Milliseconds>(0, median(times) - less)) + "\n";
    }

    [[nodiscard]] std::string profile() const {
        const auto answer = delays_.find(std::string(kAnswer));
        const Milliseconds less = answer == delays_.end() ? 0 : median(answer->second.real);
        return line("answer", {kAnswer}, 0) + line("ack", {kAcknowledgement}, 0) +
               line("modechange", {"CF1 to ST8", "CF0 to ST2", "CA1 to ST6", "CA0 to ST2"}, less) +
               line("powerup", {"ST1 to ST2"}, 0) + line("rotor", {"PS1 to PR1"}, 0) +
               line("autocal.question", {"CAU1 to ST11"}, less) +
               line("autocal.begin", {"CAU1 to ST9"}, less);
    }

    const Playback& playback_;
    std::vector<Half> real_;
    std::vector<Half> simulated_;
    std::map<std::string, std::pair<int, std::string>> kinds_; ///< how often, and where first; sorted
    std::map<std::string, Delays> delays_;
    std::map<std::string, Delays> answers_; ///< by their command
    int alike_ = 0;
};

} // namespace

Comparison compared(const Playback& playback) {
    return Comparer(playback).run();
}

} // namespace quillon
