#pragma once

#include <cstdint>

namespace quillon {

/// What the messages of the generator make the panel do: its pages, and groups of keys brought into a known
/// state.
class PanelRoutines {
public:
    virtual ~PanelRoutines() = default;

    virtual void ShowMainMenu() = 0;
    virtual void ShowServiceMenu() = 0;
    /// Page 0 Configuration, 1 Calibration, 2 Comm.
    virtual void SelectServicePage(std::int16_t page) = 0;
    /// The page that the next ShowServiceMenu shows.
    virtual void setServicePage(std::int16_t page) = 0;
    /// Both menus back to their first page, the main menu on show.
    virtual void resetPages() = 0;
    virtual void ResetPanelKeys() = 0;
    virtual void EnableRADKeys(bool enable) = 0;
    virtual void EnableFluoroKeys(bool enable) = 0;
    virtual void EnableCalibrationKeys(bool enable) = 0;
    virtual void PrepareConfigurationPage() = 0;
    virtual void PrepareAutocalibrationPage() = 0;
    virtual void ClearDigitalAECKeys() = 0;
    /// The values of the configuration page empty, its field keys at rest.
    virtual void clearConfigurationPage() = 0;
};

} // namespace quillon
