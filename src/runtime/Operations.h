#pragma once

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "base/Fault.h"
#include "base/Text.h"
#include "runtime/Value.h"

namespace quillon {

/// Public operations and properties by name, without regard to case: for messages that the host
/// registered, for its settings, and for the scenario runner. The argument types are those of the functions
/// themselves.
class Operations {
public:
    using Function = std::function<std::optional<Value>(std::span<const Value>)>;

    /// Adds an operation. `defaults` are the values of its last arguments when the caller leaves them out.
    template <typename F> void add(std::string_view name, F operation, std::vector<Value> defaults = {}) {
        addFunction(name, std::function(std::move(operation)), std::move(defaults));
    }

    /// Adds an operation that takes its arguments as they come.
    void addAny(std::string_view name, Function operation);

    /// Adds a property; an empty getter or setter makes it write-only or read-only.
    template <typename Get> void addReadOnly(std::string_view name, Get get) {
        addGetter(name, [get] { return toValue(get()); });
    }
    template <typename Set> void addWriteOnly(std::string_view name, Set set) {
        addTypedSetter(name, std::function(std::move(set)));
    }
    template <typename Get, typename Set> void addProperty(std::string_view name, Get get, Set set) {
        addReadOnly(name, std::move(get));
        addWriteOnly(name, std::move(set));
    }
    /// A property that is a plain member, which must outlive this.
    template <typename T> void addMember(std::string_view name, T& member) {
        addProperty(
            name, [&member] { return member; }, [&member](T value) { member = std::move(value); });
    }

    [[nodiscard]] bool hasOperation(std::string_view name) const { return operations_.contains(name); }
    [[nodiscard]] bool canGet(std::string_view name) const { return getters_.contains(name); }
    [[nodiscard]] bool canSet(std::string_view name) const { return setters_.contains(name); }

    /// The name of a property that can be got, in the case in which it was added; any other name as it is.
    [[nodiscard]] std::string_view spelling(std::string_view name) const;

    /// kNoSuchName when there is no such operation or property, kArgumentsRefused on too many or too few
    /// arguments or one of the wrong type, else what the operation itself faults with.
    std::optional<Value> call(std::string_view name, std::span<const Value> arguments = {}) const;
    std::optional<Value> call(std::string_view name, std::initializer_list<Value> arguments) const {
        return call(name, std::span(arguments.begin(), arguments.size()));
    }
    [[nodiscard]] Value get(std::string_view name) const;
    void set(std::string_view name, const Value& value) const;

private:
    template <typename Result, typename... Arguments>
    void addFunction(std::string_view name, std::function<Result(Arguments...)> operation,
                     std::vector<Value> defaults) {
        addAny(name,
               [operation = std::move(operation),
                defaults = std::move(defaults)](std::span<const Value> given) -> std::optional<Value> {
                   constexpr std::size_t kCount = sizeof...(Arguments);
                   if (given.size() > kCount || given.size() + defaults.size() < kCount) {
                       throw Fault(Fault::kArgumentsRefused);
                   }
                   const auto at = [&](std::size_t i) -> const Value& {
                       return i < given.size() ? given[i] : defaults[i + defaults.size() - kCount];
                   };
                   return invoke<Result, Arguments...>(operation, at,
                                                       std::index_sequence_for<Arguments...>{});
               });
    }

    template <typename Result, typename... Arguments, typename At, std::size_t... I>
    static std::optional<Value> invoke(const std::function<Result(Arguments...)>& operation, const At& at,
                                       std::index_sequence<I...>) {
        (void)at;
        if constexpr (std::is_void_v<Result>) {
            operation(argument<Arguments>(at(I))...);
            return std::nullopt;
        } else {
            return toValue(operation(argument<Arguments>(at(I))...));
        }
    }

    /// The value as the operation wants it. One that it can't be is the caller's fault, whatever its number.
    template <typename Argument> static auto argument(const Value& value) {
        using Plain = std::remove_cvref_t<Argument>;
        try {
            if constexpr (std::is_same_v<Plain, std::string_view>) {
                return valueTo<std::string>(value);
            } else {
                return valueTo<Plain>(value);
            }
        } catch (const Fault&) {
            throw Fault(Fault::kArgumentsRefused);
        }
    }

    template <typename Argument>
    void addTypedSetter(std::string_view name, std::function<void(Argument)> set) {
        addSetter(name, [set = std::move(set)](const Value& value) { set(argument<Argument>(value)); });
    }

    using Getter = std::function<Value()>;
    using Setter = std::function<void(const Value&)>;
    // Not templates: what they do is compiled once, not at each of some hundred calls.
    void addGetter(std::string_view name, Getter get);
    void addSetter(std::string_view name, Setter set);

    template <typename T> using Named = std::map<std::string, T, NoCaseLess>;
    Named<Function> operations_;
    Named<Getter> getters_;
    Named<Setter> setters_;
};

} // namespace quillon
