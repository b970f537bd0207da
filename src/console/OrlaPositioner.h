#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "console/ServiceSession.h"

namespace quillon {

/// The service screen of the autotracking positioner: the value of each analogue signal at its end and zero
/// positions, and the reading that the positioner reports for each.
class OrlaPositioner {
public:
    OrlaPositioner(ConsoleContext& context, ServiceSession& session);

    /// Shows the reading of one position, as the positioner answers: axis, sign, value, reading.
    void fmessOrla(std::string_view text);

private:
    void toggle();
    void show(bool open);
    [[nodiscard]] std::string boundsOf(std::size_t position) const;
    void tellBounds();
    void SelectOrlaAxis(std::int32_t axis);
    void set(std::size_t position);

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsoleScreen screen_;
    ConsoleHost& console_;

    bool m_OrlaActive = false;
    std::int32_t m_SelectedAxis = 0;
};

} // namespace quillon
