#include "Playback.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "base/Phase.h"
#include "base/Text.h"
#include "sim/Generator.h"
#include "tools/words/Meanings.h"
#include "tools/words/Words.h"

namespace quillon {

namespace {

constexpr Milliseconds kBefore = 1000;     // the simulator gets its values this long before the recording
constexpr Milliseconds kAtOnce = 50;       // what follows a cause within it was the machine's own doing
constexpr Milliseconds kSettled = 5000;    // phases that differ for so long do so for good
constexpr Milliseconds kLetsGoLater = 700; // a hand that was interrupted

struct Reported {
    std::string_view mnemonic;
    std::string_view setting; ///< of the simulator
};

/// What a machine remembers: the simulator is given it, so that only what they do is compared.
constexpr std::array kRemembered{Reported{"TC0", "counter0"}, Reported{"TC1", "counter1"},
                                 Reported{"TC2", "counter2"}, Reported{"TC3", "counter3"},
                                 Reported{"KV", "kv"},        Reported{"HE", "heat"}};
constexpr std::array kBuilt{Reported{"VR", "version"}, Reported{"MD", "maxdensity"},
                            Reported{"TM", "techmode"}};
constexpr std::array kLamps{Reported{"DL", "door"},     Reported{"CL", "collimator"}, Reported{"RL", "rotor"},
                            Reported{"HL", "overheat"}, Reported{"GL", "generator"},  Reported{"TL", "tube"},
                            Reported{"EL", "technique"}};

std::optional<Phase> phaseIn(const std::string& text) {
    const bool phase = text.starts_with("ST") && text.size() > 2 &&
                       std::ranges::all_of(text.substr(2), [](char c) { return c >= '0' && c <= '9'; });
    return phase ? std::optional(static_cast<Phase>(std::stoi(text.substr(2)))) : std::nullopt;
}

/// What is done to the simulator, and when.
struct Action {
    Milliseconds time;
    std::string command;
};

/// Reads what people did at the machine from what it says.
class Hands {
public:
    Hands(const std::vector<Turn>& turns, Milliseconds answerMs) : turns_(turns), answerMs_(answerMs) {}

    std::vector<Action> read(const std::vector<Told>& messages) {
        for (const Told& each : messages) {
            look(each);
            heardAt_ = each.time;
        }
        return std::move(actions_);
    }

private:
    void look(const Told& told) {
        now_ = told.time;
        const std::string& text = told.text;
        const std::string& frame = turns_[told.turn].command;
        const bool byConsole = frame.starts_with("RX0") || frame.starts_with("XR");
        const bool byItself = byConsole || now_ - interlockAt_ <= kAtOnce;
        if (const auto phase = phaseIn(text)) {
            lookAtPhase(*phase, byItself);
        } else if (text == "PS1") {
            press(1);
        } else if (text == "XS1" && !byConsole) {
            press(2);
        } else if ((text == "XE1" || text == "PS0") && hand_ != 0) {
            hand_ = 0;
            act("hand 0", byItself ? kLetsGoLater : 0);
        } else if (text.starts_with("ER") && text != "ER0" && phase_ == Phase::Error && !errorTold_) {
            errorTold_ = true;
            act("error " + text.substr(2));
        } else {
            lookAtLamp(text);
        }
    }

    void lookAtPhase(Phase phase, bool byItself) {
        const Phase before = std::exchange(phase_, phase);
        if (phase == before) {
            return;
        }
        if (phase == Phase::Initialization && before != Phase::Unheard) {
            // It counts as silent from its last message on.
            actions_.push_back({heardAt_ + answerMs_ + 1, "power off"});
            act("power on");
        } else if (phase == Phase::Preparation && hand_ == 0) {
            press(1);
        } else if (phase == Phase::RadExposure && hand_ < 2 && !byItself) {
            press(2);
        } else if (phase == Phase::FluoroExposure) {
            act("fluoro on");
        } else if (before == Phase::FluoroExposure && !byItself) {
            act("fluoro off");
        }
        errorTold_ = errorTold_ && phase == Phase::Error;
    }

