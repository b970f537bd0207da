#pragma once

#include "sim/Generator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace simulator::test {

using Lines = std::vector<std::string>;

inline Options optionsOf(std::initializer_list<std::string_view> settings) {
    Options options;
    for (const std::string_view setting : settings) {
        EXPECT_EQ(applyOption(options, setting), "") << setting;
    }
    return options;
}

/// A generator with its line and a clock that moves only when told.
class Bench {
public:
    explicit Bench(std::initializer_list<std::string_view> settings = {})
        : generator_(
              optionsOf(settings), [this](std::string_view bytes) { bytes_ += bytes; }, 0) {}
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    void raw(std::string_view bytes) { generator_.receive(bytes, now_); }

    /// What comes back for a frame, at first within a while that is too short for a change of mode.
    Lines ask(std::string_view text, std::int64_t ms = 100) {
        raw(std::string(text) + "\r\n\x03");
        return wait(ms);
    }

    /// The messages of the time that passes.
    Lines wait(std::int64_t ms) {
        generator_.advance(now_ += ms);
        return take();
    }

    Lines take() {
        Lines lines;
        for (std::size_t end = bytes_.find("\r\n"); end != std::string::npos; end = bytes_.find("\r\n")) {
            lines.push_back(bytes_.substr(0, end));
            bytes_.erase(0, end + 2);
        }
        return lines;
    }

    std::string desk(std::string_view line) { return generator_.command(line, now_); }

    /// The messages of the time after something has befallen the generator.
    Lines after(std::string_view line, std::int64_t ms) {
        EXPECT_EQ(desk(line), "") << line;
        return wait(ms);
    }

    /// What is sent, or befalls the generator when it begins with "!", or nothing; what comes back with a
    /// blank between, "?" when the desk refuses; and the time that passes first.
    struct Row {
        std::string_view sent;
        std::string_view back;
        std::int64_t ms = 100;
    };
    void play(std::initializer_list<Row> rows) {
        for (const auto& [sent, back, ms] : rows) {
            std::string told;
            const bool befalls = sent.starts_with('!');
            if (befalls && desk(sent.substr(1)).starts_with('?')) {
                told = " ?";
            } else {
                for (const std::string& line : befalls || sent.empty() ? wait(ms) : ask(sent, ms)) {
                    told.append(" ").append(line);
                }
            }
            EXPECT_EQ(told.substr(told.empty() ? 0 : 1), back) << sent;
        }
    }

    /// The value of a line of the status.
    std::string status(const std::string& name) {
        const std::string text = std::string("\n").append(desk("status")).append("\n");
        const std::size_t at = text.find("\n" + name + " ");
        return at == std::string::npos
                   ? ""
                   : text.substr(at + name.size() + 2, text.find('\n', at + 1) - at - name.size() - 2);
    }

    [[nodiscard]] std::int64_t now() const { return now_; }
    [[nodiscard]] const std::string& bytes() const { return bytes_; }
    Generator& generator() { return generator_; }

private:
    std::string bytes_;
    std::int64_t now_ = 0;
    Generator generator_;
};

/// Up and in phase 2, X-rays allowed, with nothing waiting on the line.
struct UpBench : Bench {
    explicit UpBench(std::initializer_list<std::string_view> settings = {}) : Bench(settings) {
        wait(4000);
        ask("RX1");
    }
};

/// The same in calibration.
struct CalibratingBench : UpBench {
    explicit CalibratingBench(std::initializer_list<std::string_view> settings = {}) : UpBench(settings) {
        ask("CA1", 1100);
    }
};

inline bool holds(const Lines& lines, std::string_view line) {
    return std::ranges::find(lines, line) != lines.end();
}

} // namespace simulator::test
