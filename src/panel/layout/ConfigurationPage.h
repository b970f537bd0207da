#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kConfigPage = "fraServiceMenuItem(0)";

/// What the installation consists of.
inline constexpr auto kConfigurationPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraServiceMenuItem",  0, "", {60, 1710, 4800, 4440}, 8, "", false},
    {Kind::Button, "cmbConfiguration",   -1, kConfigPage, {60, 90, 1110, 540}, 10, "ON"},
    {Kind::Button, "cmbDfltConfig",      -1, kConfigPage, {2430, 90, 2310, 540}, 10, "Default Configuration"},
    {Kind::Label,  "lblCfgTube",         -1, kConfigPage, {60, 720, 720, 570}, 8, "Tube"},
    downKey("cmbConfTubeDown", kConfigPage, {820, 720, 420, 570}),
    {Kind::Label,  "txtCfgTube",         -1, kConfigPage, {1280, 720, 630, 570}, 10, ""},
    upKey("cmbConfTubeUp", kConfigPage, {1950, 720, 420, 570}),
    {Kind::Label,  "lblCfgWSInterlock",  -1, kConfigPage, {2430, 720, 720, 570}, 8, "Positioner Interlock"},
    downKey("cmbConfWSInterlockDown", kConfigPage, {3190, 720, 420, 570}),
    {Kind::Label,  "txtCfgWSInterlock",  -1, kConfigPage, {3650, 720, 630, 570}, 10, ""},
    upKey("cmbConfWSInterlockUp", kConfigPage, {4320, 720, 420, 570}),
    {Kind::Label,  "lblCfgWM",           -1, kConfigPage, {60, 1350, 720, 570}, 8, "WM"},
    downKey("cmbConfWMDown", kConfigPage, {820, 1350, 420, 570}),
    {Kind::Label,  "txtCfgWorkingMode",  -1, kConfigPage, {1280, 1350, 630, 570}, 8, ""},
    upKey("cmbConfWMUp", kConfigPage, {1950, 1350, 420, 570}),
    {Kind::Label,  "Label4",             -1, kConfigPage, {2430, 1350, 720, 570}, 8, "Fail Safe"},
    downKey("cmbConfFailSafeDown", kConfigPage, {3190, 1350, 420, 570}),
    {Kind::Label,  "txtCfgFailSafe",     -1, kConfigPage, {3650, 1350, 630, 570}, 10, ""},
    upKey("cmbConfFailSafeUp", kConfigPage, {4320, 1350, 420, 570}),
    {Kind::Label,  "lblCfgAECIC",        -1, kConfigPage, {60, 1980, 720, 570}, 8, "AEC IC"},
    downKey("cmbConfAECDown", kConfigPage, {820, 1980, 420, 570}),
    {Kind::Label,  "txtCfgAECIC",        -1, kConfigPage, {1280, 1980, 630, 570}, 10, ""},
    upKey("cmbConfAECUp", kConfigPage, {1950, 1980, 420, 570}),
    {Kind::Label,  "Label5",             -1, kConfigPage, {2430, 1980, 720, 570}, 8, "Sync Type"},
    downKey("cmbConfSyncTypeDown", kConfigPage, {3190, 1980, 420, 570}),
    {Kind::Label,  "txtCfgSyncType",     -1, kConfigPage, {3650, 1980, 630, 570}, 10, ""},
    upKey("cmbConfSyncTypeUp", kConfigPage, {4320, 1980, 420, 570}),
    {Kind::Label,  "lblKVTracking",      -1, kConfigPage, {60, 2610, 720, 570}, 8, "KV Tracking"},
    downKey("cmbKVTrackingDown", kConfigPage, {820, 2610, 420, 570}),
    {Kind::Label,  "txtCfgKVTracking",   -1, kConfigPage, {1280, 2610, 630, 570}, 10, ""},
    upKey("cmbKVTrackingUp", kConfigPage, {1950, 2610, 420, 570}),
    {Kind::Label,  "lblRAD_RF",          -1, kConfigPage, {2430, 2610, 720, 570}, 8, "RAD/RF"},
    {Kind::Label,  "txtRAD_RF",          -1, kConfigPage, {3650, 2610, 630, 570}, 10, ""},
    {Kind::Label,  "lblAECAreas",         1, kConfigPage, {60, 3300, 4680, 240}, 10, "AEC Areas"},
    {Kind::Button, "cmbAECFieldLeft",     1, kConfigPage, {60, 3600, 1520, 600}, 10, "Left"},
    {Kind::Button, "cmbAECFieldCenter",   1, kConfigPage, {1640, 3600, 1520, 600}, 10, "Center"},
    {Kind::Button, "cmbAECFieldRight",    1, kConfigPage, {3220, 3600, 1520, 600}, 10, "Right"},
    // clang-format on
});

} // namespace quillon
