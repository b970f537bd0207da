#include <algorithm>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <span>
#include <string>

#include "Script.h"

namespace {

constexpr int kHeld = 0;
constexpr int kFailed = 1;
constexpr int kWrong = 2;

std::optional<std::string> contentOf(const std::string& name) {
    const auto all = [](std::istream& in) {
        return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    };
    if (name == "-") {
        return all(std::cin);
    }
    std::ifstream file(name, std::ios::binary);
    if (!file || file.peek() == std::ifstream::traits_type::eof()) {
        // A directory opens and can't be read; an empty file is a scenario in which nothing happens.
        return file.is_open() && file.eof() && !file.bad() ? std::optional(std::string{}) : std::nullopt;
    }
    return all(file);
}

int complain(const std::string& name, int line, std::string_view what) {
    std::cout.flush();
    std::cerr << name << ':' << line << ": " << what << '\n';
    return kWrong;
}

int runFile(const std::string& name) {
    const auto content = contentOf(name);
    if (!content) {
        return complain(name, 0, "cannot be read");
    }
    quillon::Script script(*content, std::cout);
    try {
        return script.run() ? kHeld : kFailed;
    } catch (const quillon::BadScript& problem) {
        return complain(name, script.line(), problem.what());
    }
}

} // namespace

int main(int count, char** arguments) {
    std::ios::sync_with_stdio(false);
    const std::span<char*> names(arguments + 1, static_cast<std::size_t>(std::max(count - 1, 0)));
    if (names.empty()) {
        std::cerr << "usage: quillon-scenario FILE...   (- reads standard input)\n";
        return kWrong;
    }
    int status = kHeld;
    for (const char* name : names) {
        if (names.size() > 1) {
            std::cout << "== " << name << '\n';
        }
        status = std::max(status, runFile(name));
    }
    return status;
}
