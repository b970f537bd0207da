#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "runtime/MemoryPlatform.h"
#include "shell/Application.h"

namespace quillon {

/// Looks for what must never happen, whatever the operator, the generator and the line do.
class Watch {
public:
    Watch(Application& application, const MemoryPlatform& machine);

    /// A frame of the console, without its end bytes: allowed by the phase and preceded by its key.
    void frameWritten(std::string_view text);
    /// A message of the generator on an open line, without its end bytes.
    void reportHeard(std::string_view text);
    /// A control within reach was pressed; its commands may go out now.
    void paidFor(std::string_view name);
    /// To be called whenever something may have changed: no key repeats that nobody holds.
    void look(bool anyHeld);
    /// The screen shows the phase of the last report.
    void checkScreen();
    /// No workflow runs on. The operator has nothing open, and the generator is in order.
    void checkRest();

    void violation(const std::string& what);
    [[nodiscard]] const std::vector<std::string>& violations() const { return violations_; }

private:
    void phaseHeard(std::string_view value);
    void checkKeys(std::string_view text);
    void checkMask(std::string_view text);

    Application& application_;
    const MemoryPlatform& machine_;
    const Timer& sending_;
    const Timer& holding_;
    std::vector<std::string> violations_;
    std::map<std::string_view, int> allowance_; ///< transmissions that keys have paid for
    std::set<std::int32_t> masks_{0};           ///< all that stood since the queue was empty
    std::int32_t mask_ = 0;
    bool enableAsked_ = false;    ///< since the queue was empty
    std::string phaseText_ = "-"; ///< what the last report says must stand on the screen
};

} // namespace quillon
