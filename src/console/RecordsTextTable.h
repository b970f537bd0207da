#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace quillon {

struct RecordsText {
    std::string_view name;
    std::string_view english;
};

// clang-format off
/// The words of the key to the records and of their window. %1, %2 and so on stand for what is put in.
inline constexpr std::array kRecordsTexts{
    // The key in the console's window; the rest is for a screen reader and for the foot
    RecordsText{"sRecords",             "Records"},
    RecordsText{"sRecordsStarting",     "no recording yet"},
    RecordsText{"sRecordsOn",           "recording"},
    RecordsText{"sRecordsInMemory",     "recording in memory only, gone at logout"},
    RecordsText{"sRecordsFull",         "the disk takes nothing"},
    RecordsText{"sRecordsOff",          "recording is off"},
    RecordsText{"sRecordsNone",         "no recording"},
    RecordsText{"sRecordsMissing",      "the program quillon-records is not installed"},
    RecordsText{"sRecordsNotStarted",   "quillon-records cannot be started"},
    // Save
    RecordsText{"sRecordsSaveLast",     "Save last visit to %1"},
    RecordsText{"sRecordsSaveThat",     "Save visit of %2 to %1"},
    RecordsText{"sRecordsFree",         "%1 free"},
    RecordsText{"sRecordsNoStick",      "Save: plug in a stick"},
    RecordsText{"sRecordsOtherPlace",   "Other place ..."},
    RecordsText{"sRecordsWithReport",   "with report"},
    RecordsText{"sRecordsSaving",       "Saving ..."},
    RecordsText{"sRecordsSaved",        "Saved as %1, %2, read back and found equal."},
    RecordsText{"sRecordsPull",         "The stick can be pulled."},
    RecordsText{"sRecordsNotSaved",     "Not saved: %1: %2."},
    RecordsText{"sRecordsPartly",       "Not all of the recording could be read: %1"},
    // The pages
    RecordsText{"sRecordsReport",       "Report"},
    RecordsText{"sRecordsTraffic",      "Traffic"},
    RecordsText{"sRecordsCompare",      "Compare"},
    RecordsText{"sRecordsMarkTwo",      "Compare with which visit? Touch it, or go to it and press Enter."},
    RecordsText{"sRecordsMarkOne",      "Mark a visit in the list first."},
    RecordsText{"sRecordsBack",         "Back"},
    RecordsText{"sRecordsBrowser",      "Open in browser"},
    RecordsText{"sRecordsNoBrowser",    "No browser could be opened. The report can be saved."},
    RecordsText{"sRecordsSaveAs",       "Save as %1"},
    RecordsText{"sRecordsPlaying",      "Playing the visit ..."},
    // The switch
    RecordsText{"sRecordsSwitch",       "Record sessions"},
    RecordsText{"sRecordsMeaning",      "Every session is recorded: what went over the line, what was pressed, and when. No patient data. %1 of %2 in %3."},
    RecordsText{"sRecordsMeaningOff",   "Sessions that start from now on are not recorded. What is here stays: %1 of %2 in %3."},
    RecordsText{"sRecordsSwitchedOn",   "Sessions are recorded from the next start of the console on."},
    RecordsText{"sRecordsSwitchedOff",  "From the next start of the console on nothing is recorded. The running session is, to its end."},
    RecordsText{"sRecordsNoSwitch",     "%1 cannot be written: %2"},
    RecordsText{"sRecordsMemoryNote",   "These records lie in memory and are gone at logout: save what is needed."},
    RecordsText{"sRecordsDiskNote",     "The disk of the records has no room left."},
    // The list
    RecordsText{"sRecordsVisit",        "Visit"},
    RecordsText{"sRecordsFrom",         "From"},
    RecordsText{"sRecordsTo",           "To"},
    RecordsText{"sRecordsKeys",         "Keys"},
    RecordsText{"sRecordsErrors",       "Errors"},
    RecordsText{"sRecordsSize",         "Size"},
    RecordsText{"sRecordsNow",          "(now)"},
    RecordsText{"sRecordsSilent",       "(no generator)"},
    RecordsText{"sRecordsGaps",         "(with gaps)"},
    RecordsText{"sRecordsNumber",       "Session %1"},
    RecordsText{"sRecordsEmpty",        "No session has been recorded yet."},
    // The traffic
    RecordsText{"sRecordsTime",         "Time"},
    RecordsText{"sRecordsSince",        "+ ms"},
    RecordsText{"sRecordsDirection",    "Direction"},
    RecordsText{"sRecordsFrame",        "Frame"},
    RecordsText{"sRecordsWhat",         "Meaning"},
    RecordsText{"sRecordsFate",         "What became of it"},
    RecordsText{"sRecordsSent",         "sent"},
    RecordsText{"sRecordsLost",         "not sent"},
    RecordsText{"sRecordsReceived",     "received"},
    RecordsText{"sRecordsPressed",      "key"},
    RecordsText{"sRecordsNoted",        "note"},
    RecordsText{"sRecordsWithoutPoll",  "Without the poll"},
    RecordsText{"sRecordsOnlyErrors",   "Only errors"},
    RecordsText{"sRecordsCopy",         "Copy"},
    RecordsText{"sRecordsSaveRows",     "Save"},
    RecordsText{"sRecordsToEnd",        "To the end"},
    RecordsText{"sRecordsLive",         "The session runs: new rows come by themselves."},
    RecordsText{"sRecordsStands",       "Scrolled up: the rows stand still. New rows: %1"},
    RecordsText{"sRecordsRows",         "%1 rows, %2 on show"},
    RecordsText{"sRecordsCopied",       "%1 rows copied"},
    RecordsText{"sRecordsRepeat",       "sent again, transmission %1"},
    RecordsText{"sRecordsAfter",        "acknowledged after %1 ms"},
    RecordsText{"sRecordsAcknowledged", "acknowledged"},
    RecordsText{"sRecordsUnanswered",   "no acknowledgement"},
    RecordsText{"sRecordsGivenUp",      "no acknowledgement: given up"},
    RecordsText{"sRecordsNotTaken",     "the device did not take it"},
    RecordsText{"sRecordsAnswers",      "for %1"},
    RecordsText{"sRecordsStray",        "nothing waits for it"},
    // A place to save to
    RecordsText{"sRecordsChoose",       "Choose a folder"},
    RecordsText{"sRecordsCancel",       "Cancel"},
    RecordsText{"sRecordsHere",         "Save here"},
    RecordsText{"sRecordsUp",           "One folder up"},
};
// clang-format on

/// The name of a row of kRecordsTexts, which is known when it is compiled.
struct RecordsTextName {
    consteval RecordsTextName(const char* name) {
        while (index < kRecordsTexts.size() && kRecordsTexts[index].name != name) {
            ++index;
        }
        if (index == kRecordsTexts.size()) {
            throw "no text has this name";
        }
    }
    std::size_t index = 0;
};

} // namespace quillon
