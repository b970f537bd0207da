#include "base/ProgramArguments.h"

#include <algorithm>
#include <iostream>

namespace quillon {

bool ProgramArguments::has(std::string_view name) const {
    return std::any_of(switches.begin(), switches.end(),
                       [name](const auto& one) { return one.first == name; });
}

std::string ProgramArguments::value(std::string_view name) const {
    const auto last = std::find_if(switches.rbegin(), switches.rend(),
                                   [name](const auto& one) { return one.first == name; });
    return last == switches.rend() ? std::string{} : last->second;
}

ProgramArguments readArguments(const std::vector<std::string>& given, std::span<const ProgramSwitch> known) {
    ProgramArguments read;
    for (auto word = given.begin(); word != given.end() && read.error.empty(); ++word) {
        if (*word == "--") {
            read.words.insert(read.words.end(), word + 1, given.end());
            break;
        }
        const auto found = std::find_if(known.begin(), known.end(),
                                        [word](const ProgramSwitch& one) { return one.name == *word; });
        if (*word == "--help" || *word == "-h") {
            read.help = true;
        } else if (*word == "--version") {
            read.version = true;
        } else if (found != known.end() && !found->hasValue) {
            read.switches.emplace_back(*word, std::string{});
        } else if (found != known.end() && word + 1 == given.end()) {
            read.error = *word + " needs a value";
        } else if (found != known.end()) {
            read.switches.emplace_back(word[0], word[1]);
            ++word;
        } else if (word->size() > 1 && word->front() == '-') {
            read.error = "there is no switch \"" + *word + "\"";
        } else {
            read.words.push_back(*word);
        }
    }
    return read;
}

std::optional<int> answerAtOnce(const ProgramArguments& arguments, std::string_view program,
                                std::string_view help) {
    constexpr int kWrongArguments = 2;
    if (!arguments.error.empty()) {
        std::cerr << program << ": " << arguments.error << "; \"" << program << " --help\" lists them all\n";
        return kWrongArguments;
    }
    if (arguments.help) {
        std::cout << help;
        return 0;
    }
    if (arguments.version) {
        std::cout << program << ' ' << programVersion() << '\n';
        return 0;
    }
    return std::nullopt;
}

std::string_view programVersion() {
    return QUILLON_VERSION;
}

} // namespace quillon
