#include "model/Programs.h"

#include <array>
#include <vector>

#include "base/Fault.h"
#include "base/Numbers.h"
#include "link/OutboundTable.h"
#include "model/ExposureControl.h"

namespace quillon {

namespace {

enum class Form : std::uint8_t {
    Free,    ///< unchanged
    Digits2, ///< exactly so many digits
    Digits3,
    Digits5,
    Density, ///< the index of a density key, sent as the generator's step
    Nothing, ///< a tag alone
};

/// A tag and the argument behind it, counted within its part of the routine's arguments.
struct FieldRow {
    std::string_view tag;
    std::size_t argument;
    Form form;
};

// clang-format off
constexpr std::array kRad{
    FieldRow{"WS",   0, Form::Free},    // Workstation
    FieldRow{"FO",   4, Form::Free},    // Focus
    FieldRow{"ET0",  0, Form::Nothing},
    FieldRow{"FI",   5, Form::Free},    // AECFieldLeft
    FieldRow{"",     6, Form::Free},    // AECFieldCenter
    FieldRow{"",     7, Form::Free},    // AECFieldRight
    FieldRow{"FS",   8, Form::Free},    // AECFilmScreen
    FieldRow{"FN",   9, Form::Density}, // AECDensity
    FieldRow{"KV",   1, Form::Digits3}, // KVP
    FieldRow{"MA",   2, Form::Digits5}, // mA
    FieldRow{"MS",   3, Form::Digits5}, // ms
};
constexpr std::array kDigital{
    FieldRow{"WS",   0, Form::Free},    // Workstation
    FieldRow{"FO",   4, Form::Free},    // Focus
    FieldRow{"AEC",  5, Form::Free},    // AEC
    FieldRow{"BR",   6, Form::Digits3}, // Brightness
    FieldRow{"RM",   7, Form::Free},    // Roadmapping
    FieldRow{"KV",   1, Form::Digits3}, // KVP
    FieldRow{"MA",   2, Form::Digits5}, // mA
    FieldRow{"MS",   3, Form::Digits5}, // ms
};
constexpr std::array kWorkstation{
    FieldRow{"WS",   0, Form::Free},    // Workstation
};
constexpr std::array kFluoro{
    FieldRow{"FLK",  0, Form::Digits3}, // KVP, or FlKVP behind another part
    FieldRow{"FLP",  1, Form::Digits2}, // PPS
    FieldRow{"ABC",  2, Form::Free},    // ABC
    FieldRow{"FLHD", 3, Form::Free},    // HighDose
    FieldRow{"FLC",  4, Form::Free},    // Contrast
    FieldRow{"KVT",  5, Form::Free},    // Tracking
};
// clang-format on

constexpr std::size_t kRadArguments = 10;
constexpr std::size_t kDigitalArguments = 8;
constexpr std::size_t kWorkstationArguments = 1;
constexpr std::size_t kFluoroArguments = 6;
constexpr int kLongWait = 4; // retries intervals that a program waits for its acknowledgement

/// Fields whose arguments begin at `first` among those of the routine.
struct Part {
    std::span<const FieldRow> fields;
    std::size_t first;
    std::size_t arguments;
};

std::string formatted(Form form, const std::string& argument) {
    switch (form) {
    case Form::Digits2:
        return fixedDigits(argument, 2);
    case Form::Digits3:
        return fixedDigits(argument, 3);
    case Form::Digits5:
        return fixedDigits(argument, 5);
    case Form::Free:
    case Form::Density:
    case Form::Nothing:
        break;
    }
    return argument;
}

/// A 16-bit integer in decimal digits. A value that is none is the caller's fault.
std::string integerText(const Value& value) {
    try {
        return decimalText(valueTo<std::int16_t>(value));
    } catch (const Fault&) {
        throw Fault(Fault::kArgumentsRefused);
    }
}

} // namespace

/// A kind of program.
struct ProgramRow {
    std::string_view mnemonic;
    std::string_view textRoutine;
    std::string_view integerRoutine;
    std::array<Part, 2> parts;
    int integerWait; ///< of the integer routine, in retries intervals
    std::string_view handler;
    Signal<> LinkEvents::*acknowledged;

