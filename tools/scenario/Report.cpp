#include "Report.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

#include "base/Numbers.h"
#include "base/ScenarioText.h"
#include "shell/frmMain.h"
#include "ui/ControlHost.h"

namespace quillon {

namespace {

// In the order of the kinds.
constexpr std::array<std::string_view, 11> kKindNames{"form", "user",   "frame",   "button", "label", "text",
                                                      "list", "slider", "picture", "timer",  "images"};

std::string hex(const char* format, unsigned value) {
    char buffer[16];
    const int length = std::snprintf(buffer, sizeof buffer, format, value);
    return {buffer, static_cast<std::size_t>(length)};
}

/// Collects " key=value" pairs.
class Fields {
public:
    explicit Fields(std::string name) : line_(std::move(name)) {}

    void add(std::string_view key, std::string_view value) {
        line_ += ' ';
        line_ += key;
        line_ += '=';
        line_ += value;
    }
    void add(std::string_view key, bool value) { add(key, flagText(value)); }
    void add(std::string_view key, std::int32_t value) { add(key, decimalText(value)); }
    void addText(std::string_view key, std::string_view value) { add(key, scenarioText(value)); }

    [[nodiscard]] std::string take() { return std::move(line_); }

private:
    std::string line_;
};

} // namespace

std::string_view flagText(bool flag) {
    return flag ? "True" : "False";
}

std::string valueText(const Value& value) {
    const auto* text = std::get_if<std::string>(&value);
    return text != nullptr ? scenarioText(*text) : valueTo<std::string>(value);
}

std::string stateText(const Control& control) {
    Fields fields(nameOf(control));
    fields.add("kind", kKindNames[static_cast<std::size_t>(control.kind())]);
    if (const auto* timer = dynamic_cast<const TimerControl*>(&control)) {
        fields.add("enabled", timer->timer().running());
        fields.add("interval", timer->timer().interval());
    }
    if (control.has(Property::Visible)) {
        fields.add("visible", control.visible());
        fields.add("shown", control.shown());
    }
    if (control.has(Property::Enabled)) {
        fields.add("enabled", control.enabled());
    }
    if (control.has(Property::Geometry)) {
        fields.add("left", control.left());
        fields.add("top", control.top());
        fields.add("width", control.width());
        fields.add("height", control.height());
    }
    if (control.has(Property::Font)) {
        fields.add("font", decimalText(control.fontSize()));
    }
    if (control.has(Property::Geometry)) {
        fields.add("z", control.zOrder());
    }
    if (control.has(Property::BackColour)) {
        fields.add("backcolor", hex("0x%08X", control.backColour()));
    }
    if (control.has(Property::Tag)) {
        fields.addText("tag", control.tag());
    }
    if (control.has(Property::Caption)) {
        fields.addText("caption", control.caption());
    }
    if (control.has(Property::Items)) {
        fields.add("index", control.listIndex());
    }
    if (control.has(Property::Text)) {
        fields.addText("text", control.text());
    }
    if (control.has(Property::Range)) {
        fields.add("value", control.value());
        fields.add("max", control.maximum());
    }
    if (const auto* window = dynamic_cast<const frmMain*>(&control)) {
        fields.add("topmost", window->topMost());
    }
    return fields.take();
}

std::string Report::stamped(std::string_view line) const {
    return std::to_string(time_.now()) + " " + std::string(line);
}

void Report::print(std::string_view line) {
    if (!closed_) {
        lines_.push_back(stamped(line));
        out_ << lines_.back() << '\n';
    }
}

void Report::printEvent(std::string_view line) {
    if (!eventsQuiet_) {
        print(line);
    }
}

void Report::printFailure(std::string_view line) {
    out_ << stamped(line) << '\n';
}

std::size_t Report::count(std::string_view text) const {
    return static_cast<std::size_t>(
        std::count_if(lines_.begin(), lines_.end(),
                      [text](const std::string& line) { return line.find(text) != std::string::npos; }));
}

} // namespace quillon
