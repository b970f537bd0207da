#include "LineSweep.h"

#include <algorithm>
#include <array>

#include "Copy.h"
#include "Dice.h"
#include "base/Numbers.h"
#include "base/Text.h"

namespace quillon {

namespace {

// clang-format off
constexpr std::array<std::string_view, kDamages> kDamageNames{"lost", "garbled", "stuck", "doubled", "late"};

const std::string kToCalibration = "cmbManualCalibration;SelWSCal.cmdOK;wait 8000;";
const std::string kLeave = "cmbClose;wait 15000";
const std::string kAsked = "cmbAutocalibration;SelWSAutocal.cmdOK;AutocalSelFocusOrParameter.cmbAutocalSmallFocus;"
                           "AutocalSelFocusOrParameter.cmbOKFocus;AutocalWarning.cmbAutocalYes;wait 12000;";
const std::string kUp = "press TorvaneSerial.cmbKVPUp;wait 3000;release TorvaneSerial.cmbKVPUp;wait 1000;";

const std::array kWorkflows{
    Workflow{{Run::None, "configuration", true,
              "cmbConfiguration;wait 5000;TorvaneSerial.cmbConfTubeUp;wait 2000;" + kLeave}, "", "CF1 TU+ CF0"},
    Workflow{{Run::None, "calibration", true,
              kToCalibration + "press TorvaneSerial.cmbCalValueUp;wait 2000;release TorvaneSerial.cmbCalValueUp;"
              "TorvaneSerial.cmbStoreCalValue;wait 2000;" + kLeave}, "", "CA1 C+ CS CA0"},
    Workflow{{Run::None, "user mode", true,
              kToCalibration + "cmbGoToUserMode;wait 12000;" + kUp + "cmbClose;wait 12000;" + kLeave}, "", "CA1 CA0 KVU CA1 CA0"},
    Workflow{{Run::None, "autocalibration", true,
              kAsked + "TorvaneSerial.cmbAutocalConfirm;wait 10000;sim expose;wait 5000;" + kLeave}, "", "CA1 CAU1 CAU1 CAU0 CA0"},
    Workflow{{Run::None, "dismissal", true, kAsked + "TorvaneSerial.cmbAutocalDismiss;wait 15000"}, "", "CA1 CAU1 CAU0 CA0"},
    Workflow{{Run::None, "counters", true,
              "cmbReadExposureCounters;wait 9000;press Quillon.cmdResetT1;wait 10500;release Quillon.cmdResetT1;"
              "cmdResetCounterYes;wait 8000;cmbReadExposureCounters;wait 3000"}, "", "TC0 TC1 TC2 TCR0"},
    Workflow{{Run::None, "remote", true,
              "cmdMultiRoom;wait 3000;cmdRequestSID;wait 2000;cmdNextCalibPoint;wait 2000;cmdUpParameter;wait 1000;"
              "cmdStoreCalibPoint;wait 2000;cmdUPSid;wait 1000;cmdSetNewSID;wait 3000;cmdMultiRoom;wait 3000"}, "REMOTE=YES",
             "URSSO1 URSCD URSCF URSSO0"},
    Workflow{{Run::None, "orla", true,
              "cmdOrla;wait 3000;cmdSID;type Quillon.txtSIDPlus 120;cmdSetSIDPlus;wait 2000;cmdTrayPosition;"
              "type Quillon.txtOTCTrayMinus 12;cmdSetOTCTrayMinus;wait 3000;cmdOrla;wait 3000"}, "ORLA=YES", "URSSI+ URSPB-"},
    Workflow{{Run::None, "closing", true, "cmbClose;wait 5000"}, "", "RX0 RX1"},
};
// clang-format on

constexpr std::size_t kSecondWithin = 40; ///< pieces behind the first

std::string garbled(std::string_view bytes) {
    std::string text(bytes);
    text[0] = static_cast<char>(text[0] ^ 0x10);
    return text;
}

/// What the operator does, without the wait for Ready.
std::vector<std::string> linesOf(const Workflow& workflow) {
    std::vector<std::string> lines = workflow.scene.lines();
    lines.erase(lines.begin());
    return lines;
}

Plan planOf(const Workflow& workflow) {
    Plan plan{"", {}, "startphase=2", {}};
    if (!workflow.configuration.empty()) {
        plan.configuration.emplace_back(workflow.configuration);
    }
    return plan;
}

void toReady(Session& session, const Workflow& workflow) {
    session.perform(workflow.scene.lines().front());
}

/// Behind Ready.
std::string play(Session& session, const Workflow& workflow, const std::vector<LineFault>& faults) {
    FaultyLine line(session, faults);
    for (const std::string& each : linesOf(workflow)) {
        session.perform(each);
    }
    if (std::any_of(faults.begin(), faults.end(), [](const LineFault& fault) { return fault.lasts; })) {
        session.stand();
    }
    line.heal();
    session.leave();
    return session.complaints();
}

} // namespace

std::string LineFault::text() const {
    std::string text(toConsole ? "in:" : "out:");
    text += std::to_string(piece);
    text.append(":").append(kDamageNames.at(static_cast<std::size_t>(damage)));
    return text + (lasts ? ":on" : "");
}

std::optional<LineFault> lineFaultOf(std::string_view text) {
    const auto words = split(text, ":");
    if (words.size() < 3 || words.size() > 4 || (words[0] != "in" && words[0] != "out")) {
        return std::nullopt;
    }
    const auto* damage = std::find(kDamageNames.begin(), kDamageNames.end(), words[2]);
    if (damage == kDamageNames.end()) {
        return std::nullopt;
    }
    return LineFault{words[0] == "in", static_cast<std::size_t>(toInt32(words[1])),
                     static_cast<Damage>(damage - kDamageNames.begin()), words.size() == 4};
}

FaultyLine::FaultyLine(Session& session, std::vector<LineFault> faults) : faults_(std::move(faults)) {
    session.farEnd().toGenerator = [this](std::string_view bytes) { return pass(bytes, false); };
    session.toConsole = [this](std::string_view bytes) { return pass(bytes, true); };
}

std::string FaultyLine::pass(std::string_view bytes, bool toConsole) {
    Way& way = ways_[toConsole ? 1 : 0];
    ++way.count;
    std::string arrives = std::exchange(way.late, {});
    std::string piece(bytes);
    for (const LineFault& fault : faults_) {
        const bool meets = fault.lasts ? way.count >= fault.piece : way.count == fault.piece;
        if (fault.toConsole != toConsole || !meets || piece.empty()) {
            continue;
        }
        switch (fault.damage) {
        case Damage::Lost:
            piece.clear();
            break;
        case Damage::Garbled:
            piece = garbled(piece);
            break;
        case Damage::Stuck:
            piece = way.before;
            break;
        case Damage::Doubled:
            piece += piece;
            break;
        case Damage::Late:
            way.late = std::exchange(piece, {});
            break;
        }
    }
    const bool stays = std::any_of(faults_.begin(), faults_.end(), [&](const LineFault& fault) {
        return fault.toConsole == toConsole && fault.damage == Damage::Stuck && fault.lasts &&
               way.count >= fault.piece;
    });
    if (!stays) {
        way.before = bytes;
    }
    return arrives + piece;
}

std::span<const Workflow> workflows() {
    return kWorkflows;
}

const Workflow* workflowOf(std::string_view name) {
    const auto* found = std::find_if(kWorkflows.begin(), kWorkflows.end(),
                                     [name](const Workflow& each) { return each.scene.name == name; });
    return found == kWorkflows.end() ? nullptr : found;
}

std::string playOnLine(const Workflow& workflow, const std::vector<LineFault>& faults,
                       const std::function<void(Session& session)>& ready) {
    Session session(planOf(workflow));
    toReady(session, workflow);
    if (ready) {
        ready(session);
    }
    return play(session, workflow, faults);
}

// The sweep ----------------------------------------------------------------------------------------------

void LineSweep::sweep(const Workflow& workflow) {
    const std::array<std::size_t, 2> pieces = playWhole(workflow);
    SeededDice dice(seed_);
    Session ready(planOf(workflow));
    toReady(ready, workflow);
    const std::size_t first = 1 + dice.below(step_);
    for (const bool toConsole : {false, true}) {
        for (std::size_t piece = first; piece <= pieces.at(toConsole ? 1 : 0); piece += step_) {
            for (std::size_t each = 0; each < kDamages; ++each) {
                const Damage damage = static_cast<Damage>(each);
                const LineFault once{toConsole, piece, damage, false};
                const bool other = dice.below(2) == 0;
                const LineFault second{other, piece + 1 + dice.below(kSecondWithin),
                                       static_cast<Damage>(dice.below(kDamages)), dice.below(4) == 0};
                play(workflow, ready, {once});
                play(workflow, ready, {{toConsole, piece, damage, true}});
                play(workflow, ready, {once, second});
            }
        }
    }
}

/// How many pieces travel when nothing happens to them.
std::array<std::size_t, 2> LineSweep::playWhole(const Workflow& workflow) {
    Session session(planOf(workflow));
    toReady(session, workflow);
    auto missing = split(workflow.frames, " ");
    session.onFrame = [&missing](std::string_view frame) {
        if (!missing.empty() && frame.starts_with(missing.front())) {
            missing.erase(missing.begin());
        }
    };
    FaultyLine whole(session, {});
    for (const std::string& line : linesOf(workflow)) {
        session.perform(line);
    }
    if (!missing.empty()) {
        keep("0 TheWorkflowIsCarriedOut: without " + std::string(missing.front()),
             std::string(workflow.scene.name));
    }
    return {whole.pieces(false), whole.pieces(true)};
}

void LineSweep::play(const Workflow& workflow, Session& ready, const std::vector<LineFault>& faults) {
    static constexpr std::size_t kRoom = 1U << 14U;
    SharedText told(kRoom);
    const std::string broke = inACopy([&] { told.add(quillon::play(ready, workflow, faults)); });
    ++rounds_;
    std::string example(workflow.scene.name);
    for (const LineFault& fault : faults) {
        example += " " + fault.text();
    }
    keep(told.text(), example);
    keep(broke.empty() ? "" : "0 TheProgramGoesOn: " + broke, example);
}

void LineSweep::keep(std::string_view complaints, const std::string& example) {
    for (const std::string_view line : split(complaints, "\n")) {
        if (line.empty()) {
            continue;
        }
        const std::string what(line.substr(line.find(' ') + 1)); // not when
        const auto known = std::find_if(findings_.begin(), findings_.end(),
                                        [&](const Finding& each) { return each.what == what; });
        if (known != findings_.end()) {
            ++known->times;
        } else {
            findings_.push_back({what, example, 1});
        }
    }
}

std::string LineSweep::found() const {
    std::string text;
    for (const Finding& finding : findings_) {
        text += finding.what + "\n    " + std::to_string(finding.times) +
                " times, first: " + finding.example + "\n";
    }
    return text;
}

} // namespace quillon
