#pragma once

#include "sim/Commands.h"
#include "sim/Machine.h"

#include <cstdint>
#include <span>

namespace simulator {

/// Heat of the tube: exposures warm it, time cools it, and too hot a tube rests in phase 10.
class Tube {
public:
    explicit Tube(Machine& machine) : machine_(machine) {}

    [[nodiscard]] static std::span<const Row<Tube>> rows();

    void setPercent(double percent);
    [[nodiscard]] double percent() const;

    /// Heat of an exposure, from its kVp and mAs.
    void warm(double kvp, double mas);

    [[nodiscard]] bool tooHot() const;
    /// Until it may expose again; 0 when it may.
    [[nodiscard]] std::int64_t restMs() const;

    /// Goes to phase 10 if the heat asks for it, and back to 2 once the tube has cooled.
    void check();

private:
    bool tellHeat(const Request& request);
    bool tellRating(const Request& request);
    void wake();

    Machine& machine_;
    double percent_ = 0;
    std::int64_t sinceMs_ = 0;
    Agenda::Ticket wake_ = Agenda::kNone;
};

} // namespace simulator
