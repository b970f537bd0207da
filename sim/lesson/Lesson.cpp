#include "sim/lesson/Lesson.h"

#include "base/Text.h"
#include "sim/Desk.h"
#include "sim/Formats.h"
#include "sim/Generator.h"
#include "sim/Options.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace simulator {

namespace {

using quillon::trim;

std::vector<std::string_view> wordsOf(std::string_view text) {
    std::vector<std::string_view> words = quillon::split(text, " ");
    std::erase(words, std::string_view{});
    return words;
}

/// The first word, which is taken off the text.
std::string_view takeWord(std::string_view& text) {
    text = trim(text);
    const std::string_view word = text.substr(0, text.find(' '));
    text = trim(text.substr(word.size()));
    return word;
}

/// What stands before " : " and behind it.
std::pair<std::string_view, std::string> parts(std::string_view text) {
    const auto mark = text.find(" : ");
    if (mark == std::string_view::npos) {
        throw std::invalid_argument("' : ' and words behind it are wanted");
    }
    return {trim(text.substr(0, mark)), std::string(trim(text.substr(mark + 3)))};
}

bool counted(std::string_view name) {
    return name.starts_with("taken.") || name == "refused" || name == "time";
}

Condition conditionOf(std::string_view text) {
    static const Facts known = factsOf(Generator(
                                           {}, [](std::string_view) {}, 0)
                                           .gauges());
    Condition condition;
    condition.ways.emplace_back();
    const auto words = wordsOf(text);
    for (std::size_t at = 0; at < words.size();) {
        const auto word = [&](std::size_t further) {
            if (at + further >= words.size()) {
                throw std::invalid_argument("the condition ends too early");
            }
            return words[at + further];
        };
        const std::string name(words[at]);
        if (!known.contains(name) && !counted(name)) {
            throw std::invalid_argument("the machine has no '" + name + "'");
        }
        if (word(1) == "changed") {
            condition.ways.back().push_back({name, 'c', 0});
            at += 2;
        } else {
            const auto value = valueNamed(word(2));
            if (word(1).size() != 1 || std::string_view("=<>!").find(word(1)[0]) == std::string_view::npos ||
                !value) {
                throw std::invalid_argument(name + " wants =, <, > or ! and a value");
            }
            condition.ways.back().push_back({name, word(1)[0], *value});
            at += 3;
        }
        if (at < words.size() && words[at] == "for") {
            const auto seconds = numberIn(word(1));
            if (!seconds || word(2) != "s" || at + 3 != words.size()) {
                throw std::invalid_argument("'for' wants seconds and 's', at the end");
            }
            condition.forMs = std::llround(*seconds * 1000);
            break;
        }
        if (at < words.size()) {
            if (words[at] == "or") {
                condition.ways.emplace_back();
            } else if (words[at] != "and") {
                throw std::invalid_argument("'and' or 'or' is wanted, not '" + std::string(words[at]) + "'");
            }
            ++at;
            (void)word(0); // something has to follow
        }
    }
    return condition;
}

int pointsOf(std::string_view word) {
    const auto points = numberIn(word);
    if (!points || *points < 0 || *points > 100) {
        throw std::invalid_argument("points from 0 to 100 are wanted");
    }
    return static_cast<int>(*points);
}

std::string commandOf(std::string_view line) {
    if (!isCommand(line)) {
        throw std::invalid_argument("the machine knows no command '" + std::string(line) + "'");
    }
    return std::string(line);
}

void readLine(Lesson& lesson, std::string_view line) {
    const std::string_view command = takeWord(line);
    if (command == "title") {
        lesson.title = line;
    } else if (command == "machine") {
        Options tried;
        for (const std::string_view word : wordsOf(line)) {
            if (std::string problem = applyOption(tried, word); !problem.empty()) {
                throw std::invalid_argument(problem);
            }
            lesson.machine.emplace_back(word);
        }
    } else if (command == "before") {
        lesson.before.push_back(commandOf(line));
    } else if (command == "step") {
        auto [when, words] = parts(line);
        lesson.steps.push_back({conditionOf(when), std::move(words)});
    } else if (command == "wrong") {
        const int points = pointsOf(takeWord(line));
        auto [when, words] = parts(line);
        lesson.wrongs.push_back({points, conditionOf(when), std::move(words)});
    } else if (command == "fault") {
        const bool again = line.starts_with("again ");
        if (again) {
            (void)takeWord(line);
        }
        auto [when, words] = parts(line);
        lesson.faults.push_back({conditionOf(when), commandOf(words), again});
    } else if (command == "hint") {
        const int points = pointsOf(takeWord(line));
        lesson.hints.push_back({points, std::string(line)});
    } else {
        throw std::invalid_argument("there is no '" + std::string(command) + "' in a lesson");
    }
}

} // namespace

