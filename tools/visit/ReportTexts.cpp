#include "ReportTexts.h"

#include "base/Text.h"

namespace quillon {

ReportTexts::ReportTexts() {
    for (const ReportText& row : kReportTexts) {
        texts_.emplace_back(row.english);
    }
}

std::vector<std::string> ReportTexts::replace(std::string_view content) {
    std::vector<std::string> problems;
    std::size_t number = 0;
    for (std::string_view line : split(withoutByteOrderMark(content), "\n")) {
        ++number;
        line = trim(line.substr(0, line.find_last_not_of('\r') + 1));
        if (line.empty() || line.starts_with('#')) {
            continue;
        }
        const auto equals = line.find('=');
        const std::string_view name = trim(line.substr(0, equals));
        const auto* const row = std::ranges::find(kReportTexts, name, &ReportText::name);
        if (equals == std::string_view::npos || row == kReportTexts.end()) {
            problems.push_back("line " + std::to_string(number) + ": there is no such text");
        } else {
            texts_.at(static_cast<std::size_t>(row - kReportTexts.begin())) = trim(line.substr(equals + 1));
        }
    }
    return problems;
}

std::string ReportTexts::with(TextName name, std::initializer_list<std::string> put) const {
    std::string text;
    std::string_view rest = (*this)[name];
    while (!rest.empty()) {
        const bool place = rest.size() > 1 && rest[0] == '%' && rest[1] >= '1' && rest[1] <= '9';
        const auto number = place ? static_cast<std::size_t>(rest[1] - '1') : 0;
        if (place && number < put.size()) {
            text += *(put.begin() + number);
            rest.remove_prefix(2);
        } else {
            text += rest.front();
            rest.remove_prefix(1);
        }
    }
    return text;
}

std::string ReportTexts::named(std::string_view name) const {
    const auto* const row = std::ranges::find(kReportTexts, name, &ReportText::name);
    return row == kReportTexts.end() ? std::string(name)
                                     : texts_.at(static_cast<std::size_t>(row - kReportTexts.begin()));
}

} // namespace quillon