    void lookAtLamp(const std::string& text) {
        const auto lamp = std::ranges::find(kLamps, text.substr(0, 2), &Reported::mnemonic);
        const bool on = text.ends_with('1');
        if (lamp == kLamps.end() || text.size() != 3 || (!on && !text.ends_with('0')) ||
            (text[0] == 'H' && phase_ == Phase::TubeTooHot)) {
            return;
        }
        act(std::string(lamp->setting) + (on ? " 1" : " 0"));
        interlockAt_ = on ? now_ : interlockAt_;
    }

    void press(int stage) {
        if (hand_ != stage) {
            hand_ = stage;
            act("hand " + std::to_string(stage));
        }
    }

    void act(std::string command, Milliseconds later = 0) {
        actions_.push_back({now_ + later, std::move(command)});
    }

    const std::vector<Turn>& turns_;
    const Milliseconds answerMs_;
    std::vector<Action> actions_;
    Milliseconds now_ = 0;
    Milliseconds heardAt_ = 0;
    Milliseconds interlockAt_ = -kSettled;
    Phase phase_ = Phase::Unheard;
    int hand_ = 0;
    bool errorTold_ = false;
};

class Player {
public:
    Player(const Journal& recording, simulator::Options options) : options_(std::move(options)) {
        read(recording);
    }

    Playback run() {
        std::vector<Action> actions = Hands(playback_.turns, options_.answerMs).read(playback_.real);
        begin();
        // Its report shall come when the machine's came.
        for (Action& each : actions) {
            each.time -= options_.answerMs;
        }
        std::ranges::stable_sort(actions, {}, &Action::time);
        auto next = actions.begin();
        const std::vector<Turn>& turns = playback_.turns;
        for (turn_ = 0; turn_ < turns.size(); ++turn_) {
            if (turn_ > 0) {
                generator_->receive(turns[turn_].command + "\r\n\x03", turns[turn_].time);
            }
            const bool last = turn_ + 1 == turns.size();
            const Milliseconds until = last ? lastTime_ : turns[turn_ + 1].time;
            for (; next != actions.end() && next->time < until; ++next) {
                act(*next);
            }
            if (!last && until > firstTime_) {
                advance(until - 1);
                keepInStep(until - 1);
            }
            advance(until);
        }
        return std::move(playback_);
    }

private:
    void read(const Journal& recording) {
        playback_.turns.push_back({0, "the start"});
        for (const Entry& entry : recording.entries) {
            const Milliseconds time = entry.time.value_or(0);
            lastTime_ = std::max(lastTime_, time + kBefore);
            if (entry.kind == Entry::Kind::Sent) {
                playback_.turns.push_back({time, entry.text});
            } else if (entry.kind == Entry::Kind::Received) {
                for (const std::string_view piece : split(entry.text, "\r")) {
                    if (!piece.empty()) {
                        playback_.real.push_back({time, std::string(piece), playback_.turns.size() - 1});
                    }
                }
            }
        }
    }

    void act(const Action& action) {
        if (action.time < firstTime_) {
            return;
        }
        advance(action.time);
        const std::string answer = generator_->command(action.command, action.time);
        playback_.hands.push_back(std::to_string(action.time) + " " + action.command +
                                  (answer.starts_with('?') ? ": " + answer.substr(1) : ""));
    }

    /// The machine as it was found: in its phase, or starting up, and with what it remembers.
    void begin() {
        const auto first =
            std::ranges::find_if(playback_.real, [](const Told& t) { return phaseIn(t.text).has_value(); });
        firstTime_ = -kBefore;
        if (first != playback_.real.end()) {
            const Phase phase = *phaseIn(first->text);
            if (phase != Phase::Initialization) {
                options_.startPhase = isKnown(phase) ? phase : options_.startPhase;
            } else {
                const auto up =
                    std::find_if(first, playback_.real.end(), [](const Told& t) { return t.text == "ST2"; });
                const bool asked = playback_.turns[first->turn].command == "ST";
                const Milliseconds began = first->time - options_.answerMs;
                const Milliseconds reckoned =
                    up == playback_.real.end() ? began : up->time - options_.answerMs - options_.powerUpMs;
                firstTime_ = asked ? std::min(playback_.turns[first->turn].time - 1, reckoned) : began;
                // Its report was before the recording began.
                deafAt_ = asked ? firstTime_ + options_.answerMs : deafAt_;
            }
        }
        for (const Reported& each : kBuilt) {
            if (const std::string value = firstValue(each.mnemonic); !value.empty()) {
                (void)applyOption(options_, std::string(each.setting) + "=" + value);
            }
        }
        generator_.emplace(
            options_, [this](std::string_view bytes) { hear(bytes); }, firstTime_);
        now_ = firstTime_;
        for (const Reported& each : kRemembered) {
            if (const std::string value = firstValue(each.mnemonic); !value.empty()) {
                (void)generator_->command("set " + std::string(each.setting) + " " + value, now_);
            }
        }
        turn_ = 0;
        const bool found = options_.startPhase != Phase::Initialization;
        listens_ = !found && firstTime_ >= 0;
        advance(std::max<Milliseconds>(found ? 0 : firstTime_, -1));
        listens_ = true;
    }

