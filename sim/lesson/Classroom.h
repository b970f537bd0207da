#pragma once

#include "sim/Generator.h"
#include "sim/lesson/Lesson.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// A generator, and the lesson that watches it while there is one. The lesson looks behind everything that
/// happens, so no phase is too short for it.
class Classroom {
public:
    Classroom(const Options& options, Generator::Output output, std::int64_t nowMs);
    Classroom(const Classroom&) = delete;
    Classroom& operator=(const Classroom&) = delete;

    // As those of the generator.
    void receive(std::string_view bytes, std::int64_t nowMs);
    void advance(std::int64_t nowMs);
    [[nodiscard]] std::optional<std::int64_t> nextDue() const;
    std::string command(std::string_view line, std::int64_t nowMs);
    [[nodiscard]] Gauges gauges() const { return generator_.gauges(); }
    [[nodiscard]] const Options& options() const { return generator_.options(); }
    void watch(Generator::Watch watch);

    /// Told of the lesson's steps, wrong ways, hints and its end, a line each.
    std::function<void(const std::string& line)> told;

    /// Another machine takes the place of this one; the lesson is over.
    void restart(const Options& options, std::int64_t nowMs);
    /// The machine of a lesson takes its place, and the lesson begins.
    void begin(const Lesson& lesson, std::int64_t nowMs);
    /// The lesson's next hint.
    void hint();

    /// The lesson that was begun last, also when it is solved.
    [[nodiscard]] const LessonRun* lesson() const { return run_ ? &*run_ : nullptr; }

private:
    void look();
    void tellNews();
    void tell(const std::string& line) const;
    void wire();

    Generator::Output output_;
    Generator generator_;
    Generator::Watch watch_;
    std::optional<LessonRun> run_;
    std::size_t toldSteps_ = 0;
    std::size_t toldCosts_ = 0;
};

} // namespace simulator
