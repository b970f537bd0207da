#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "Invariants.h"

namespace quillon {

/// What a search must have reached: each command and each message of the line, each meeting of a run with
/// what can happen to it, each place where the generator may stand, each key, panel, box and text of the
/// status line, each reason why a key is dead, the begin and the end of each run, the end of each wait. All
/// of it is made from the tables of the program, so what is added there is missed here until something leads
/// to it.
class Probes {
public:
    [[nodiscard]] static const Probes& all();

    [[nodiscard]] std::size_t size() const { return names_.size(); }
    [[nodiscard]] const std::string& name(std::size_t at) const { return names_.at(at); }
    /// size() for a name that there is none of.
    [[nodiscard]] std::size_t find(std::string_view name) const;
    /// Why no search can reach it; empty where one can.
    [[nodiscard]] std::string_view reason(std::size_t at) const { return reasons_.at(at); }

private:
    Probes();
    void add(std::string name);
    void addLine();
    void addRuns();
    void addScreen();
    void addReasons();

    std::vector<std::string> names_;
    std::vector<std::string_view> reasons_;
    std::map<std::string, std::size_t, std::less<>> byName_;
};

/// A byte for each probe, in memory of somebody else; nothing is marked where there is none.
class Marks {
public:
    Marks() = default;
    explicit Marks(std::span<std::uint8_t> bytes) : bytes_(bytes) {}

    void reach(std::string_view probe);
    void reach(std::size_t at) {
        if (at < bytes_.size()) {
            bytes_[at] = 1;
        }
    }
    [[nodiscard]] bool reached(std::string_view probe) const;
    [[nodiscard]] bool reached(std::size_t at) const { return at < bytes_.size() && bytes_[at] != 0; }
    [[nodiscard]] bool any() const { return !bytes_.empty(); }
    [[nodiscard]] std::size_t count() const;
    /// "reached N of M", and how many of the rest have a reason.
    [[nodiscard]] std::string figures() const;
    /// A line for each that is missing without a reason, and for each reason that does not hold.
    [[nodiscard]] std::string complaints() const;

private:
    std::span<std::uint8_t> bytes_;
};

} // namespace quillon
