#include "VisitText.h"

#include <algorithm>
#include <numeric>

#include "ReportWords.h"
#include "VisitPage.h"

namespace quillon {

namespace {

constexpr std::size_t kWidth = 100;
constexpr std::size_t kGap = 2;
constexpr std::size_t kNarrow = 6; // no column is broken below that

/// Characters, not bytes.
std::size_t widthOf(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

/// The first characters of a text, so many of them.
std::string_view head(std::string_view text, std::size_t characters) {
    std::size_t at = 0;
    while (at < text.size() && characters > 0) {
        ++at;
        while (at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80U) {
            ++at;
        }
        --characters;
    }
    return text.substr(0, at);
}

std::vector<std::string> wrapped(std::string_view text, std::size_t width) {
    std::vector<std::string> lines;
    while (widthOf(text) > width) {
        std::string_view line = head(text, width + 1);
        const auto blank = line.rfind(' ');
        line = blank != std::string_view::npos && blank > 0 ? line.substr(0, blank) : head(text, width);
        lines.emplace_back(line);
        text.remove_prefix(line.size());
        text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    }
    lines.emplace_back(text);
    return lines;
}

std::string padded(const std::string& text, std::size_t width, bool isNumber) {
    const std::string blanks(width - std::min(width, widthOf(text)), ' ');
    return isNumber ? blanks + text : text + blanks;
}

std::string cellText(const Cell& cell) {
    std::string text = cell.before.empty() ? cell.text : cell.before + " -> " + cell.text;
    return cell.changed || cell.strong ? "*" + text + "*" : text;
}

/// Each as wide as it needs, and the widest narrower until the line holds them.
std::vector<std::size_t> widthsOf(const std::vector<std::vector<std::string>>& rows) {
    std::vector<std::size_t> widths(rows.front().size(), 0);
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], widthOf(row[i]));
        }
    }
    const auto total = [&widths] {
        return std::accumulate(widths.begin(), widths.end(), std::size_t{0}) + kGap * (widths.size() - 1);
    };
    while (total() > kWidth) {
        const auto widest = std::ranges::max_element(widths);
        if (*widest <= kNarrow) {
            break;
        }
        --*widest;
    }
    return widths;
}

std::string rowText(const std::vector<std::string>& row, const std::vector<std::size_t>& widths,
                    const std::vector<Column>& columns) {
    std::vector<std::vector<std::string>> cells;
    std::size_t height = 1;
    for (std::size_t i = 0; i < row.size(); ++i) {
        cells.push_back(wrapped(row[i], std::max<std::size_t>(widths[i], 1)));
        height = std::max(height, cells.back().size());
    }
    std::string text;
    for (std::size_t line = 0; line < height; ++line) {
        std::string one;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::string& part = line < cells[i].size() ? cells[i][line] : std::string();
            one += padded(part, widths[i], columns[i].isNumber) + std::string(kGap, ' ');
        }
        text += one.substr(0, one.find_last_not_of(' ') + 1) + "\n";
    }
    return text;
}

std::string blockText(const Table& table) {
    std::vector<std::vector<std::string>> rows(1);
    for (const Column& column : table.columns) {
        rows.front().push_back(column.head);
    }
    for (const auto& row : table.rows) {
        rows.emplace_back();
        std::ranges::transform(row, std::back_inserter(rows.back()), cellText);
    }
    const std::vector<std::size_t> widths = widthsOf(rows);
    std::string text = table.folded.empty() ? "" : "\n" + table.folded + "\n";
    for (const auto& row : rows) {
        text += rowText(row, widths, table.columns);
    }
    return text;
}

std::string lines(std::string_view text, std::string_view before = {}) {
    std::string all;
    for (const std::string& line : wrapped(text, kWidth - before.size())) {
        all.append(before).append(line).append("\n");
    }
    return all;
}

Table courseTable(const Visit& visit, const ReportWords& words) {
    const ReportTexts& texts = words.texts();
    Table table{{{texts["From"]}, {texts["Mode"]}}, {}};
    for (const auto& [at, mode] : visit.modes) {
        table.rows.push_back({words.time(at), words.mode(mode)});
    }
    return table;
}

} // namespace

std::string plainText(const ReportPage& page) {
    std::string text = page.title + "\n" + std::string(widthOf(page.title), '=') + "\n";
    for (const std::string& line : page.lines) {
        text += lines(line);
    }
    for (const auto& [name, value] : page.facts) {
        text += lines(std::string(name).append(": ").append(value));
    }
    for (const auto& [number, what] : page.figures) {
        text += padded(number, 6, true) + "  " + what + "\n";
    }
    for (const Section& section : page.sections) {
        text += "\n" + section.title + "\n" + std::string(widthOf(section.title), '-') + "\n";
        for (const Block& block : section.blocks) {
            if (const auto* table = std::get_if<Table>(&block)) {
                text += blockText(*table);
            } else if (const auto* paragraph = std::get_if<Paragraph>(&block)) {
                text += lines(paragraph->text, paragraph->tone == Tone::Bad ? "! " : "");
            }
        }
    }
    return text;
}

std::string textOf(const Visit& visit, const ReportTexts& texts, const Visit* before) {
    ReportPage page = pageOf(visit, texts, before);
    const ReportWords words(visit, texts);
    for (Section& section : page.sections) {
        if (!section.blocks.empty() && std::holds_alternative<CoursePlace>(section.blocks.front())) {
            section.blocks = {courseTable(visit, words)};
        }
    }
    return plainText(page);
}

} // namespace quillon
