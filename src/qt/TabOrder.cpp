#include "qt/TabOrder.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

#include "base/Text.h"
#include "qt/AccessibleWords.h"

namespace quillon {

namespace {

/// What the two keys of a step have in common: "cmbConfTube" of "cmbConfTubeUp", "SID" of "cmdDownSID".
std::string_view stepOf(const Control& key) {
    constexpr std::string_view kPrefix = "cmd";
    constexpr std::array<std::string_view, 2> kWays{"up", "down"};
    const std::string_view name = key.name();
    for (const std::string_view way : kWays) {
        const std::size_t front = kPrefix.size() + way.size();
        if (name.size() > front && equalsNoCase(name.substr(kPrefix.size(), way.size()), way)) {
            return name.substr(front);
        }
        if (name.size() > way.size() && equalsNoCase(name.substr(name.size() - way.size()), way)) {
            return name.substr(0, name.size() - way.size());
        }
    }
    return {};
}

/// The keys of one stop, in the order of the keyboard; the control alone where it has no group.
std::vector<Control*> groupOf(const std::vector<Control*>& order, Control& control) {
    if (control.kind() != Kind::Button) {
        return {&control};
    }
    std::vector<Control*> group;
    if (const std::string_view step = stepOf(control); !step.empty()) {
        // A box may stand between the two.
        std::copy_if(order.begin(), order.end(), std::back_inserter(group), [&](const Control* each) {
            return each->kind() == Kind::Button && each->container() == control.container() &&
                   equalsNoCase(stepOf(*each), step);
        });
        return group;
    }
    if (control.role() != Role::Choice) {
        return {&control};
    }
    const auto joins = [&control](const Control* each) {
        return each->kind() == Kind::Button && each->role() == Role::Choice &&
               each->container() == control.container();
    };
    const auto at = std::find(order.begin(), order.end(), &control);
    const auto first = std::find_if_not(std::make_reverse_iterator(at), order.rend(), joins).base();
    return {first, std::find_if_not(at, order.end(), joins)};
}

/// The panel in front of the console; empty where there is none.
const Control* frontPanel(const ControlHost& form) {
    for (const Control* console : form.stack()) {
        for (auto each = console->stack().rbegin(); each != console->stack().rend(); ++each) {
            if ((*each)->kind() == Kind::User && (*each)->visible()) {
                return *each;
            }
        }
    }
    return nullptr;
}

void collect(const ControlHost& host, const Input& input, std::vector<Control*>& found) {
    for (const auto& control : host.controls()) {
        if (takesKeyboard(control->kind()) && input.reachable(*control)) {
            found.push_back(control.get());
        }
        if (const auto* inner = dynamic_cast<const ControlHost*>(control.get())) {
            collect(*inner, input, found);
        }
    }
}

} // namespace

bool takesKeyboard(Kind kind) {
    return kind == Kind::Button || kind == Kind::TextBox || kind == Kind::List || kind == Kind::Slider;
}

std::vector<Control*> keyboardOrder(const ControlHost& form, const Input& input) {
    std::vector<Control*> order;
    collect(form, input, order);
    if (const Control* panel = frontPanel(form)) {
        // What it spares comes behind its own keys.
        std::stable_partition(order.begin(), order.end(),
                              [panel](const Control* each) { return liesOn(each, *panel); });
    }
    return order;
}

std::vector<Control*> tabStops(const std::vector<Control*>& order, const Control* focus) {
    std::vector<Control*> stops;
    for (Control* each : order) {
        const std::vector<Control*> group = groupOf(order, *each);
        if (group.front() != each) {
            continue;
        }
        auto stop = std::find(group.begin(), group.end(), focus);
        if (stop == group.end() && each->role() == Role::Choice) {
            stop = std::find_if(group.begin(), group.end(), [](const Control* key) { return isLit(*key); });
        }
        stops.push_back(stop == group.end() ? each : *stop);
    }
    return stops;
}

Control* besideInGroup(const std::vector<Control*>& order, const Control* focus, std::ptrdiff_t step) {
    const auto present = std::find(order.begin(), order.end(), focus);
    if (step == 0 || present == order.end()) {
        return nullptr;
    }
    const std::vector<Control*> group = groupOf(order, **present);
    const std::ptrdiff_t next = std::find(group.begin(), group.end(), focus) - group.begin() + step;
    const bool any = next >= 0 && next < static_cast<std::ptrdiff_t>(group.size());
    return any ? group[static_cast<std::size_t>(next)] : nullptr;
}

} // namespace quillon
