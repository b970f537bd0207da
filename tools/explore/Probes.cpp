#include "Probes.h"

#include <algorithm>
#include <stdexcept>

#include "ProbeReasons.h"
#include "ProbeTables.h"
#include "Session.h"
#include "link/InboundTable.h"
#include "link/OutboundTable.h"

namespace quillon {

const Probes& Probes::all() {
    static const Probes probes;
    return probes;
}

Probes::Probes() {
    addLine();
    addRuns();
    addScreen();
    addReasons();
}

void Probes::add(std::string name) {
    if (byName_.emplace(name, names_.size()).second) {
        names_.push_back(std::move(name));
    }
}

void Probes::addLine() {
    for (const OutboundRow& row : kOutboundTable) {
        add("command " + std::string(row.mnemonic));
    }
    for (const InboundRow& row : kInboundTable) {
        add("message " + std::string(row.key));
    }
}

void Probes::addRuns() {
    for (std::size_t i = 0; i < kRuns; ++i) {
        const Run run{static_cast<std::uint8_t>(i)};
        const std::string name(rowOf(run).name);
        for (std::size_t stimulus = 0; stimulus < kStimuli; ++stimulus) {
            add(meeting(run, static_cast<Stimulus>(stimulus)));
        }
        if (run != Run::None) {
            add("begins " + name);
        }
        if (run != Run::None && run != Run::Closing) {
            add("ends " + name);
            add("gives way " + name);
        }
        if (rowOf(run).waits()) {
            add("status " + name);
        }
    }
    for (std::size_t stand = 0; stand < kStands; ++stand) {
        add("stands " + std::string(rowOf(static_cast<Stand>(stand)).name));
    }
}

void Probes::addScreen() {
    Session session(Plan{});
    for (const ControlHost* host : {static_cast<const ControlHost*>(&session.application().console()),
                                    static_cast<const ControlHost*>(&session.application().link())}) {
        for (const auto& control : host->controls()) {
            if (takesSomething(*control)) {
                add("key " + nameOf(*control));
            } else if (control->kind() == Kind::Timer) {
                add("wait " + nameOf(*control));
            }
        }
    }
    for (const PanelRow& panel : kPanels) {
        add("panel " + std::string(panel.key));
        for (const ControlRow& row : panel.rows) {
            if (row.kind == Kind::Button) {
                add("key " + std::string(panel.key) + "." + std::string(row.name));
            }
        }
    }
    for (const std::string_view error : {"protocol", "dip switch"}) {
        add("panel Error " + std::string(error));
    }
    for (const TextRow& box : kBoxes) {
        add(std::string(box.name));
    }
    for (const TextRow& why : kWhys) {
        add(std::string(why.name));
    }
    add("box restart yes");
    add("box restart no");
    for (const std::string_view status :
         {"settings", "no answer", "count", "seconds left", "exposures made"}) {
        add("status " + std::string(status));
    }
}

void Probes::addReasons() {
    reasons_.resize(names_.size());
    for (const Reason& reason : reasonsOfProbes()) {
        bool used = false;
        for (std::size_t i = 0; i < names_.size(); ++i) {
            const std::string_view name = names_[i];
            const bool all = reason.probe.ends_with('*');
            if (all ? name.starts_with(reason.probe.substr(0, reason.probe.size() - 1))
                    : name == reason.probe) {
                reasons_[i] = reason.why;
                used = true;
            }
        }
        if (!used) {
            throw std::logic_error("there is no probe " + std::string(reason.probe));
        }
    }
}

std::size_t Probes::find(std::string_view name) const {
    const auto found = byName_.find(name);
    return found == byName_.end() ? names_.size() : found->second;
}

void Marks::reach(std::string_view probe) {
    if (any()) {
        reach(Probes::all().find(probe));
    }
}

bool Marks::reached(std::string_view probe) const {
    return any() && reached(Probes::all().find(probe));
}

std::size_t Marks::count() const {
    return static_cast<std::size_t>(std::count(bytes_.begin(), bytes_.end(), 1));
}

std::string Marks::figures() const {
    const Probes& probes = Probes::all();
    std::size_t excused = 0;
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        excused += bytes_[i] == 0 && !probes.reason(i).empty() ? 1 : 0;
    }
    return "reached " + std::to_string(count()) + " of " + std::to_string(probes.size()) + ", " +
           std::to_string(excused) + " more cannot be";
}

std::string Marks::complaints() const {
    const Probes& probes = Probes::all();
    std::string text;
    for (std::size_t i = 0; i < bytes_.size(); ++i) {
        const bool excused = !probes.reason(i).empty();
        if (bytes_[i] == 0 && !excused) {
            text += "missing: " + probes.name(i) + "\n";
        } else if (bytes_[i] != 0 && excused) {
            text += "reached against its reason: " + probes.name(i) + "\n";
        }
    }
    return text;
}

} // namespace quillon
