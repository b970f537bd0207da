#pragma once

#include <algorithm>
#include <string_view>

#include "ui/ControlHost.h"

namespace quillon {

/// A name that stands in one of the tables, whose rows have a `name`. One that stands in none does not
/// compile.
template <const auto&... kTables> class CheckedName {
public:
    /// None.
    constexpr CheckedName() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a literal is to stand where the name is wanted.
    consteval CheckedName(const char* name) : name_(name) {
        if (!exists(name)) {
            throw "no control or timer has this name";
        }
    }
    [[nodiscard]] static constexpr bool exists(std::string_view name) { return (isIn(kTables, name) || ...); }
    [[nodiscard]] constexpr bool empty() const { return name_.empty(); }
    // NOLINTNEXTLINE(google-explicit-constructor): it is a name like any other from then on.
    constexpr operator std::string_view() const { return name_; }
    friend constexpr bool operator==(const CheckedName&, const CheckedName&) = default;
    friend constexpr bool operator==(const CheckedName& name, std::string_view other) {
        return name.name_ == other;
    }

private:
    template <typename Table> static constexpr bool isIn(const Table& table, std::string_view name) {
        return std::any_of(table.begin(), table.end(), [name](const auto& row) { return row.name == name; });
    }

    std::string_view name_;
};

/// A host whose controls and timers are those of tables: who asks for one by a literal asks for one that is
/// there. A name that is only known when the program runs goes through find(), or through ControlHost.
template <typename ControlName, typename TimerName> class CheckedHost : public ControlHost {
public:
    using ControlHost::ControlHost;

    [[nodiscard]] Control& at(ControlName name, std::optional<int> index = std::nullopt) const {
        return ControlHost::at(name, index);
    }
    [[nodiscard]] Control& operator[](ControlName name) const { return ControlHost::at(name); }
    [[nodiscard]] std::vector<Control*> all(ControlName name) const { return ControlHost::all(name); }
    [[nodiscard]] Timer& timer(TimerName name) const { return ControlHost::timer(name); }
};

} // namespace quillon
