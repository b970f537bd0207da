#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace quillon {

/// A switch that a program knows besides --help, -h and --version.
struct ProgramSwitch {
    std::string_view name; ///< with its hyphens
    bool hasValue = false; ///< the next word belongs to it
};

/// What a program was started with.
struct ProgramArguments {
    bool help = false;
    bool version = false;
    std::vector<std::pair<std::string, std::string>> switches; ///< in their order, with their values
    std::vector<std::string> words;                            ///< all that is no switch
    std::string error;                                         ///< the first thing that is wrong

    [[nodiscard]] bool has(std::string_view name) const;
    /// The last one given counts; empty without one.
    [[nodiscard]] std::string value(std::string_view name) const;
};

/// Reads words up to the first that is wrong. Behind "--" no word is a switch, and "-" never is one.
[[nodiscard]] ProgramArguments readArguments(const std::vector<std::string>& given,
                                             std::span<const ProgramSwitch> known);

/// Prints what ends a program at once: its help, its version or what is wrong with its arguments. Returns the
/// exit status then (0, or 2 for wrong arguments), and nothing when the program is to go on.
[[nodiscard]] std::optional<int> answerAtOnce(const ProgramArguments& arguments, std::string_view program,
                                              std::string_view help);

/// The version of the package.
[[nodiscard]] std::string_view programVersion();

} // namespace quillon