    [[nodiscard]] constexpr std::size_t arguments() const { return parts[0].arguments + parts[1].arguments; }
};

namespace {

constexpr Part kNoPart{{}, 0, 0};
constexpr Part kRadPart{kRad, 0, kRadArguments};
constexpr Part kDigitalPart{kDigital, 0, kDigitalArguments};
constexpr Part kWorkstationPart{kWorkstation, 0, kWorkstationArguments};

constexpr Part fluoroBehind(const Part& part) {
    return {kFluoro, part.arguments, kFluoroArguments};
}

using Events = LinkEvents;

// clang-format off
constexpr std::array kPrograms{
    ProgramRow{"SA", "SendAPRRAD", "APRRAD", {kRadPart, kNoPart}, 1,
               "fmessAcknowledgeAPRRAD", &Events::AcknowledgeAPRRAD},
    ProgramRow{"SC", "SendAPRDigital", "APRDigital", {kDigitalPart, kNoPart}, kLongWait,
               "fmessAcknowledgeAPRDigital", &Events::AcknowledgeAPRDigital},
    ProgramRow{"SB", "SendAPRFluoro", "APRFluoro", {kWorkstationPart, fluoroBehind(kWorkstationPart)}, 1,
               "fmessAcknowledgeAPRFluoro", &Events::AcknowledgeAPRFluoro},
    ProgramRow{"SD", "SendAPRRADFluoro", "APRRADFluoro", {kRadPart, fluoroBehind(kRadPart)}, 1,
               "fmessAcknowledgeAPRRADFluoro", &Events::AcknowledgeAPRRADFluoro},
    ProgramRow{"SE", "SendAPRDigitalFluoro", "APRRADDigitalFluoro",
               {kDigitalPart, fluoroBehind(kDigitalPart)}, 1,
               "fmessAcknowledgeAPRDigitalFluoro", &Events::AcknowledgeAPRDigitalFluoro},
};
// clang-format on

} // namespace

Programs::Programs(ModelContext& context) : context_(context) {
    for (const ProgramRow& row : kPrograms) {
        addRoutine(row, Arguments::Texts);
        addRoutine(row, Arguments::Integers);
        context_.decoder.bind(
            row.handler, [this, &row](std::string_view) { (context_.events.*row.acknowledged).raise(); });
    }
    context_.decoder.bind("fmessAPRTechniqueWarning", [this](std::string_view value) {
        if (isNumeric(value)) {
            context_.events.APRTechniqueWarning.raise(std::string(value));
        }
    });
}

void Programs::addRoutine(const ProgramRow& row, Arguments kind) {
    const std::string_view name = kind == Arguments::Texts ? row.textRoutine : row.integerRoutine;
    context_.operations.addAny(
        name, [this, &row, kind](std::span<const Value> given) -> std::optional<Value> {
            if (given.size() != row.arguments()) {
                throw Fault(Fault::kArgumentsRefused);
            }
            std::vector<std::string> arguments;
            for (const Value& value : given) {
                arguments.push_back(kind == Arguments::Texts ? valueTo<std::string>(value)
                                                             : integerText(value));
            }
            send(row, kind, arguments);
            return std::nullopt;
        });
}

void Programs::send(const ProgramRow& row, Arguments kind, std::span<const std::string> arguments) {
    context_.poll.holdBack();
    const std::string text = message(row, kind, arguments);
    if (kind == Arguments::Texts && context_.link.m_Phase != Phase::NormalOperation) {
        context_.poll.resume();
        context_.events.WrongPhase.raise(std::string(row.mnemonic));
        return;
    }
    const int wait = kind == Arguments::Texts ? kLongWait : row.integerWait;
    context_.send.SendMessage(text, phasesOf(row.mnemonic), context_.link.Handshaking,
                              toInt16(static_cast<double>(context_.link.RetriesInterval) * wait), true);
}

std::string Programs::message(const ProgramRow& row, Arguments kind,
                              std::span<const std::string> arguments) const {
    std::string text(row.mnemonic);
    for (const Part& part : row.parts) {
        for (const FieldRow& field : part.fields) {
            text += field.tag;
            if (field.form == Form::Nothing) {
                continue;
            }
            const std::string& argument = arguments[part.first + field.argument];
            text += field.form == Form::Density ? density(kind, argument) : formatted(field.form, argument);
        }
    }
    return text;
}

std::string Programs::density(Arguments kind, const std::string& key) const {
    const double step = toDouble(key) - densityOffset(context_.state);
    return kind == Arguments::Integers ? decimalText(toInt16(step)) : decimalText(step);
}

} // namespace quillon
