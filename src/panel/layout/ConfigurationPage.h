#pragma once

#include <array>

#include "panel/layout/StepKeys.h"
#include "ui/ControlTable.h"

namespace quillon {

inline constexpr std::string_view kConfigPage = "fraServiceMenuItem(0)";

/// What the installation consists of.
inline constexpr auto kConfigurationPageRows = std::to_array<ControlRow>({
    // clang-format off
    {Kind::Frame,  "fraServiceMenuItem",  0, "", {60, 1800, 4800, 4290}, 8, "", false},
    toggle({Kind::Button, "cmbConfiguration",   -1, kConfigPage, {60, 60, 2310, 540}, 10, "ON"}),
    heldFor(1000, {Kind::Button, "cmbDfltConfig", -1, kConfigPage, {2430, 60, 2310, 540}, 10, "Default Configuration"}),
    {Kind::Label,  "lblCfgTube",         -1, kConfigPage, {60, 660, 750, 570}, 9, "Tube"},
    downKey("cmbConfTubeDown", kConfigPage, {825, 660, 390, 570}),
    field({Kind::Label,  "txtCfgTube",         -1, kConfigPage, {1245, 660, 705, 570}, 10, ""}),
    upKey("cmbConfTubeUp", kConfigPage, {1980, 660, 390, 570}),
    {Kind::Label,  "lblCfgWSInterlock",  -1, kConfigPage, {2430, 660, 750, 570}, 9, "Positioner Interlock"},
    downKey("cmbConfWSInterlockDown", kConfigPage, {3195, 660, 390, 570}),
    field({Kind::Label,  "txtCfgWSInterlock",  -1, kConfigPage, {3615, 660, 705, 570}, 10, ""}),
    upKey("cmbConfWSInterlockUp", kConfigPage, {4350, 660, 390, 570}),
    {Kind::Label,  "lblCfgWM",           -1, kConfigPage, {60, 1290, 750, 570}, 9, "WM"},
    downKey("cmbConfWMDown", kConfigPage, {825, 1290, 390, 570}),
    field({Kind::Label,  "txtCfgWorkingMode",  -1, kConfigPage, {1245, 1290, 705, 570}, 9, ""}),
    upKey("cmbConfWMUp", kConfigPage, {1980, 1290, 390, 570}),
    {Kind::Label,  "Label4",             -1, kConfigPage, {2430, 1290, 750, 570}, 9, "Fail Safe"},
    downKey("cmbConfFailSafeDown", kConfigPage, {3195, 1290, 390, 570}),
    field({Kind::Label,  "txtCfgFailSafe",     -1, kConfigPage, {3615, 1290, 705, 570}, 10, ""}),
    upKey("cmbConfFailSafeUp", kConfigPage, {4350, 1290, 390, 570}),
    {Kind::Label,  "lblCfgAECIC",        -1, kConfigPage, {60, 1920, 750, 570}, 9, "AEC IC"},
    downKey("cmbConfAECDown", kConfigPage, {825, 1920, 390, 570}),
    field({Kind::Label,  "txtCfgAECIC",        -1, kConfigPage, {1245, 1920, 705, 570}, 10, ""}),
    upKey("cmbConfAECUp", kConfigPage, {1980, 1920, 390, 570}),
    {Kind::Label,  "Label5",             -1, kConfigPage, {2430, 1920, 750, 570}, 9, "Sync Type"},
    downKey("cmbConfSyncTypeDown", kConfigPage, {3195, 1920, 390, 570}),
    field({Kind::Label,  "txtCfgSyncType",     -1, kConfigPage, {3615, 1920, 705, 570}, 10, ""}),
    upKey("cmbConfSyncTypeUp", kConfigPage, {4350, 1920, 390, 570}),
    {Kind::Label,  "lblKVTracking",      -1, kConfigPage, {60, 2550, 750, 570}, 9, "KV Tracking"},
    downKey("cmbKVTrackingDown", kConfigPage, {825, 2550, 390, 570}),
    offWhenEmpty(field({Kind::Label,  "txtCfgKVTracking",   -1, kConfigPage, {1245, 2550, 705, 570}, 10, ""})),
    upKey("cmbKVTrackingUp", kConfigPage, {1980, 2550, 390, 570}),
    {Kind::Label,  "lblRAD_RF",          -1, kConfigPage, {2430, 2550, 750, 570}, 9, "RAD/RF"},
    field({Kind::Label,  "txtRAD_RF",          -1, kConfigPage, {3615, 2550, 705, 570}, 10, ""}),
    {Kind::Label,  "lblAECAreas",         1, kConfigPage, {60, 3180, 4680, 285}, 10, "AEC Areas"},
    toggle({Kind::Button, "cmbAECFieldLeft",     1, kConfigPage, {60, 3495, 1520, 690}, 10, "Left"}),
    toggle({Kind::Button, "cmbAECFieldCenter",   1, kConfigPage, {1640, 3495, 1520, 690}, 10, "Center"}),
    toggle({Kind::Button, "cmbAECFieldRight",    1, kConfigPage, {3220, 3495, 1520, 690}, 10, "Right"}),
    // clang-format on
});

} // namespace quillon
