#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <array>
#include <span>
#include <string_view>

namespace simulator {

/// The positioners behind the generator, which only passes their messages on: the remote one with its four
/// calibration points and its SID, and Orla with its five axes.
class Positioner {
public:
    explicit Positioner(Machine& machine) : machine_(machine) {}

    [[nodiscard]] static std::span<const Row<Positioner>> rows();
    [[nodiscard]] bool inServiceMode() const { return serviceMode_; }

    /// What the converter of the remote one reads, 0 to 4095.
    void setReading(int reading) { reading_ = reading; }
    [[nodiscard]] int reading() const { return reading_; }

private:
    struct Point {
        int parameter;
        int reading;
    };

    bool relay(const Request& request);
    bool remote(std::string_view message);
    void orla(std::string_view message);
    void storePoint(std::string_view data);
    void storeSid(std::string_view data);
    void sayPoints();
    [[nodiscard]] int jitter() { return machine_.random.below(5) - 2; }

    Machine& machine_;
    bool serviceMode_ = false;
    std::array<Point, 4> points_{{{400, 820}, {1100, 1510}, {1560, 2240}, {1800, 3010}}};
    int sid_ = 1000;
    int reading_ = 2048;
};

} // namespace simulator
