#include "sim/Programs.h"

#include "sim/Formats.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace simulator {

namespace {

constexpr std::string_view kMnemonics[] = {"SA", "SB", "SC", "SD", "SE"};

struct Value {
    std::string_view tag;
    std::string_view text;
    double number;
};

/// Tags are letters, values anything else. Nothing if the text is not made that way.
std::optional<std::vector<Value>> takeApart(std::string_view text) {
    std::vector<Value> values;
    const auto letter = [](char c) { return c >= 'A' && c <= 'Z'; };
    while (!text.empty()) {
        const auto tagEnd = std::ranges::find_if_not(text, letter);
        const auto valueEnd = std::find_if(tagEnd, text.end(), letter);
        const auto tagLength = static_cast<std::size_t>(tagEnd - text.begin());
        const auto length = static_cast<std::size_t>(valueEnd - text.begin());
        const std::string_view value = text.substr(tagLength, length - tagLength);
        const auto number = numberIn(value);
        if (tagLength == 0 || !number) {
            return std::nullopt;
        }
        values.push_back({text.substr(0, tagLength), value, *number});
        text.remove_prefix(length);
    }
    return values;
}

} // namespace

/// How a program's value reaches its subject. A false result is a value that had to be limited or left.
struct Programs::Tag {
    std::string_view name;
    bool (*apply)(Programs& programs, const Value& value);
};

std::span<const Row<Programs>> Programs::rows() {
    static constexpr Row<Programs> rows[] = {
        {kMnemonics[0], kReady, Takes::Text, &Programs::take, 0},
        {kMnemonics[1], kReady, Takes::Text, &Programs::take, 1},
        {kMnemonics[2], kReady, Takes::Text, &Programs::take, 2},
        {kMnemonics[3], kReady, Takes::Text, &Programs::take, 3},
        {kMnemonics[4], kReady, Takes::Text, &Programs::take, 4},
    };
    return rows;
}

bool Programs::take(const Request& request) {
    // clang-format off
    static constexpr Tag tags[] = {
        {"WS",   [](Programs& p, const Value& v) { return p.configuration_.choose(v.number); }},
        {"FO",   [](Programs& p, const Value& v) { return p.technique_.chooseFocus(v.number != 0); }},
        {"ET",   [](Programs&, const Value&) { return true; }},
        {"FI",   [](Programs& p, const Value& v) { return p.control_.chooseFields(v.text); }},
        {"FS",   [](Programs& p, const Value& v) { return p.control_.chooseScreen(v.number); }},
        {"FN",   [](Programs& p, const Value& v) { return p.control_.chooseDensity(v.number); }},
        {"AEC",  [](Programs& p, const Value& v) { return p.control_.chooseDigital(v.number); }},
        {"BR",   [](Programs& p, const Value& v) { return p.control_.chooseBrightness(v.number); }},
        {"RM",   [](Programs& p, const Value& v) { return p.control_.chooseRoadmapping(v.number); }},
        {"KV",   [](Programs& p, const Value& v) { return p.technique_.chooseKvp(v.number); }},
        {"MA",   [](Programs& p, const Value& v) { return p.technique_.chooseMa(v.number); }},
        {"MS",   [](Programs& p, const Value& v) { return p.technique_.chooseMs(v.number); }},
        {"FLK",  [](Programs& p, const Value& v) { return p.fluoroscopy_.chooseKvp(v.number); }},
        {"FLP",  [](Programs& p, const Value& v) { return p.fluoroscopy_.choosePulses(v.number); }},
        {"ABC",  [](Programs& p, const Value& v) { return p.fluoroscopy_.chooseStabilisation(v.number); }},
        {"FLHD", [](Programs& p, const Value& v) { return p.fluoroscopy_.chooseHighDose(v.number); }},
        {"FLC",  [](Programs& p, const Value& v) { return p.fluoroscopy_.chooseContrast(v.number); }},
        {"KVT",  [](Programs& p, const Value& v) { return p.fluoroscopy_.chooseTracking(v.number); }},
    };
    // clang-format on
    const auto values = takeApart(request.argument);
    const auto known = [](const Value& value) {
        return std::ranges::find(tags, value.tag, &Tag::name) != std::end(tags);
    };
    if (!values || values->empty() || !std::ranges::all_of(*values, known)) {
        return false;
    }
    machine_.say(kMnemonics[request.amount]);
    bool asAsked = true;
    for (const Value& value : *values) {
        const auto tag = std::ranges::find(tags, value.tag, &Tag::name);
        asAsked = tag->apply(*this, value) && asAsked;
    }
    if (!asAsked) {
        machine_.say("AT1");
    }
    return true;
}

} // namespace simulator
