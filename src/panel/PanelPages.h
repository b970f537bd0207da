#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "model/GeneratorState.h"
#include "model/PanelRoutines.h"
#include "panel/layout/Names.h"

namespace quillon {

/// The pages of the operator panel, its two menus, and the routines that bring groups of keys into a known
/// state.
class PanelPages final : public PanelRoutines {
public:
    /// `fromGUI` says whether the console is in charge of the navigation.
    PanelPages(PanelHost& panel, GeneratorState& state, const bool& fromGUI);

    void ShowMainMenu() override;
    void ShowServiceMenu() override;
    void SelectMainPage(std::int16_t page);
    void SelectServicePage(std::int16_t page) override;
    void setServicePage(std::int16_t page) override { m_ServicePage = page; }
    void resetPages() override;
    void ResetPanelKeys() override;
    void EnableRADKeys(bool enable) override;
    void EnableFluoroKeys(bool enable) override;
    void EnableCalibrationKeys(bool enable) override;
    void PrepareConfigurationPage() override;
    void PrepareAutocalibrationPage() override;
    void ClearDigitalAECKeys() override;
    void clearConfigurationPage() override;

    /// The keys of the technique mode and the warning's text beside them.
    void showTechniqueKeys(bool shown);
    /// Disables what the operator must not reach while the machine is lent to its users.
    void setUserMode(bool on);

    /// Disables the panel's own keys to other pages and modes, as the console leads there.
    void giveUpOwnWays();
    /// Shows this page of the service menu without a way to another.
    void keepServicePage(std::int16_t page);

    [[nodiscard]] bool mainMenuShown() const { return m_MainMenuShown; }

private:
    using Names = std::span<const PanelControl>;

    void hidePages();
    void enable(Names names, bool enabled);
    void enableAll(PanelControl name, bool enabled);
    void paintAll(PanelControl name, Colour colour);
    void show(Names names, bool visible);
    void clear(Names names);
    void handNavigationOver();
    void lockNavigation();
    void hideModeKeys();

    PanelHost& panel_;
    GeneratorState& state_;
    const bool& fromGUI_;
    std::int16_t m_MainPage = 0;
    std::int16_t m_ServicePage = 0;
    bool m_MainMenuShown = true;
};

} // namespace quillon
