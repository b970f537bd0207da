#include "console/panels/ConsolePanels.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <utility>

#include "base/Numbers.h"
#include "console/panels/ctrASelFocusOrParam.h"
#include "console/panels/ctrAWarning.h"
#include "console/panels/ctrQuillonError.h"
#include "console/panels/ctrSelWS.h"

namespace quillon {

namespace {

constexpr std::string_view kError = "Error";
constexpr std::string_view kSelectFocus = "AutocalSelFocusOrParameter";
constexpr std::string_view kProgram = "Quillon.";

struct ErrorRow {
    std::int16_t code;
    std::string ConsoleTexts::*caption;
    std::string ConsoleTexts::*message;
};

// clang-format off
constexpr std::array kErrors{
    ErrorRow{ErrorCode::Protocol,  &ConsoleTexts::sProtocolError,  &ConsoleTexts::sProtocolErrorText},
    ErrorRow{ErrorCode::DipSwitch, &ConsoleTexts::sDipSwitchError, &ConsoleTexts::sDipSwitchErrorText},
};
// clang-format on

} // namespace

/// How a dialog is made and dressed.
struct ConsolePanels::Row {
    std::string_view key;
    std::string_view className;
    std::string_view fallback; ///< its class when the program has none of that name
    std::unique_ptr<ControlHost> (*make)(Schedule& schedule);
    std::string_view backColour;
    bool centred;                 ///< keeps its size instead of covering the link control
    std::string_view spared = {}; ///< stays in reach beside it
};

namespace {

template <typename Panel> std::unique_ptr<ControlHost> make(Schedule& schedule) {
    return std::make_unique<Panel>(schedule);
}

} // namespace

std::span<const ConsolePanels::Row> ConsolePanels::table() {
    // clang-format off
    static constexpr std::array kRows{
        Row{"SelWSAutocal", "ctrSelWS", "SelWS.ctrSelWS", &make<ctrSelWS>,
            "ConsoleBackColor", false},
        Row{"SelWSCal", "ctrSelWS", "SelWS.ctrSelWS", &make<ctrSelWS>,
            "ConsoleBackColor", false, "cmbResetError"},
        Row{kSelectFocus, "ctrASelFocusOrParam", "ASFOrParam.ctrASelFocusOrParam", &make<ctrASelFocusOrParam>,
            "ConsoleBackColor", false},
        Row{"AutocalWarning", "ctrAWarning", "AWarning.ctrAWarning", &make<ctrAWarning>,
            "BackColor", false},
        Row{kError, "ctrQuillonError", "Error.ctrQuillonError", &make<ctrQuillonError>,
            "BackColor", true},
    };
    // clang-format on
    return kRows;
}

const ConsolePanels::Row* ConsolePanels::find(std::string_view key) {
    const auto row = std::find_if(table().begin(), table().end(),
                                  [key](const Row& each) { return equalsNoCase(each.key, key); });
    return row == table().end() ? nullptr : &*row;
}

ConsolePanels::ConsolePanels(ConsoleContext& context, ServiceSession& session)
    : context_(context), session_(session), screen_(context) {
    Schedule& schedule = context_.console.schedule();
    for (const Row& row : table()) {
        const auto make = [&schedule, make = row.make] { return make(schedule); };
        factory_.add(std::string(kProgram).append(row.className), make);
        factory_.add(row.fallback, make);
        // What the error message says is told anew each time it opens.
        if (row.key != kError && !texts_.contains(row.className)) {
            addTexts(row);
        }
    }
    context_.operations.add("ErrorMessage", [this](std::int16_t code) { ErrorMessage(code); });
}

void ConsolePanels::addTexts(const Row& row) {
    const std::unique_ptr<ControlHost> sample = row.make(context_.console.schedule());
    for (const ModalPanel::TextRow& text : dynamic_cast<const ModalPanel&>(*sample).texts()) {
        std::optional<std::string>& replaced = texts_[row.className][text.member];
        context_.operations.addWriteOnly(std::string(row.className).append(".").append(text.member),
                                         [&replaced](std::string given) { replaced = std::move(given); });
    }
}

std::vector<std::string> ConsolePanels::textNames() const {
    std::vector<std::string> all;
    for (const auto& [className, members] : texts_) {
        for (const auto& [member, replaced] : members) {
            all.push_back(std::string(className).append(".").append(member));
        }
    }
    return all;
}

void ConsolePanels::open(std::string_view key, PanelHandler handler) {
    const Row* row = find(key);
    if (row == nullptr) {
        return;
    }
    ModalPanel* panel = create(*row, std::move(handler));
    if (panel == nullptr) {
        return;
    }
    if (row->key == kSelectFocus) {
        // What is not known counts as selected.
        panel->set("SmallFocus", context_.link.mirror().m_SmallFocus != 0);
        panel->set("LargeFocus", context_.link.mirror().m_LargeFocus != 0);
    }
    show(*row, *panel);
}

void ConsolePanels::remove(std::string_view key) {
    context_.console.removeKeyed(key);
}

ModalPanel* ConsolePanels::add(std::string_view className, std::string_view key) {
    try {
        return dynamic_cast<ModalPanel*>(&context_.console.addByClass(className, key, factory_));
    } catch (const Fault&) {
        // The class is unknown, or a panel stands under this key already: then that one serves.
        return dynamic_cast<ModalPanel*>(context_.console.keyed(key));
    }
}

ModalPanel* ConsolePanels::create(const Row& row, PanelHandler handler) {
    const std::string& project = context_.state.ProjectName;
    ModalPanel* panel = add(std::string(project).append(".").append(row.className), row.key);
    if (panel == nullptr) {
        panel = add(row.fallback, row.key);
    }
    if (panel == nullptr) {
        return nullptr;
    }
    panel->set(row.backColour, toValue(context_.state.ConsoleBackColor));
    panel->set("ButtonOffColor", toValue(context_.state.ButtonOffColor));
    panel->set("ButtonOnColor", toValue(context_.state.ButtonOnColor));
    if (const auto texts = texts_.find(row.className); texts != texts_.end()) {
        for (const auto& [member, replaced] : texts->second) {
            if (replaced) {
                panel->set(member, *replaced);
            }
        }
    }
    panel->setReport([this, handler = std::move(handler)](ModalPanel& closed, std::string_view event,
                                                          std::int16_t parameter) {
        handler(closed, event, parameter);
        for (const ConsoleControl lamp : std::initializer_list<ConsoleControl>{"cmdExposure", "cmdPrep"}) {
            context_.console[lamp].setEnabled(true);
        }
    });
    return panel;
}

void ConsolePanels::show(const Row& row, ModalPanel& panel) {
    const Place frame = context_.console["fraTorvaneSerial"].place();
    if (row.centred) {
        panel.setPlace({toInt32((frame.width - panel.width()) / 2.0 + frame.left),
                        toInt32((frame.height - panel.height()) / 2.0 + frame.top), panel.width(),
                        panel.height()});
    } else {
        panel.setPlace(frame);
    }
    panel.bringToFront();
    panel.setVisible(true);
    panel.UserControl_Show(row.spared);
}

std::int16_t ConsolePanels::failureCode() const {
    return context_.state.m_ProtocolError ? ErrorCode::Protocol : ErrorCode::DipSwitch;
}

void ConsolePanels::tellProtocolError() {
    if (context_.state.m_ProtocolError) {
        ErrorMessage(ErrorCode::Protocol);
    }
}

void ConsolePanels::ErrorMessage(std::int16_t code, Phase missed) {
    context_.state.m_ProtocolError = false;
    session_.apply(effects::kCloseOffered);
    screen_.hide({"fraTorvaneSerial"});
    session_.restScreen().showPositionerKey(true);

    const Row& row = *find(kError);
    ModalPanel* panel = create(row, [this](ModalPanel&, std::string_view, std::int16_t) {
        remove(kError);
        // The workflow that failed may have left the poll off: only the generator knows where it stands now.
        session_.messageCloses();
        screen_.show({"imgQuillonConsole", "lblQuillonConsole"});
        context_.console.timer("tmrWaitRefresh").run();
        // A generator that still asks is answered first: nothing else leads it on.
        context_.link.repeatQuestion();
        session_.stand();
    });
    if (panel == nullptr) {
        return;
    }
    panel->set("sOK", context_.texts.sBoxOK);
    for (const ErrorRow& error : kErrors) {
        if (error.code == code) {
            panel->set("Caption", context_.texts.*error.caption);
            panel->set("sMessage", context_.texts.*error.message);
        }
    }
    session_.messageOpens(code == ErrorCode::DipSwitch ? missed : Phase::None, [this, panel] {
        // What the panel says was so when it came.
        panel->at("lblError").setNote(context_.texts.sModeReached);
        panel->at("lblError").setRole(Role::Warning);
    });
    show(row, *panel);
}

} // namespace quillon