Lesson readLesson(std::string_view content) {
    Lesson lesson;
    std::string* text = nullptr;
    int number = 0;
    for (std::string_view line : quillon::split(content, "\n")) {
        ++number;
        line = trim(line.ends_with('\r') ? line.substr(0, line.size() - 1) : line);
        if (text != nullptr) {
            if (line == "end") {
                text = nullptr;
            } else {
                const bool begins = text->empty() || text->ends_with('\n');
                text->append(line.empty() ? "\n\n" : begins ? "" : " ").append(line);
            }
        } else if (line == "task" || line == "explain") {
            text = line == "task" ? &lesson.task : &lesson.explanation;
        } else if (!line.empty() && !line.starts_with('#')) {
            try {
                readLine(lesson, line);
            } catch (const std::invalid_argument& problem) {
                lesson.problems.push_back(std::to_string(number) + ": " + problem.what());
            }
        }
    }
    if (lesson.steps.empty() || lesson.title.empty() || text != nullptr) {
        lesson.problems.push_back(std::to_string(number) +
                                  ": a lesson wants a title, a step, and 'end' behind its texts");
    }
    return lesson;
}

Lesson readLessonFile(const std::string& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) {
        Lesson none;
        none.problems.emplace_back(" cannot be read");
        return none;
    }
    return readLesson(std::string(std::istreambuf_iterator<char>(in), {}));
}

LessonRun::LessonRun(const Lesson& lesson, const Gauges& gauges)
    : lesson_(lesson), first_(factsOf(gauges)), beganMs_(gauges.now), steps_(lesson.steps.size()),
      wrongs_(lesson.wrongs.size()), faults_(lesson.faults.size()) {}

void LessonRun::frame(const std::string& text, bool taken) {
    ++counted_[taken ? "taken." + text : "refused"];
}

std::vector<std::string> LessonRun::look(const Gauges& gauges) {
    now_ = factsOf(gauges);
    now_.insert(counted_.begin(), counted_.end());
    nowMs_ = gauges.now;
    now_["time"] = static_cast<double>(nowMs_ - beganMs_) / 1000;
    std::vector<std::string> commands;
    if (solved()) {
        return commands;
    }
    for (std::size_t at = 0; at < faults_.size(); ++at) {
        const bool now = holds(lesson_.faults[at].when, faults_[at]);
        if (now && !faults_[at].used) {
            commands.push_back(lesson_.faults[at].command);
        }
        faults_[at].used = now || (faults_[at].used && !lesson_.faults[at].again);
    }
    for (std::size_t at = 0; at < wrongs_.size(); ++at) {
        if (!wrongs_[at].used && holds(lesson_.wrongs[at].when, wrongs_[at])) {
            wrongs_[at].used = true;
            costs_.push_back({lesson_.wrongs[at].points, false, lesson_.wrongs[at].words});
        }
    }
    while (!solved() && holds(lesson_.steps[done_].when, steps_[done_])) {
        ++done_;
    }
    return commands;
}

std::optional<std::int64_t> LessonRun::nextDue() const {
    std::optional<std::int64_t> first;
    const auto consider = [&](const Condition& when, const Held& held) {
        if (!held.used && held.since >= 0 && held.since + when.forMs > nowMs_) {
            first = std::min(first.value_or(held.since + when.forMs), held.since + when.forMs);
        }
    };
    for (std::size_t at = 0; at < faults_.size(); ++at) {
        consider(lesson_.faults[at].when, faults_[at]);
    }
    for (std::size_t at = 0; at < wrongs_.size(); ++at) {
        consider(lesson_.wrongs[at].when, wrongs_[at]);
    }
    if (!solved()) {
        consider(lesson_.steps[done_].when, steps_[done_]);
    }
    return first;
}

void LessonRun::hint() {
    if (hasHint()) {
        const Lesson::Hint& next = lesson_.hints[hints_++];
        costs_.push_back({next.points, true, next.words});
    }
}

int LessonRun::score() const {
    int score = 100;
    for (const Cost& cost : costs_) {
        score -= cost.points;
    }
    return std::max(0, score);
}

bool LessonRun::holds(const Condition& condition, Held& held) const {
    const auto term = [this](const Condition::Term& each) {
        const auto found = now_.find(each.name);
        const double value = found == now_.end() ? 0 : found->second;
        const auto before = first_.find(each.name);
        switch (each.relation) {
        case '=':
            return value == each.value;
        case '!':
            return value != each.value;
        case '<':
            return value < each.value;
        case '>':
            return value > each.value;
        default:
            return value != (before == first_.end() ? 0 : before->second);
        }
    };
    const bool now =
        std::ranges::any_of(condition.ways, [&](const auto& way) { return std::ranges::all_of(way, term); });
    if (!now) {
        held.since = -1;
        return false;
    }
    if (held.since < 0) {
        held.since = nowMs_;
    }
    return nowMs_ - held.since >= condition.forMs;
}

} // namespace simulator
