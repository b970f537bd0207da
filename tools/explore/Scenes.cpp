#include "Scenes.h"

#include "base/Text.h"

namespace quillon {

namespace {

const std::string kInConfiguration = "cmbConfiguration;wait 5000;";
const std::string kToCalibration = "cmbManualCalibration;SelWSCal.cmdOK;";
const std::string kInCalibration = kToCalibration + "wait 8000;";
const std::string kLent = kInCalibration + "cmbGoToUserMode;wait 12000;";
const std::string kNotFollowed = kInCalibration + "sim set modechange 1000000;";
const std::string kChoice = "cmbAutocalibration;SelWSAutocal.cmdOK;";
const std::string kFocus = "AutocalSelFocusOrParameter.cmbOKFocus;";
const std::string kWarned = kChoice + "AutocalSelFocusOrParameter.cmbAutocalSmallFocus;" + kFocus;
const std::string kYes = "AutocalWarning.cmbAutocalYes;";
const std::string kSeekWithoutEnd = kChoice + "AutocalSelFocusOrParameter.cmbAutocalLargeFocus;" + kFocus +
                                    kYes + "wait 5000;sim silence on;wait 65000;sim silence off";
const std::string kAsked = kWarned + kYes + "wait 12000;";
const std::string kConfirmed = kAsked + "TorvaneSerial.cmbAutocalConfirm;";
const std::string kInAutocalibration = kConfirmed + "wait 10000;";
const std::string kCounters = "cmbReadExposureCounters;";

// clang-format off
const std::vector<Scene> kScenes{
    {Run::None,                     "Ready",                     true,  ""},
    {Run::None,                     "a positioner's screen",     true,  "cmdMultiRoom;wait 2000"},
    {Run::None,                     "Configuration",             true,  kInConfiguration},
    {Run::None,                     "Calibration",               true,  kInCalibration},
    {Run::None,                     "the users",                 true,  kLent},
    {Run::None,                     "Autocalibration",           true,  kInAutocalibration},
    {Run::EnteringConfiguration,    "before the command",        false, "cmbConfiguration;wait 200"},
    {Run::EnteringConfiguration,    "behind an exposure",        true,  "cmbConfiguration;wait 500;sim phase 3;wait 50;sim phase 2;wait 50"},
    {Run::EnteringConfiguration,    "behind the report",         false, "cmbConfiguration;wait 1500"},
    {Run::LeavingConfiguration,     "before the command",        false, kInConfiguration + "cmbClose;wait 200"},
    {Run::LeavingConfiguration,     "behind the report",         true,  kInConfiguration + "cmbClose;wait 1500"},
    {Run::ChoosingWorkstation,      "its panel",                 false, "cmbManualCalibration;wait 1000"},
    {Run::EnteringCalibration,      "before the workstation",    false, kToCalibration + "wait 500"},
    {Run::EnteringCalibration,      "behind an exposure",        true,  kToCalibration + "wait 1400;sim phase 3;wait 50;sim phase 2;wait 50"},
    {Run::EnteringCalibration,      "before the mode",           false, kToCalibration + "wait 1600"},
    {Run::EnteringCalibration,      "behind the report",         false, kToCalibration + "wait 3500"},
    {Run::EnteringCalibration,      "back from the users",       false, kLent + "cmbClose;wait 1000"},
    {Run::LeavingCalibration,       "before the command",        false, kInCalibration + "cmbClose;wait 500"},
    {Run::LeavingCalibration,       "behind the report",         true,  kInCalibration + "cmbClose;wait 2500"},
    {Run::LeavingCalibration,       "not followed",              false, kNotFollowed + "cmbClose;wait 30000"},
    {Run::LeavingCalibration,       "not followed for a minute", true,  kNotFollowed + "cmbClose;wait 65000"},
    {Run::Lending,                  "before the command",        false, kInCalibration + "cmbGoToUserMode;wait 500"},
    {Run::Lending,                  "behind the report",         false, kInCalibration + "cmbGoToUserMode;wait 4000"},
    {Run::Lending,                  "not followed",              false, kNotFollowed + "cmbGoToUserMode;wait 4000"},
    {Run::ChoosingAutocalibration,  "the workstation",           false, "cmbAutocalibration;wait 1000"},
    {Run::ChoosingAutocalibration,  "the point",                 false, kChoice + "wait 1000"},
    {Run::ChoosingAutocalibration,  "the warning",               false, kWarned + "wait 1000"},
    {Run::EnteringAutocalibration,  "before the workstation",    false, kWarned + kYes + "wait 300"},
    {Run::EnteringAutocalibration,  "before calibration",        false, kWarned + kYes + "wait 2000"},
    {Run::EnteringAutocalibration,  "behind its report",         false, kWarned + kYes + "wait 5000"},
    {Run::EnteringAutocalibration,  "a seek for a minute",       true,  kSeekWithoutEnd},
    {Run::EnteringAutocalibration,  "the question",              false, kAsked},
    {Run::EnteringAutocalibration,  "the question for a minute", true,  kAsked + "wait 65000"},
    {Run::EnteringAutocalibration,  "before its answer",         false, kConfirmed + "wait 500"},
    {Run::EnteringAutocalibration,  "in the mode",               false, kConfirmed + "wait 4000"},
    {Run::HandingOver,              "begun by the generator",    true,  kInCalibration + "sim phase 9;wait 1000"},
    {Run::HandingOver,              "an exposure",               false, kInCalibration + "sim phase 9;wait 1000;sim phase 3;wait 5000"},
    {Run::LeavingAutocalibration,   "before the command",        false, kInAutocalibration + "cmbClose;wait 500"},
    {Run::LeavingAutocalibration,   "behind the command",        false, kInAutocalibration + "cmbClose;wait 1600"},
    {Run::LeavingAutocalibration,   "Ready",                     true,  kInAutocalibration + "cmbClose;wait 1600;sim phase 2;wait 500"},
    {Run::LeavingAutocalibration,   "not followed",              false, kInAutocalibration + "sim silence on;cmbClose;wait 8000;sim silence off"},
    {Run::LeavingAutocalibration,   "dismissed",                 false, kAsked + "TorvaneSerial.cmbAutocalDismiss;wait 1400"},
    {Run::ReadingCounters,          "before the first answer",   false, kCounters + "wait 1000"},
    {Run::ReadingCounters,          "behind an exposure",        true,  kCounters + "wait 1000;sim phase 3;wait 50;sim phase 2;wait 50"},
    {Run::ReadingCounters,          "no answer",                 false, "sim silence on;" + kCounters + "wait 9000;sim silence off"},
    {Run::ShowingCounters,          "its screen",                true,  kCounters + "wait 9000"},
    {Run::ShowingCounters,          "the question of a reset",   true,  kCounters + "wait 9000;press Quillon.cmdResetT1;wait 10500;release Quillon.cmdResetT1"},
    {Run::Closing,                  "the last second",           true,  "cmbClose;wait 500"},
};
// clang-format on

} // namespace

std::vector<std::string> Scene::lines() const {
    std::vector<std::string> all{"wait 20000"};
    for (const std::string_view line : split(how, ";")) {
        if (line.find(' ') != std::string_view::npos) {
            all.emplace_back(line);
        } else if (!line.empty()) {
            all.push_back((line.find('.') == std::string_view::npos ? "click Quillon." : "click ") +
                          std::string(line));
        }
    }
    return all;
}

const std::vector<Scene>& scenes() {
    return kScenes;
}

} // namespace quillon
