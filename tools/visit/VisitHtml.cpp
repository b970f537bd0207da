#include "VisitHtml.h"

#include "CourseDrawing.h"
#include "ReportPage.h"
#include "ReportWords.h"
#include "VisitPage.h"

namespace quillon {

namespace {

constexpr std::string_view kHead = R"(
<meta charset=utf-8>
<meta name=viewport content="width=device-width">
)";

constexpr std::string_view kStyle = R"(<style>
body{font:15px/1.45 "DejaVu Sans",system-ui,sans-serif;color:#14202b;background:#fff;max-width:980px;margin:24px auto;padding:0 20px}
h1{font-size:26px;margin:0}h2{font-size:18px;margin:30px 0 8px;border-bottom:2px solid #16324a;padding-bottom:3px}p{margin:6px 0}
table{border-collapse:collapse;width:100%;font-size:13.5px;margin:6px 0}
th{text-align:left;font-weight:600;background:#e8edf1;border-bottom:1px solid #9aa7b2;padding:4px 8px;vertical-align:bottom}
td{border-bottom:1px solid #d5dce2;padding:4px 8px;vertical-align:top;overflow-wrap:break-word}
td.n,th.n{text-align:right;font-variant-numeric:tabular-nums}td:first-child{font-variant-numeric:tabular-nums}
td.c{background:#fff6d8;box-shadow:inset 4px 0 #b8860b}.q{color:#44515c}
.bad{background:#fde9e9;box-shadow:inset 4px 0 #a3191f;padding:7px 12px}.good{background:#eaf4e6;box-shadow:inset 4px 0 #3b7a2a;padding:7px 12px}
.note{color:#44515c;font-size:13px}
.sum{display:grid;grid-template-columns:repeat(4,1fr);gap:10px;margin:14px 0}.sum div{border:1px solid #c2ccd4;border-radius:6px;padding:8px 12px}.sum b{display:block;font-size:24px}
dl{display:grid;grid-template-columns:max-content 1fr;gap:2px 16px;margin:8px 0}dt{color:#44515c}dd{margin:0;overflow-wrap:break-word}
svg{width:100%;height:auto;font-family:inherit}svg.key{width:14px;height:11px}summary{cursor:pointer}
@media print{body{margin:0;max-width:none;font-size:10.5pt;print-color-adjust:exact;-webkit-print-color-adjust:exact}table{font-size:9.5pt}.note{font-size:9pt}h2{break-after:avoid}tr,.bad,.good,svg{break-inside:avoid}thead{display:table-header-group}details{display:none}@page{size:A4;margin:14mm}}
</style>
)";

/// A sign and bold words stand beside each colour.
std::string cellHtml(const Cell& cell, bool isNumber) {
    std::string classes = isNumber ? "n" : "";
    classes += cell.changed ? (isNumber ? " c" : "c") : "";
    std::string text = "<td" + (classes.empty() ? "" : " class='" + classes + "'") + ">";
    const std::string words = escaped(cell.text);
    if (!cell.before.empty()) {
        text += "<span class=q>" + escaped(cell.before) + "</span> \xE2\x86\x92 ";
    }
    return text + (cell.strong || cell.changed ? "<b>" + words + "</b>" : words) + "</td>";
}

std::string blockHtml(const Table& table) {
    std::string text;
    if (!table.folded.empty()) {
        text += "<details><summary>" + escaped(table.folded) + "</summary>\n";
    }
    text += "<table><thead><tr>";
    for (const Column& column : table.columns) {
        text += std::string(column.isNumber ? "<th class=n scope=col>" : "<th scope=col>") +
                escaped(column.head) + "</th>";
    }
    text += "</tr></thead><tbody>\n";
    for (const auto& row : table.rows) {
        text += "<tr>";
        for (std::size_t i = 0; i < row.size(); ++i) {
            text += cellHtml(row[i], table.columns.at(i).isNumber);
        }
        text += "</tr>\n";
    }
    return text + "</tbody></table>\n" + (table.folded.empty() ? "" : "</details>\n");
}

std::string blockHtml(const Paragraph& paragraph) {
    switch (paragraph.tone) {
    case Tone::Bad:
        return "<p class=bad><b>!</b> " + escaped(paragraph.text) + "</p>\n";
    case Tone::Good:
        return "<p class=good>" + escaped(paragraph.text) + "</p>\n";
    case Tone::Note:
        return "<p class=note>" + escaped(paragraph.text) + "</p>\n";
    case Tone::Plain:
        break;
    }
    return "<p>" + escaped(paragraph.text) + "</p>\n";
}

} // namespace

std::string escaped(std::string_view text) {
    std::string safe;
    for (const char c : text) {
        switch (c) {
        case '&':
            safe += "&amp;";
            break;
        case '<':
            safe += "&lt;";
            break;
        case '>':
            safe += "&gt;";
            break;
        case '"':
            safe += "&quot;";
            break;
        case '\'':
            safe += "&#39;";
            break;
        default:
            safe += c;
        }
    }
    return safe;
}

std::string htmlOf(const Visit& visit, const ReportTexts& texts, const Visit* before) {
    const ReportPage page = pageOf(visit, texts, before);
    const ReportWords words(visit, texts);
    std::string html = "<!doctype html>\n<html lang='" + escaped(texts["Language"]) + "'>";
    html += kHead;
    html += "<title>" + escaped(page.title) + "</title>\n" + std::string(kStyle);
    html += "<h1>" + escaped(page.title) + "</h1>\n";
    for (const std::string& line : page.lines) {
        html += "<p>" + escaped(line) + "</p>\n";
    }
    html += "<dl>";
    for (const auto& [name, value] : page.facts) {
        html += "<dt>" + escaped(name) + "</dt><dd>" + escaped(value) + "</dd>\n";
    }
    html += "</dl>\n<div class=sum>";
    for (const auto& [number, what] : page.figures) {
        html += "<div><b>" + escaped(number) + "</b>" + escaped(what) + "</div>";
    }
    html += "</div>\n";
    for (const Section& section : page.sections) {
        html += "<h2>" + escaped(section.title) + "</h2>\n";
        for (const Block& block : section.blocks) {
            if (std::holds_alternative<CoursePlace>(block)) {
                html += courseDrawing(visit, words);
            } else if (const auto* table = std::get_if<Table>(&block)) {
                html += blockHtml(*table);
            } else {
                html += blockHtml(std::get<Paragraph>(block));
            }
        }
    }
    return html + "</html>\n";
}

} // namespace quillon
