#pragma once

#include <exception>

namespace quillon {

/// A statement inside a handler could not do its work. Ends the handler; a conversion catches it earlier
/// where a bad value has an answer.
class Fault : public std::exception {
public:
    explicit Fault(int number) : number_(number) {}

    /// One of the numbers below.
    [[nodiscard]] int number() const { return number_; }
    [[nodiscard]] const char* what() const noexcept override { return "fault in a handler"; }

    /// It was told which handler it has ended.
    [[nodiscard]] bool told() const { return told_; }
    void setTold() { told_ = true; }

    static constexpr int kNoSuchName = 1;         ///< a name that nothing has: a mistake in this program
    static constexpr int kNotFound = 5;           ///< not its own message; the decoder goes on searching
    static constexpr int kOverflow = 6;           ///< a number does not fit its type
    static constexpr int kSubscript = 9;          ///< an index outside an array
    static constexpr int kTypeMismatch = 13;      ///< a text that is no number
    static constexpr int kPropertyRefused = 438;  ///< a control has no such property
    static constexpr int kArgumentsRefused = 450; ///< an operation called with arguments it does not take

private:
    int number_;
    bool told_ = false;
};

} // namespace quillon
