#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <array>
#include <span>

namespace simulator {

/// Automatic exposure control: measuring fields, density, film screen, and the switches of digital imaging.
class ExposureControl {
public:
    explicit ExposureControl(Machine& machine) : machine_(machine) {}

    [[nodiscard]] static std::span<const Row<ExposureControl>> rows();
    void powerUp();

    [[nodiscard]] bool active() const { return fields_[0] || fields_[1] || fields_[2]; }

    // Values of a program; each reports what it took. False: there is no such value.
    bool chooseFields(std::string_view digits);
    bool chooseDensity(double step);
    bool chooseScreen(double screen);
    bool chooseDigital(double on);
    bool chooseBrightness(double level);
    bool chooseRoadmapping(double on);

    void sayFields();

private:
    enum Switch { kPhotomultiplier, kDigital, kRoadmapping, kSwitches };

    bool tellMaxDensity(const Request& request);
    bool setAll(const Request& request);
    bool setField(const Request& request);
    bool tellFields(const Request&) { return sayFields(), true; }
    bool setDensity(const Request& request) { return chooseDensity(*request.number); }
    bool tellDensity(const Request&) { return sayDensity(true), true; }
    bool setScreen(const Request& request) { return chooseScreen(*request.number); }
    bool tellScreen(const Request&) { return sayScreen(true), true; }
    bool setSwitch(const Request& request);
    bool setBrightness(const Request& request) { return chooseBrightness(*request.number); }
    bool stepBrightness(const Request& request);
    bool refresh(const Request& request);

    void sayField(int field);
    void sayDensity(bool on);
    void sayScreen(bool on);
    void saySwitch(int which);
    void sayBrightness();

    Machine& machine_;
    std::array<bool, 3> fields_{};
    std::array<bool, kSwitches> switches_{};
    int density_ = 0;
    int screen_ = 0;
    int brightness_ = 0;
};

} // namespace simulator
