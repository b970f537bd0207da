#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quillon {

/// A text of the report. %1, %2 and so on stand for what is put in.
struct ReportText {
    std::string_view name;
    std::string_view english;
};

// clang-format off
inline constexpr std::array kReportTexts{
    ReportText{"Language",         "en"},
    ReportText{"Title",            "Service report"},
    ReportText{"Comparison",       "Comparison of two visits"},
    ReportText{"DatesOneDay",      "%1, %2 to %3 by the clock of the PC (%4)"},
    ReportText{"DatesMore",        "%1 %2 to %3 %4 by the clock of the PC (%5)"},
    ReportText{"DatesUnknown",     "The recording tells no time of day. Times count from its start; it lasts %1."},
    ReportText{"GeneratorVersion", "Generator software"},
    ReportText{"Kind",             "Kind"},
    ReportText{"WithFluoroscopy",  "with fluoroscopy"},
    ReportText{"WithoutFluoroscopy", "without fluoroscopy"},
    ReportText{"Console",          "Recorded by"},
    ReportText{"Line",             "Line"},
    ReportText{"Sessions",         "Sessions"},
    ReportText{"ClockSet",         "At %1 the clock of the PC was set, or the PC slept: it moved by %2 more than the time that the console saw."},
    ReportText{"NeverReported",    "never reported"},
    ReportText{"Unknown",          "unknown"},
    ReportText{"InDoubt",          "(?)"},
    ReportText{"ValuesChanged",    "values changed"},
    ReportText{"ExposureCount",    "exposures"},
    ReportText{"ErrorCount",       "errors"},
    ReportText{"ResetCount",       "counters reset"},

    ReportText{"HowLeft",          "How the generator was left"},
    ReportText{"LeftInOrder",      "No error and no interlock stands, the generator is ready, no changed value was left without Store, and the console was closed in order."},
    ReportText{"ErrorStands",      "Error %1 stands: %2"},
    ReportText{"InterlockStands",  "Still stands: %1"},
    ReportText{"RaysAllowed",      "X-rays are allowed, and the generator has acknowledged that."},
    ReportText{"RaysAsked",        "X-rays are allowed by the console's last command. It closed the line behind it and waited for no acknowledgement."},
    ReportText{"RaysNotAllowed",   "X-rays are not allowed: the console's last such command takes them."},
    ReportText{"RaysUnknown",      "Whether X-rays are allowed is unknown: no command that allows them was acknowledged."},
    ReportText{"NotReady",         "The generator is not ready. It last reported: %1"},
    ReportText{"NothingHeard",     "Nothing was heard of the generator."},
    ReportText{"StillSilent",      "The generator did not answer any more."},
    ReportText{"LeftUnstored",     "Changed and left without Store: %1, %2 was on show"},
    ReportText{"LeftInDoubt",      "Store was not acknowledged, so the stored value is unknown: %1"},
    ReportText{"ModeMissed",       "%1 was wanted and not reached, at %2"},
    ReportText{"NotClosed",        "The recording ends before the console was closed."},

    ReportText{"Course",           "Course of the visit and tube heat"},
    ReportText{"CourseLegend",     "Line: tube heat as reported, dashed where the generator did not answer. Brown mark: exposure. Red triangle: error. Hatched: the generator did not answer."},
    ReportText{"CourseSpoken",     "Tube heat from %1 to %2 percent over %3, with %4 exposures and %5 errors"},
    ReportText{"NoHeat",           "The tube heat was never reported."},
    ReportText{"ModeReady",        "Ready, or lent to the users"},
    ReportText{"ModeStart",        "Not reported yet, or starting"},
    ReportText{"Mode",             "Mode"},

    ReportText{"Configuration",    "Configuration"},
    ReportText{"ConfigurationHead", "Configuration, as found and as left"},
    ReportText{"Setting",          "Setting"},
    ReportText{"NotOnShow",        "Not looked at, so nothing is known of: %1."},
    ReportText{"NoConfiguration",  "Nothing of the configuration was reported."},
    ReportText{"Calibration",      "Calibration"},
    ReportText{"CalibrationHead",  "Calibration values"},
    ReportText{"NoCalibration",    "No calibration value was reported."},
    ReportText{"Point",            "Point"},
    ReportText{"Found",            "As found"},
    ReportText{"Left",             "As left"},
    ReportText{"Change",           "Change"},
    ReportText{"How",              "How"},
    ReportText{"Time",             "Time"},
    ReportText{"OnlyRead",         "only read"},
    ReportText{"StoredByHand",     "stored by hand"},
    ReportText{"ByAutocalibration", "autocalibration"},
    ReportText{"NotStored",        "changed, not stored: %1 was on show"},
    ReportText{"StoreInDoubt",     "Store was not acknowledged"},
    ReportText{"Small",            "small"},
    ReportText{"Large",            "large"},
    ReportText{"Counters",         "Exposure counters"},
    ReportText{"NoCounters",       "No counter was read."},
    ReportText{"Counter",          "Counter"},
    ReportText{"Counter0",         "RAD tube 1"},
    ReportText{"Counter1",         "RAD tube 2"},
    ReportText{"Counter2",         "Fluoroscopy"},
    ReportText{"Counter3",         "RAD tube 3"},
    ReportText{"Reset",            "Reset"},
    ReportText{"ResetDone",        "at %1, acknowledged, read anew"},
    ReportText{"ResetNotRead",     "at %1, acknowledged, not read since"},
    ReportText{"ResetNotAcked",    "asked for at %1, not acknowledged"},
    ReportText{"No",               "no"},
    ReportText{"Yes",              "yes"},
    ReportText{"Against",          "Against the exposures recorded"},
    ReportText{"CountedAll",       "\xE2\x9C\x93 +%1 counted, %2 recorded"},
    ReportText{"CountedLess",      "+%1 counted, %2 recorded of all tubes"},
    ReportText{"CountedMore",      "+%1 counted and only %2 recorded: there were others"},
    ReportText{"CountedBack",      "lower than found, without a recorded reset"},

    ReportText{"Exposures",        "Exposures"},
    ReportText{"NoExposures",      "None was recorded."},
    ReportText{"Where",            "Where"},
    ReportText{"WhereUsers",       "User mode"},
    ReportText{"End",              "End"},
    ReportText{"EndReason",        "reason %1"},
    ReportText{"Dose",             "Dose"},
    ReportText{"Fluoro",           "fluoroscopy, %1"},
    ReportText{"Measured",         "%1, measured"},
    ReportText{"Set",              "%1, set"},
    ReportText{"ExposureNote",     "mA, ms and mAs are what the generator reported afterwards. kVp is the value that was set, unless it says \"measured\". The number of the end is the generator's own."},
    ReportText{"AccumulatedDose",  "Accumulated dose, as reported last: %1"},
    ReportText{"Errors",           "Errors"},
    ReportText{"NoErrors",         "None came."},
    ReportText{"From",             "From"},
    ReportText{"To",               "To"},
    ReportText{"Stood",            "Stood"},
    ReportText{"Number",           "Number"},
    ReportText{"Words",            "Words"},
    ReportText{"HowEnded",         "How it ended"},
    ReportText{"ByKey",            "reset by key, acknowledged"},
    ReportText{"ByReset",          "the generator reported a reset"},
    ReportText{"ByItself",         "by itself: another phase was reported"},
    ReportText{"ByKeyAndPhase",    "reset by key, then another phase was reported"},
    ReportText{"ByOther",          "another error took its place"},
    ReportText{"Stands",           "still stands"},
    ReportText{"NotSeen",          "not seen: the recording of this session ended first"},
    ReportText{"Warnings",         "Warnings, interlocks and overloads"},
    ReportText{"What",             "What"},
    ReportText{"DL",               "Door open"},
    ReportText{"GL",               "Generator overload"},
    ReportText{"TL",               "Tube overload"},
    ReportText{"RL",               "Rotor"},
    ReportText{"HL",               "Overheat"},
    ReportText{"EL",               "Technique"},
    ReportText{"CL",               "Collimator"},
    ReportText{"FLAR",             "Fluoroscopy alarm"},
    ReportText{"ND",               "No digital system"},
    ReportText{"WN",               "Technique warning %1"},
    ReportText{"ERL",              "Interlock %1"},
    ReportText{"TheLine",          "The line"},
    ReportText{"SilentFrom",       "Silent from"},
    ReportText{"For",              "For"},
    ReportText{"CountedAsLost",    "Counted as lost"},
    ReportText{"NoSilence",        "The generator always answered."},
    ReportText{"LineFigures",      "%1 frames sent: %2 not taken by the device, %3 repeated, %4 never acknowledged; %5 messages heard, %6 of them unknown; %7 commands held back for the present phase."},
    ReportText{"UnknownMessages",  "The first unknown messages: %1"},
    ReportText{"HeldCommands",     "The first commands held back: %1"},

    ReportText{"Done",             "What was done"},
    ReportText{"NothingDone",      "Nothing was begun."},
    ReportText{"Took",             "Took"},
    ReportText{"Outcome",          "Outcome"},
    ReportText{"Autocalibration",  "Autocalibration"},
    ReportText{"WorkCounters",     "Counters"},
    ReportText{"Closing",          "Closing"},
    ReportText{"Reached",          "reached"},
    ReportText{"NotReached",       "not reached, and a message told it"},
    ReportText{"LeftAgain",        "back in Ready"},
    ReportText{"BackIn",           "back in %1"},
    ReportText{"NotLeft",          "told to leave, and not seen to follow"},
    ReportText{"Lent",             "lent to the users"},
    ReportText{"Cancelled",        "cancelled"},
    ReportText{"HandedOver",       "handed over"},
    ReportText{"Read",             "read"},
    ReportText{"NotRead",          "ended before all was read"},
    ReportText{"Closed",           "closed"},
    ReportText{"BrokenOff",        "broken off"},
    ReportText{"BrokenOffBy",      "broken off by %1"},
    ReportText{"GivenUp",          "given up with the closing key after a minute"},
    ReportText{"Dropped",          "the console appeared anew"},
    ReportText{"GoesOn",           "not at its end when the recording ends"},
    ReportText{"WayRestart",       "a start anew of the generator"},
    ReportText{"WayReady",         "a return to Ready"},
    ReportText{"WayExposure",      "an exposure"},
    ReportText{"WayCalibration",   "calibration"},
    ReportText{"WayConfiguration", "configuration"},
    ReportText{"WayAutocalibration", "autocalibration"},
    ReportText{"WayLost",          "the loss of the generator"},
    ReportText{"WayClose",         "the closing key"},
    ReportText{"Questions",        "Questions and messages"},
    ReportText{"Answer",           "Answer"},
    ReportText{"Keys",             "All keys: %1"},
    ReportText{"Key",              "Key"},
    ReportText{"Value",            "Value"},

    ReportText{"ReadyHead",        "Settings in normal operation"},
    ReportText{"NoReady",          "None was reported."},
    ReportText{"NoWorkstation",    "no workstation yet"},
    ReportText{"NotKnownHead",     "What this report does not know"},
    ReportText{"NotKnownConfig",   "Configuration of %1: never on show."},
    ReportText{"NotKnownPoints",   "Calibration of points that are not listed: never on show."},
    ReportText{"NotKnownCounters", "Counters: never read: %1."},
    ReportText{"NotKnownDose",     "Dose: never reported."},
    ReportText{"NotKnownElse",     "What was changed at the generator itself, or while no console was recorded."},
    ReportText{"TrustHead",        "How far it can be trusted"},
    ReportText{"PlayedSame",       "\xE2\x9C\x93 The recording was played through the console's own program: %1 of %2 frames went out again at the same millisecond."},
    ReportText{"PlayedDifferent",  "The recording does not play the same: %1 of %2 frames did, and the first that differs comes at %3. What is told from then on is marked %4 and may not be so."},
    ReportText{"Gap",              "From %1 on the recording misses something. What is told from then on is marked %2 and may not be so."},
    ReportText{"PlayProblem",      "The recording could not be played to its end: %1"},
    ReportText{"Garbled",          "%1 messages were not understood. A value that one of them told is missing here, or stands as it was told before."},
    ReportText{"Since",            "Since the visit of %1"},
    ReportText{"TrustNote",        "Times are those of the PC. What was never reported is said to be unknown."},

    ReportText{"TU",               "Tube"},
    ReportText{"WM",               "Working mode"},
    ReportText{"IC",               "Ionisation chamber"},
    ReportText{"WSI",              "Interlock"},
    ReportText{"WSF",              "Fail-safe"},
    ReportText{"WSS",              "Detector synchronisation"},
    ReportText{"KVT",              "kVp tracking curve"},
    ReportText{"FI0",              "Measuring field left"},
    ReportText{"FI1",              "Measuring field center"},
    ReportText{"FI2",              "Measuring field right"},
    ReportText{"KV",               "kVp"},
    ReportText{"MA",               "mA"},
    ReportText{"MS",               "Exposure time"},
    ReportText{"MX",               "mAs"},
    ReportText{"TM",               "Technique mode"},
    ReportText{"FO",               "Focal spot"},
    ReportText{"HCF",              "HCF mode"},
    ReportText{"TA",               "Tomography automatic"},
    ReportText{"FN",               "Density step"},
    ReportText{"MD",               "Largest density step"},
    ReportText{"FS",               "Film screen"},
    ReportText{"PH",               "Photomultiplier"},
    ReportText{"DA",               "Digital exposure control"},
    ReportText{"BR",               "Brightness"},
    ReportText{"RM",               "Road mapping"},
    ReportText{"FLK",              "Fluoroscopy kVp"},
    ReportText{"FLMA",             "Fluoroscopy mA"},
    ReportText{"FLP",              "Pulses"},
    ReportText{"FLA",              "Brightness stabilisation"},
    ReportText{"FLM",              "Magnification"},
    ReportText{"FLHD",             "High dose"},
    ReportText{"FLC",              "Contrast"},
    ReportText{"On",               "on"},
    ReportText{"Off",              "off"},
    ReportText{"Hardware",         "hardware"},
    ReportText{"Software",         "software"},
    ReportText{"WorkingMode0",     "Direct"},
    ReportText{"WorkingMode1",     "Bucky 1"},
    ReportText{"WorkingMode2",     "Bucky 2"},
    ReportText{"WorkingMode3",     "Tomography"},
    ReportText{"WorkingMode4",     "RF"},
    ReportText{"WorkingMode5",     "DSI"},
    ReportText{"WorkingMode6",     "CINE"},
    ReportText{"WorkingMode7",     "DSA"},
    ReportText{"Phase1",           "initialization"},
    ReportText{"Phase2",           "ready"},
    ReportText{"Phase3",           "preparation"},
    ReportText{"Phase4",           "exposure"},
    ReportText{"Phase5",           "fluoroscopy"},
    ReportText{"Phase6",           "calibration"},
    ReportText{"Phase7",           "error"},
    ReportText{"Phase8",           "configuration"},
    ReportText{"Phase9",           "autocalibration"},
    ReportText{"Phase10",          "tube too hot"},
    ReportText{"Phase11",          "the question whether to autocalibrate"},
    ReportText{"Phase12",          "autocalibration error"},
    ReportText{"Phase13",          "autocalibration finished"},

    ReportText{"Between",          "Between the visits: as left by the first, as found by the second"},
    ReportText{"OverBoth",         "Over both: as found by the first, as left by the second"},
    ReportText{"NothingChanged",   "Nothing differs."},
    ReportText{"SameCount",        "The same in both: %1"},
    ReportText{"First",            "First"},
    ReportText{"Second",           "Second"},
    ReportText{"FirstVisit",       "First visit"},
    ReportText{"SecondVisit",      "Second visit"},
    ReportText{"PerDay",           "%1, %2 a day"},
    ReportText{"NotWhole",         "its recording does not play the same to its end; its own report says from where on it is in doubt."},
    ReportText{"OnlyFirst",        "Known of the first only: %1"},
    ReportText{"OnlySecond",       "Known of the second only: %1"},
};
// clang-format on

/// The name of a text. One that the table does not hold does not compile.
class TextName {
public:
    consteval TextName(const char* name) : index_(indexOf(name)) {}
    [[nodiscard]] constexpr std::size_t index() const { return index_; }

private:
    static consteval std::size_t indexOf(std::string_view name) {
        const auto* const row = std::ranges::find(kReportTexts, name, &ReportText::name);
        if (row == kReportTexts.end()) {
            throw "the report has no such text";
        }
        return static_cast<std::size_t>(row - kReportTexts.begin());
    }
    std::size_t index_;
};

/// The report's texts in the reader's language, in UTF-8.
class ReportTexts {
public:
    ReportTexts();

    /// Replaces texts by those of a file: lines name=text in UTF-8, lines that begin with # skipped. Returns
    /// what cannot be used, a line each.
    std::vector<std::string> replace(std::string_view content);

    [[nodiscard]] const std::string& operator[](TextName name) const { return texts_.at(name.index()); }
    [[nodiscard]] std::string with(TextName name, std::initializer_list<std::string> put) const;
    /// The text of a name that comes from elsewhere; the name itself where there is none.
    [[nodiscard]] std::string named(std::string_view name) const;

private:
    std::vector<std::string> texts_;
};

} // namespace quillon
