#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "Listing.h"
#include "ScenarioWriter.h"

namespace {

constexpr int kWrong = 2;
constexpr const char* kUsage = R"(usage: quillon-replay [--scenario] FILE   (- reads standard input)

FILE is a communication log ("log.txt") or a recording (QUILLON_RECORD).
Without an option: the messages, a line each, with what they mean and what became of them.
--scenario: a scenario for quillon-scenario that plays a log's generator. A recording is one already.
)";

std::optional<std::string> contentOf(const std::string& name) {
    std::ifstream file;
    if (name != "-") {
        file.open(name, std::ios::binary);
        if (!file) {
            return std::nullopt;
        }
    }
    std::istream& in = name == "-" ? std::cin : file;
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

int complain(std::string_view what) {
    std::cerr << "quillon-replay: " << what << '\n';
    return kWrong;
}

} // namespace

int main(int count, char** arguments) {
    const std::vector<std::string> given(arguments + 1, arguments + std::max(count, 1));
    const bool scenario = given.size() == 2 && given[0] == "--scenario";
    if (given.size() != 1 && !scenario) {
        std::cerr << kUsage;
        return kWrong;
    }
    const auto content = contentOf(given.back());
    if (!content) {
        return complain(given.back() + " cannot be read");
    }
    const quillon::Session session = quillon::readSession(*content);
    for (const std::string& problem : session.problems) {
        std::cerr << given.back() << ": " << problem << '\n';
    }
    if (scenario && session.recorded) {
        return complain("a recording is a scenario already");
    }
    std::cout << (scenario ? quillon::scenarioOf(session) : quillon::listing(session));
    return session.problems.empty() ? 0 : 1;
}
