#include "ScreenAtRest.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "base/Colours.h"
#include "console/Standing.h"

namespace quillon {

namespace {

constexpr std::array<std::string_view, 5> kNamesOfRuns{"Entering ", "Exiting ", "Aborting ", "Initializing ",
                                                       "Reading "};

std::string prompt(const Facts& facts) {
    const Control& help = facts.console()["lblHelp"];
    return help.visible() ? std::string(help.caption()) : std::string();
}

bool says(const Facts& facts, std::string_view words) {
    return prompt(facts).find(words) != std::string::npos;
}

std::string wrongArea(const Facts& facts, Area area) {
    const ctrQuillonConsole& console = facts.console();
    const bool link = console["fraTorvaneSerial"].visible();
    const bool picture = console["lblQuillonConsole"].visible();
    if (area == Area::Picture) {
        return picture && !link ? "" : "the picture at rest is not on show";
    }
    const bool behindIt = facts.doing().lent(); // the report of Ready has left it there
    return link && (!picture || behindIt) ? "" : "the link control is not on show";
}

std::string wrongPage(const Facts& facts, Page page) {
    const TorvaneSerialV3_07_QLC1& link = facts.link();
    std::string pages; // on show, one behind the other where there are several
    for (const PanelControl menu : {PanelControl("fraMainMenu"), PanelControl("fraServiceMenu")}) {
        pages += link[menu].visible() ? std::string_view(menu) : "";
    }
    for (const PanelControl kind : {PanelControl("fraMainMenuItem"), PanelControl("fraServiceMenuItem")}) {
        for (const Control* each : link.all(kind)) {
            if (each->visible()) {
                pages.append(" ").append(kind).append(std::to_string(each->index().value_or(0)));
            }
        }
    }
    const bool main =
        pages.starts_with("fraMainMenu fraMainMenuItem") && std::count(pages.begin(), pages.end(), ' ') == 1;
    const bool right = page == Page::AsLeft || (page == Page::Main && main) ||
                       (page == Page::Configuration && pages == "fraServiceMenu fraServiceMenuItem0") ||
                       (page == Page::Calibration && pages == "fraServiceMenu fraServiceMenuItem1");
    return right ? "" : "on show is " + pages + "; ";
}

std::string wrongKeys(const Facts& facts, const StandingRow& row) {
    const ctrQuillonConsole& console = facts.console();
    const Keys watched = kModeKeys | Key::GoToUserMode;
    std::string wrong;
    for (std::size_t i = 0; i < kKeyNames.size(); ++i) {
        const Key key{static_cast<std::uint8_t>(i)};
        const Control& control = console[nameOf(key)];
        const std::string name(nameOf(key));
        const bool hiddenAsLeft = key == Key::GoToUserMode && !control.visible() && control.offered();
        const bool asTaken = key == Key::LinkControl && facts.frameTaken;
        if (row.inReach.has(key) && !(control.visible() && control.offered()) && !hiddenAsLeft && !asTaken) {
            wrong += name + " is not in reach; ";
        }
        const bool laidOut = row.stand != Stand::Calibration; // there they are as left
        if (laidOut && row.shown.has(key) && !control.visible()) {
            wrong += name + " is hidden; ";
        }
        if (laidOut && watched.has(key) && !row.shown.has(key) && control.visible()) {
            wrong += name + " is on show; ";
        }
        const bool lit = control.visible() && control.backColour() == kActiveColour;
        if (watched.has(key) && control.visible() && lit != row.lit.has(key)) {
            wrong += name + (lit ? " is lit; " : " is not lit; ");
        }
    }
    return wrong;
}

std::string wrongWords(const Facts& facts, Says words) {
    const auto expect = [&](std::string_view text) {
        return says(facts, text) ? std::string()
                                 : "the prompt says " + inQuotes(prompt(facts)) + ", not " + inQuotes(text);
    };
    if (says(facts, "POWER UP") && facts.phaseAt <= facts.greetedAt) {
        return {}; // nothing was reported since these words came
    }
    switch (words) {
    case Says::None:
        return prompt(facts).empty() ? "" : "the prompt says " + inQuotes(prompt(facts));
    case Says::Lost:
        return expect("Communications ERROR");
    case Says::PoweringUp:
        return prompt(facts).empty() ? "" : expect("Powering Up");
    case Says::Question: // the generator's own word may have ended it without a report
        return prompt(facts).empty() && !facts.link()["cmbAutocalConfirm"].visible()
                   ? ""
                   : expect("Press Confirm");
    case Says::Expose:
        return expect("Press Prep and Expose");
    case Says::ResultError:
        return expect("ERROR");
    case Says::ResultOk:
        return expect("OK");
    case Says::AsLeft:
        break;
    }
    return {};
}

} // namespace

std::string otherThanItStands(const Facts& facts) {
    if (!facts.atRest() || facts.phase == 0 || facts.doing().lastPhase() == Phase::TubeTooHot) {
        return {};
    }
    const StandingRow row = standingOf(facts.doing().heard());
    const ctrQuillonConsole& console = facts.console();
    std::string wrong = wrongPage(facts, row.page) + wrongArea(facts, row.area);
    if (const std::string keys = wrongKeys(facts, row); !keys.empty()) {
        wrong += (wrong.empty() ? "" : "; ") + keys;
    }
    if (const std::string words = wrongWords(facts, row.words); !words.empty()) {
        wrong += (wrong.empty() ? "" : "; ") + words;
    }
    const std::string& caption = console["cmbClose"].caption();
    if (row.caption != Caption::Stays && caption != (row.caption == Caption::Exit ? "Exit" : "Close")) {
        wrong += "; the key that closes says " + inQuotes(caption);
    }
    if (row.positioner == Offer::Hidden &&
        (console["cmdOrla"].visible() || console["cmdMultiRoom"].visible())) {
        wrong += "; the positioner's key is on show";
    }
    return wrong.empty() ? "" : std::string(row.name) + ": " + wrong;
}

std::string wordsOfNoRun(const Facts& facts) {
    if (!facts.doing().idle() || facts.panel() != nullptr) {
        return {};
    }
    for (const std::string_view name : kNamesOfRuns) {
        if (says(facts, name)) {
            return "the prompt says " + inQuotes(prompt(facts)) + " and nothing is under way";
        }
    }
    return {};
}

std::string questionWithoutKeys(const Facts& facts) {
    if (!says(facts, "Press Confirm") || facts.panel() != nullptr || facts.running("tmrDelay") ||
        facts.frameTaken) {
        return {};
    }
    const bool keys =
        facts.reaches(facts.link()["cmbAutocalConfirm"]) && facts.reaches(facts.link()["cmbAutocalDismiss"]);
    return keys ? "" : "the operator is to press Confirm, which is not in reach";
}

std::string blinksAtRest(const Facts& facts) {
    return facts.doing().idle() && facts.running("tmrIniAutocal")
               ? "the prompt blinks and nothing is under way"
               : "";
}

} // namespace quillon