    /// What is first told under a mnemonic, when no command can have changed it before.
    [[nodiscard]] std::string firstValue(std::string_view mnemonic) const {
        const auto first =
            std::ranges::find_if(playback_.real, [&](const Told& t) { return t.text.starts_with(mnemonic); });
        if (first == playback_.real.end()) {
            return {};
        }
        const bool asked = std::none_of(
            playback_.turns.begin(), playback_.turns.begin() + static_cast<std::ptrdiff_t>(first->turn) + 1,
            [&](const Turn& turn) {
                return turn.command.starts_with(mnemonic) && turn.command != mnemonic &&
                       !turn.command.ends_with('?');
            });
        return asked ? first->text.substr(mnemonic.size()) : std::string();
    }

    void advance(Milliseconds time) {
        while (const auto due = generator_->nextDue()) {
            if (*due > time) {
                break;
            }
            now_ = *due;
            generator_->step(time);
        }
        generator_->advance(time);
        now_ = time;
    }

    void hear(std::string_view bytes) {
        for (const char c : bytes) {
            if (c != '\n' && c != '\x03') {
                partial_ += c;
                continue;
            }
            if (partial_.ends_with('\r')) {
                partial_.pop_back();
            }
            const std::string text = std::exchange(partial_, {});
            if (!text.empty() && listens_ && now_ != deafAt_) {
                playback_.simulated.push_back({now_, text, turn_});
            }
        }
    }

    /// The simulator is put where the machine stands once they have differed for long: one difference shall
    /// not make all that follows another.
    void keepInStep(Milliseconds time) {
        for (; heard_ < playback_.real.size() && playback_.real[heard_].time <= time; ++heard_) {
            if (const auto phase = phaseIn(playback_.real[heard_].text)) {
                realPhase_ = *phase;
            }
        }
        const Phase simulated = generator_->gauges().phase;
        if (simulated == realPhase_ || !isKnown(realPhase_) || simulated == simulator::kOff) {
            apartSince_.reset();
            return;
        }
        apartSince_ = apartSince_.value_or(time);
        if (time - *apartSince_ >= kSettled) {
            playback_.strayed.push_back(std::to_string(*apartSince_) + ": the machine stands in phase " +
                                        std::to_string(numberOf(realPhase_)) + ", simulated " +
                                        std::to_string(numberOf(simulated)));
            (void)generator_->command("phase " + std::to_string(numberOf(realPhase_)), time);
            deafAt_ = time + options_.answerMs; // it reports what it was put to
            apartSince_.reset();
        }
    }

    simulator::Options options_;
    Playback playback_;
    std::optional<simulator::Generator> generator_;
    std::string partial_;
    std::size_t turn_ = 0;
    std::size_t heard_ = 0; ///< messages of the machine that its phase is known from
    Phase realPhase_ = Phase::Unheard;
    std::optional<Milliseconds> apartSince_;
    Milliseconds firstTime_ = 0;
    Milliseconds lastTime_ = 0;
    Milliseconds now_ = 0;
    Milliseconds deafAt_ = -kBefore - 1;
    bool listens_ = false;
};

} // namespace

Playback playAgainst(const Journal& recording, simulator::Options options) {
    return Player(recording, std::move(options)).run();
}

std::string mnemonicOf(std::string_view message) {
    if (const Meaning* known = meaningOf(Direction::In, message)) {
        return std::string(known->mnemonic);
    }
    return std::string(message.substr(0, message.find_first_of("+-.0123456789 ")));
}

} // namespace quillon
