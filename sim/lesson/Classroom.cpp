#include "sim/lesson/Classroom.h"

#include <utility>

namespace simulator {

Classroom::Classroom(const Options& options, Generator::Output output, std::int64_t nowMs)
    : output_(std::move(output)), generator_(options, output_, nowMs) {
    wire();
}

void Classroom::receive(std::string_view bytes, std::int64_t nowMs) {
    advance(nowMs);
    generator_.receive(bytes, nowMs);
    look();
}

void Classroom::advance(std::int64_t nowMs) {
    while (run_) {
        const auto machine = generator_.nextDue();
        const auto lesson = run_->nextDue();
        if (lesson && *lesson <= nowMs && (!machine || *lesson < *machine)) {
            generator_.advance(*lesson);
        } else if (!generator_.step(nowMs)) {
            break;
        }
        look();
    }
    generator_.advance(nowMs);
}

std::optional<std::int64_t> Classroom::nextDue() const {
    const auto machine = generator_.nextDue();
    const auto lesson = run_ ? run_->nextDue() : std::nullopt;
    return !lesson || (machine && *machine < *lesson) ? machine : lesson;
}

std::string Classroom::command(std::string_view line, std::int64_t nowMs) {
    advance(nowMs);
    std::string answer = generator_.command(line, nowMs);
    look();
    return answer;
}

void Classroom::watch(Generator::Watch watch) {
    watch_ = std::move(watch);
    wire();
}

void Classroom::wire() {
    generator_.watch({[this](std::string_view text, Verdict verdict) {
                          if (run_) {
                              run_->frame(std::string(text), verdict == Verdict::Taken);
                          }
                          if (watch_.frame) {
                              watch_.frame(text, verdict);
                          }
                      },
                      watch_.message});
}

void Classroom::restart(const Options& options, std::int64_t nowMs) {
    run_.reset();
    generator_ = Generator(options, output_, nowMs);
    wire();
}

void Classroom::begin(const Lesson& lesson, std::int64_t nowMs) {
    Options options;
    for (const std::string& word : lesson.machine) {
        (void)applyOption(options, word); // checked when the lesson was read
    }
    restart(options, nowMs);
    for (const std::string& each : lesson.before) {
        if (const std::string answer = generator_.command(each, nowMs); answer.starts_with('?')) {
            tell("lesson refused " + each + ": " + answer.substr(1));
        }
    }
    run_.emplace(lesson, generator_.gauges());
    toldSteps_ = toldCosts_ = 0;
    look();
}

void Classroom::hint() {
    if (run_) {
        run_->hint();
        tellNews();
    }
}

void Classroom::look() {
    if (!run_) {
        return;
    }
    // A fault's command may fulfil another fault's condition. Two that undo each other must not loop here.
    std::size_t rounds = run_->lesson().faults.size() + 1;
    for (bool again = true; again && rounds > 0; --rounds) {
        const Gauges gauges = generator_.gauges();
        const std::vector<std::string> commands = run_->look(gauges);
        for (const std::string& each : commands) {
            if (const std::string answer = generator_.command(each, gauges.now); answer.starts_with('?')) {
                tell("lesson refused " + each + ": " + answer.substr(1));
            }
        }
        again = !commands.empty();
    }
    tellNews();
}

void Classroom::tellNews() {
    const Lesson& lesson = run_->lesson();
    for (; toldCosts_ < run_->costs().size(); ++toldCosts_) {
        const LessonRun::Cost& cost = run_->costs()[toldCosts_];
        tell(std::string("lesson ") + (cost.hint ? "hint " : "wrong ") + std::to_string(cost.points) + " " +
             cost.words);
    }
    for (; toldSteps_ < run_->done(); ++toldSteps_) {
        tell("lesson step " + std::to_string(toldSteps_ + 1) + " " + lesson.steps[toldSteps_].words);
        if (toldSteps_ + 1 == lesson.steps.size()) {
            tell("lesson solved " + std::to_string(run_->score()) + " in " + std::to_string(run_->seconds()) +
                 " s");
        }
    }
}

void Classroom::tell(const std::string& line) const {
    if (told) {
        told(line);
    }
}

} // namespace simulator
