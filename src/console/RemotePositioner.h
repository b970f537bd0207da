#pragma once

#include <array>
#include <cstdint>
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
    ControlHost& console_;
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
