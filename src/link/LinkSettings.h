#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "panel/layout/Names.h"
#include "runtime/Platform.h"

namespace quillon {

/// The settings of the serial line: how they are kept, stored per user, and shown in the panel's lists. None
/// of them touches an open port.
class LinkSettings {
public:
    /// `panel` holds the lists of the Comm page.
    LinkSettings(PanelHost& panel, UserStore& store);

    std::int16_t baudrate = 19200;
    std::string parity = "n"; ///< the letter: "n", "o" or "e"
    std::int16_t StopBits = 1;
    std::int16_t DataBits = 8;
    std::int16_t port = 1;
    std::int32_t GeneratorType = 0; ///< 0 RAD, 1 RF
    std::string RegistryKey;        ///< application name of the user store

    /// 0, 1, 2 for "n", "o", "e". Another number leaves the letter alone; an unknown letter reads as 0.
    [[nodiscard]] std::int16_t Parity() const;
    void setParity(std::int16_t number);

    /// "19200,n,8,1"
    [[nodiscard]] std::string portSettings() const;

    /// Reads the six keys of the user store, each with its default, and shows the line settings.
    void ReadConfiguration();
    void SaveConfiguration() const;
    /// Deletes the section and puts the defaults back.
    void SaveDefaultConfiguration();

    /// Shows the five line settings in the lists.
    void show();
    void setListsEnabled(bool enabled);

private:
    PanelHost& panel_;
    UserStore& store_;
};

/// Facts of the installation that "temp.ini" tells: what this generator has.
struct InstallationFacts {
    static constexpr std::size_t kExtendedPositions = 101;

    std::int32_t techniqueMode = 4;
    bool ThirdTube = false;
    bool SolapeFocos = false;
    bool AutocalibrationRetry = false;
    /// Slider ranges of the extended parameters, E01 first, as text.
    std::array<std::string, kExtendedPositions> extended;

    /// A missing file or key, and a value that cannot be used, gives the default.
    [[nodiscard]] static InstallationFacts read(const Folder& folder);
};

} // namespace quillon
