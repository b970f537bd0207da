#include "sim/Positioner.h"

#include "base/Numbers.h"
#include "sim/Formats.h"

#include <algorithm>

namespace simulator {

namespace {

constexpr std::string_view kAxes[] = {"PS", "PB", "AA", "AB", "SI"};
constexpr int kMiddle = 2048;
constexpr int kReadingPerUnit = 2;
constexpr std::size_t kPointDigits = 9;
constexpr std::size_t kSidDigits = 4;

bool digitsOnly(std::string_view text, std::size_t count) {
    return text.size() == count && text.find_first_not_of("0123456789") == std::string_view::npos;
}

int number(std::string_view digits) {
    return quillon::toInt32(digits);
}

} // namespace

std::span<const Row<Positioner>> Positioner::rows() {
    static constexpr Row<Positioner> rows[] = {
        {"URS", kEveryPhase, Takes::Text, &Positioner::relay},
    };
    return rows;
}

bool Positioner::relay(const Request& request) {
    const PositionerKind kind = machine_.options.positioner;
    const bool hasRemote = kind == PositionerKind::Remote || kind == PositionerKind::Both;
    const bool hasOrla = kind == PositionerKind::Orla || kind == PositionerKind::Both;
    const bool done = hasRemote && remote(request.argument);
    if (!done && hasOrla) {
        orla(request.argument);
    }
    // The generator has passed the message on; whether anybody understood it is not its affair.
    return true;
}

bool Positioner::remote(std::string_view message) {
    const std::string_view code = message.substr(0, 2);
    const std::string_view data = message.substr(code.size());
    if (code == "SO") {
        serviceMode_ = data == "1";
    } else if (code == "CG") {
        sayPoints();
    } else if (code == "RQ") {
        // Somebody moves it about, slowly.
        reading_ = std::clamp(reading_ + 4 * jitter(), 0, 4095);
        machine_.say("URSRQ" + converterText(reading_));
    } else if (code == "CD") {
        storePoint(data);
    } else if (code == "CF") {
        storeSid(data);
    } else if (code == "SG") {
        machine_.say("URSSG" + quillon::fixedDigits(sid_, 4));
    } else {
        return false;
    }
    return true;
}

void Positioner::orla(std::string_view message) {
    const std::string_view axis = message.substr(0, 2);
    const std::string_view rest = message.substr(axis.size());
    const bool known = std::ranges::find(kAxes, axis) != std::end(kAxes);
    if (!known || rest.empty() || (rest[0] != '+' && rest[0] != '-') || !digitsOnly(rest.substr(1), 3)) {
        return;
    }
    const int distance = number(rest.substr(1)) * kReadingPerUnit;
    const int reading = kMiddle + (rest[0] == '-' ? -distance : distance) + jitter();
    machine_.say("URS" + std::string(message) + converterText(reading));
}

void Positioner::storePoint(std::string_view data) {
    if (digitsOnly(data, kPointDigits) && data[0] <= '3') {
        points_.at(static_cast<std::size_t>(data[0] - '0')) = {number(data.substr(1, 4)),
                                                               number(data.substr(5, 4))};
    }
}

void Positioner::storeSid(std::string_view data) {
    if (digitsOnly(data, kSidDigits)) {
        sid_ = number(data);
    }
}

void Positioner::sayPoints() {
    std::string text = "URSCG";
    for (const Point& point : points_) {
        text += std::to_string(point.parameter) + "," + std::to_string(point.reading) + ",";
    }
    machine_.say(text);
}

} // namespace simulator
