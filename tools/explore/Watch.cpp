#include "Watch.h"

#include <algorithm>

#include "ProbeTables.h"
#include "Session.h"
#include "base/Numbers.h"
#include "console/KeyReasons.h"
#include "console/PhaseTable.h"
#include "console/StatusLine.h"
#include "link/InboundTable.h"
#include "link/OutboundTable.h"

namespace quillon {

namespace {

/// What stands in the text before its first argument begins the words.
bool tells(std::string_view words, std::string_view text) {
    return words.starts_with(text.substr(0, text.find('%')));
}

/// The longest that the text begins with.
template <typename Table, typename Member>
std::string_view longest(const Table& table, Member member, std::string_view text) {
    std::string_view found;
    for (const auto& row : table) {
        if (text.starts_with(row.*member) && (row.*member).size() > found.size()) {
            found = row.*member;
        }
    }
    return found;
}

} // namespace

Watch::Watch(Rig& rig, const Facts& facts, Marks marks) : rig_(rig), facts_(facts), marks_(marks) {
    const Probes& probes = Probes::all();
    for (std::size_t i = 0; i < kWhys.size(); ++i) {
        whys_.push_back(i);
    }
    for (const ControlHost* host : {static_cast<const ControlHost*>(&facts.console()),
                                    static_cast<const ControlHost*>(&facts.link())}) {
        for (const auto& control : host->controls()) {
            if (control->kind() == Kind::Timer) {
                const Timer& timer = static_cast<const TimerControl&>(*control).timer();
                waits_.push_back({&timer, probes.find("wait " + nameOf(*control)), false, 0});
            }
        }
    }
}

void Watch::frameWritten(std::string_view text) {
    marks_.reach("command " + std::string(longest(kOutboundTable, &OutboundRow::mnemonic, text)));
}

void Watch::reportHeard(std::string_view text) {
    const std::string_view key = longest(kInboundTable, &InboundRow::key, text);
    marks_.reach("message " + std::string(key));
    if (key == "ST") {
        if (const auto stimulus = meaningOf(Phase{toInt32(text.substr(2))}).stimulus) {
            meets(*stimulus);
        }
    }
}

void Watch::handAt(std::string_view name) {
    marks_.reach("key " + std::string(name));
}

void Watch::meets(Stimulus stimulus) {
    marks_.reach(meeting(facts_.doing().run(), stimulus));
}

void Watch::look() {
    for (Wait& wait : waits_) {
        if (wait.ran && facts_.now() >= wait.due &&
            (!wait.timer->running() || wait.timer->due() != wait.due)) {
            marks_.reach(wait.probe);
        }
        wait.ran = wait.timer->running();
        wait.due = wait.timer->due();
    }
    const bool lost = facts_.doing().generator().isLost();
    if (lost && !lost_) {
        marks_.reach(meeting(run_, Stimulus::Lost));
    }
    lost_ = lost;
    if (const Run run = facts_.doing().run(); run != run_) {
        marks_.reach((run == Run::None ? "ends " : "gives way ") + std::string(rowOf(run_).name));
        marks_.reach("begins " + std::string(rowOf(run).name));
        run_ = run;
    }
}

void Watch::moved() {
    if (facts_.atRest()) {
        marks_.reach("stands " + std::string(rowOf(standOf(facts_.doing().heard())).name));
    }
    watchStatus();
    watchPanels();
    watchBoxes();
    watchReasons();
}

void Watch::watchStatus() {
    const StatusLine& status = facts_.application().indicators().status;
    const Progress progress = status.progress();
    if (!progress.what.empty()) {
        marks_.reach("status " + (facts_.doing().waits() ? std::string(rowOf(facts_.doing().run()).name)
                                                         : std::string("settings")));
    }
    if (status.line().words.find("no answer") != std::string::npos) {
        marks_.reach("status no answer");
    }
    if (progress.count.of > 0) {
        marks_.reach("status count");
    } else if (progress.ends) {
        marks_.reach("status seconds left");
    } else if (!status.howFar().empty()) {
        marks_.reach("status exposures made");
    }
}

void Watch::watchPanels() {
    const ConsoleTexts& texts = facts_.application().indicators().texts;
    for (const PanelRow& row : kPanels) {
        const ControlHost* panel = facts_.console().keyed(row.key);
        if (panel == nullptr) {
            continue;
        }
        marks_.reach("panel " + std::string(row.key));
        if (const Control* caption = panel->find("myCaption")) {
            marks_.reach(caption->caption() == texts.sDipSwitchError ? "panel Error dip switch"
                                                                     : "panel Error protocol");
        }
    }
}

void Watch::watchReasons() {
    std::erase_if(whys_, [this](std::size_t at) { return marks_.reached(kWhys.at(at).name); });
    if (whys_.empty()) {
        return;
    }
    const Indicators& indicators = facts_.application().indicators();
    for (const ControlHost* host : facts_.hosts()) {
        for (const auto& control : host->controls()) {
            const bool seen = takesSomething(*control) && control->shown();
            const std::string why = seen ? indicators.reasons.why(*control) : std::string();
            for (const std::size_t at : whys_) {
                if (!why.empty() && tells(why, indicators.texts.*kWhys.at(at).text)) {
                    marks_.reach(kWhys.at(at).name);
                }
            }
        }
    }
}

void Watch::watchBoxes() {
    const ConsoleTexts& texts = facts_.application().indicators().texts;
    const auto& boxes = rig_.machine.desktop.boxes();
    for (; boxes_ < boxes.size(); ++boxes_) {
        for (const TextRow& row : kBoxes) {
            if (tells(boxes[boxes_].text, texts.*row.text)) {
                marks_.reach(row.name);
            }
        }
        if (boxes[boxes_].box == MemoryDesktop::Box::Question) {
            marks_.reach(boxes[boxes_].yes ? "box restart yes" : "box restart no");
        }
    }
}

} // namespace quillon
