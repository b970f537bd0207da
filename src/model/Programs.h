#pragma once

#include <span>
#include <string>

#include "model/ModelContext.h"

namespace quillon {

struct ProgramRow;

/// Anatomical programs: a whole set of exposure parameters in one message. Each of the five kinds has a
/// routine with arguments of text, which refuses to send outside phase 2, and one with 16-bit integers.
class Programs {
public:
    explicit Programs(ModelContext& context);

private:
    /// The arguments as they go out: texts as they were given, or integers in decimal digits.
    enum class Arguments { Texts, Integers };

    void addRoutine(const ProgramRow& row, Arguments kind);
    void send(const ProgramRow& row, Arguments kind, std::span<const std::string> arguments);
    [[nodiscard]] std::string message(const ProgramRow& row, Arguments kind,
                                      std::span<const std::string> arguments) const;
    [[nodiscard]] std::string density(Arguments kind, const std::string& key) const;

    ModelContext& context_;
};

} // namespace quillon
