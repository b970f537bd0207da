#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/Numbers.h"
#include "console/panels/ctrASelFocusOrParam.h"
#include "console/panels/ctrAWarning.h"
#include "console/panels/ctrQuillonError.h"
#include "console/panels/ctrSelWS.h"
#include "runtime/MemoryPlatform.h"

namespace quillon {
namespace {

/// A host with a few controls, and one panel on it that is shown.
template <typename Panel> class Shown {
public:
    Shown() {
        host.add(Kind::Button, "on");
        host.add(Kind::Button, "off").setEnabled(false);
        host.add(Kind::Frame, "frame");
        host.add(Kind::Label, "inside", std::nullopt, &host["frame"]);
        host.addTimer("timer", 100);
        auto made = std::make_unique<Panel>(time.schedule());
        panel = made.get();
        host.adopt(std::move(made));
        panel->setReport([this](ModalPanel&, std::string_view event, std::int16_t parameter) {
            reports.push_back(std::string(event) + " " + decimalText(parameter) + " " + states());
        });
        panel->UserControl_Show();
    }
    /// What is enabled on the host, a digit each.
    std::string states() const {
        std::string all;
        for (const std::string_view name : {"on", "off", "frame", "inside"}) {
            all += host[name].enabled() ? '1' : '0';
        }
        return all;
    }
    void click(std::string_view key, int times = 1) const {
        for (int i = 0; i < times; ++i) {
            (*panel)[key].on.click();
        }
    }

    VirtualTime time;
    ControlHost host{Kind::User, "console", time.schedule()};
    Panel* panel = nullptr;
    std::vector<std::string> reports;
};

TEST(ModalPanelTest, EachClosingKeySetsItsResultsGivesTheStatesBackAndReports) {
    Shown<ctrAWarning> yes;
    EXPECT_EQ(yes.states(), "0010");
    yes.click("cmbAutocalYes");
    EXPECT_EQ(yes.reports, std::vector<std::string>{"OK 0 1011"});
    EXPECT_TRUE(yes.panel->get<bool>("StartAutocal"));
    Shown<ctrAWarning> no;
    no.click("cmbAutocalNo");
    EXPECT_EQ(no.reports, std::vector<std::string>{"Cancel 0 1011"});
    EXPECT_FALSE(no.panel->get<bool>("StartAutocal"));

    struct Row {
        std::string_view key;
        std::string_view report;
        bool Cancel;
        bool SelAutocalmA;
        bool SelAutocalParameter;
    };
    for (const Row& row : {Row{"cmbOKFocus", "OK 0 1011", false, true, false},
                           Row{"cmbOKParameter", "OK 0 1011", false, false, true},
                           Row{"cmbCancel", "Cancel 0 1011", true, false, false}}) {
        Shown<ctrASelFocusOrParam> choice;
        choice.click(row.key);
        EXPECT_EQ(choice.reports, std::vector<std::string>{std::string(row.report)}) << row.key;
        EXPECT_EQ(choice.panel->get<bool>("Cancel"), row.Cancel) << row.key;
        EXPECT_EQ(choice.panel->get<bool>("SelAutocalmA"), row.SelAutocalmA) << row.key;
        EXPECT_EQ(choice.panel->get<bool>("SelAutocalParameter"), row.SelAutocalParameter) << row.key;
    }

    Shown<ctrSelWS> workstation;
    workstation.click("cmbWSUp", 2);
    workstation.click("cmdOK");
    EXPECT_EQ(workstation.reports, std::vector<std::string>{"OK 3 1011"});
    Shown<ctrQuillonError> error;
    error.click("cmbOK");
    EXPECT_EQ(error.reports, std::vector<std::string>{"OK 0 1011"});
}

} // namespace
} // namespace quillon
