#pragma once

#include "sim/lesson/Facts.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// "NAME = VALUE and NAME > VALUE or NAME changed for 2 s".
struct Condition {
    struct Term {
        std::string name;
        char relation; ///< = < > !, or c: changed since the lesson began
        double value;
    };
    std::vector<std::vector<Term>> ways; ///< one of them holds when all its terms do
    std::int64_t forMs = 0;              ///< for how long without a break
};

/// One lesson, as its file tells it.
struct Lesson {
    struct Step {
        Condition when;
        std::string words;
    };
    struct Wrong {
        int points;
        Condition when;
        std::string words;
    };
    struct Fault {
        Condition when;
        std::string command;
        bool again;
    };
    struct Hint {
        int points;
        std::string words;
    };

    std::string title;
    std::string task;
    std::string explanation;
    std::vector<std::string> machine; ///< KEY=VALUE
    std::vector<std::string> before;  ///< commands that prepare the machine
    std::vector<Step> steps;          ///< in their order; the last one solves it
    std::vector<Wrong> wrongs;
    std::vector<Fault> faults;
    std::vector<Hint> hints;
    std::vector<std::string> problems; ///< "LINE: what", where the file is wrong
};

[[nodiscard]] Lesson readLesson(std::string_view content);
[[nodiscard]] Lesson readLessonFile(const std::string& file);

/// One person's way through a lesson. It sees the machine and its line, and nothing of the console.
class LessonRun {
public:
    LessonRun(const Lesson& lesson, const Gauges& gauges);

    /// A frame came; `taken` if the machine could use it.
    void frame(const std::string& text, bool taken);
    /// Something may have changed. Returns the commands of the faults that begin now.
    [[nodiscard]] std::vector<std::string> look(const Gauges& gauges);
    /// When a condition that holds will have held long enough.
    [[nodiscard]] std::optional<std::int64_t> nextDue() const;
    /// The next hint, which costs its points.
    void hint();

    [[nodiscard]] const Lesson& lesson() const { return lesson_; }
    [[nodiscard]] std::size_t done() const { return done_; }
    [[nodiscard]] bool solved() const { return !lesson_.steps.empty() && done_ == lesson_.steps.size(); }
    /// What has cost points, in its order.
    struct Cost {
        int points;
        bool hint;
        std::string words;
    };
    [[nodiscard]] const std::vector<Cost>& costs() const { return costs_; }
    [[nodiscard]] int score() const;
    /// Since it began.
    [[nodiscard]] std::int64_t seconds() const { return (nowMs_ - beganMs_) / 1000; }
    [[nodiscard]] bool hasHint() const { return !solved() && hints_ < lesson_.hints.size(); }

private:
    struct Held {
        std::int64_t since = -1;
        bool used = false;
    };

    [[nodiscard]] bool holds(const Condition& condition, Held& held) const;

    Lesson lesson_;
    Facts first_;
    Facts now_;
    Facts counted_;
    std::int64_t nowMs_ = 0;
    std::int64_t beganMs_;
    std::size_t done_ = 0;
    std::size_t hints_ = 0;
    std::vector<Held> steps_;
    std::vector<Held> wrongs_;
    std::vector<Held> faults_;
    std::vector<Cost> costs_;
};

} // namespace simulator
