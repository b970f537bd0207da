#pragma once

#include <array>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace quillon {

// A report before it is laid out, in the reader's language and UTF-8.

enum class Tone { Plain, Note, Good, Bad };

struct Paragraph {
    std::string text;
    Tone tone = Tone::Plain;
};

/// A cell of a table. One whose value has changed holds both.
struct Cell {
    std::string text;
    std::string before = {};
    bool changed = false;
    bool strong = false;

    Cell(std::string words = {}) : text(std::move(words)) {}
    Cell(const char* words) : text(words) {}
};

struct Column {
    std::string head;
    bool isNumber = false;
};

struct Table {
    std::vector<Column> columns;
    std::vector<std::vector<Cell>> rows;
    std::string folded = {}; ///< not empty: it is opened by this line
};

/// The drawing of the course stands here.
struct CoursePlace {};

using Block = std::variant<Paragraph, Table, CoursePlace>;

struct Section {
    std::string title;
    std::vector<Block> blocks;

    void say(std::string text, Tone tone = Tone::Plain) {
        blocks.push_back(Paragraph{std::move(text), tone});
    }
    /// The table, or these words where it has no rows.
    void add(Table table, const std::string& empty) {
        if (table.rows.empty()) {
            say(empty, Tone::Note);
        } else {
            blocks.push_back(std::move(table));
        }
    }
};

struct ReportPage {
    std::string title;
    std::vector<std::string> lines;                           ///< below the title
    std::vector<std::pair<std::string, std::string>> facts;   ///< name and value
    std::vector<std::pair<std::string, std::string>> figures; ///< number and what it counts
    std::vector<Section> sections;
};

} // namespace quillon
