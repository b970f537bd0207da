#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "console/ServiceSession.h"

namespace quillon {

/// The service screen of a remote positioner: four calibration points, each a parameter and the reading that
/// belongs to it, and the SID.
class RemotePositioner {
public:
    RemotePositioner(ConsoleContext& context, ServiceSession& session);

private:
    void bindKeys();
    void connectSignals();
    void toggle();
    void open();
    void close();
    [[nodiscard]] std::string bounds(std::int64_t lowest, std::int64_t highest) const;
    void tellBounds();
    /// Marks the box until it is edited, and reports what it takes.
    void refuse(Control& box, const std::string& bounds);
    /// The whole number in a box that fits the four digits of its field; else the box is refused.
    [[nodiscard]] std::optional<std::int16_t> numberIn(Control& box);
    void stepParameter(int step);
    void storePoint();
    void nextPoint();
    void showTable(std::string_view table);
    void stepSID(int step);
    void storeSID();
    void showSID(std::int16_t sid);

    ConsoleContext& context_;
    ServiceSession& session_;
    ConsoleScreen screen_;
    ConsoleHost& console_;
    Control& TxtParamCalib_;
    Control& TxtADCValueCalib_;
    Control& txtRemoteSID_;
    Timer& tmrRequestADC_;

    static constexpr std::size_t kPoints = 4;
    bool m_RemoteActive = false;
    std::int16_t m_CalibPoint = 1;
    std::int16_t m_CalibParameter = 40;                                        ///< in whole units
    std::array<std::int16_t, kPoints> m_PointParameter{400, 1100, 1560, 1800}; ///< in tenths
    std::array<std::int16_t, kPoints> m_PointADC{};
    std::int16_t m_RemoteSID = 1000;
};

} // namespace quillon
