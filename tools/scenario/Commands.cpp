#include <algorithm>
#include <limits>

#include "Script.h"
#include "base/CodePage.h"
#include "base/Fault.h"
#include "base/Numbers.h"
#include "base/ScenarioText.h"
#include "base/Text.h"
#include "ui/Input.h"

namespace quillon {

namespace {

constexpr std::int64_t kLongestWait = std::int64_t{10} * 365 * 24 * 3600 * 1000;
constexpr std::int64_t kLargestPort = 255;
constexpr std::int64_t kLargestScreen = 32767;
constexpr std::int64_t kLargestTwips = std::numeric_limits<std::int32_t>::max();

/// An operation that ends with a fault has done its work up to there, as a handler has. Only arguments that
/// it does not take are the file's mistake, and a name that nothing has is the program's.
template <typename Work> void atEdge(Work&& work) {
    try {
        work();
    } catch (const Fault& fault) {
        if (fault.number() == Fault::kArgumentsRefused || fault.number() == Fault::kNoSuchName) {
            throw;
        }
    }
}

} // namespace

void Script::file(Reader& reader) {
    const std::string_view name = reader.rest();
    if (name.empty()) {
        throw BadScript("file wants a name");
    }
    const std::string key = bytesOf(name);
    std::string content;
    const int first = line_;
    for (std::string_view text; nextLine(text);) {
        if (trimBlanks(text) == "end") {
            rig_.machine.folder.put(key, content);
            return;
        }
        content += std::string(text) + "\r\n";
    }
    line_ = first;
    throw BadScript("no \"end\" ends the file " + inQuotes(name));
}

void Script::args(Reader& reader) {
    rig_.commandLine = reader.text();
}

void Script::screen(Reader& reader) {
    const auto width = static_cast<int>(reader.whole(1, kLargestScreen));
    rig_.machine.desktop.setScreen(width, static_cast<int>(reader.whole(1, kLargestScreen)));
}

void Script::port(Reader& reader) {
    const auto number = static_cast<int>(reader.whole(1, kLargestPort));
    const std::string_view state = reader.word();
    if (equalsNoCase(state, "comes")) {
        rig_.machine.port.arrive(number);
    } else if (equalsNoCase(state, "fail") || equalsNoCase(state, "ok")) {
        rig_.machine.port.setFailing(number, equalsNoCase(state, "fail"));
    } else {
        throw BadScript("port wants \"fail\", \"ok\" or \"comes\"");
    }
}

void Script::power(Reader& reader) {
    const std::string_view state = reader.word();
    if (equalsNoCase(state, "refuse")) {
        rig_.machine.power.setRefusal(reader.text());
    } else if (equalsNoCase(state, "ok")) {
        rig_.machine.power.setRefusal(std::nullopt);
    } else {
        throw BadScript("power wants \"refuse\" and a text, or \"ok\"");
    }
}

void Script::start(Reader&) {
    rig_.start();
}

void Script::wait(Reader& reader) {
    rig_.wait(reader.whole(0, kLongestWait));
}

void Script::gap(Reader& reader) {
    const Milliseconds ms = reader.whole(0, kLongestWait);
    if (reader.atEnd()) {
        rig_.machine.time.sleep(ms);
        return;
    }
    // A recording could not be written for that long: what follows is another console's.
    const std::int64_t lines = reader.whole(0, std::numeric_limits<std::int64_t>::max());
    rig_.report.print("gap " + std::to_string(ms) + " " + std::to_string(lines));
    if (beyondGaps_) {
        rig_.wait(ms);
    } else {
        rest_ = {};
    }
}

void Script::rx(Reader& reader) {
    rig_.machine.port.receive(reader.text());
}

void Script::msg(Reader& reader) {
    rig_.machine.port.receive(reader.text() + "\r\n");
}

void Script::ack(Reader& reader) {
    const std::string_view delay = reader.word();
    rig_.farEnd.setAcknowledgement(
        equalsNoCase(delay, "off") ? std::nullopt : std::optional(wholeNumber(delay, 0, kLongestWait)));
}

void Script::reply(Reader& reader) {
    // A text that holds one of the words between the texts stands in quotes.
    constexpr std::string_view kWith = " with ";
    constexpr std::string_view kAfter = " after ";
    const std::string_view line = reader.rest();
    const auto with = line.find(kWith, quotedLength(line));
    const auto after = line.rfind(kAfter);
    if (with == std::string_view::npos && line.ends_with(" off")) {
        rig_.farEnd.removeReply(bytesOf(trimBlanks(line.substr(0, line.size() - 4))));
        return;
    }
    if (with == std::string_view::npos || after == std::string_view::npos ||
        after < with + kWith.size() - 1) {
        throw BadScript("reply wants TEXT with TEXT after MS, or TEXT off");
    }
    const auto message = with + kWith.size();
    const std::string_view answer =
        after < message ? std::string_view{} : line.substr(message, after - message);
    rig_.farEnd.setReply(bytesOf(trimBlanks(line.substr(0, with))), bytesOf(trimBlanks(answer)),
                         wholeNumber(trimBlanks(line.substr(after + kAfter.size())), 0, kLongestWait));
}

void Script::simulate(Reader& reader) {
    simulator::Options options;
    constexpr std::string_view kMachine = "machine=";
    while (!reader.atEnd()) {
        const std::string_view word = reader.word();
        const std::string problem = word.starts_with(kMachine)
                                        ? applyProfileFile(options, std::string(word.substr(kMachine.size())))
                                        : applyOption(options, word);
        if (!problem.empty()) {
            throw BadScript(problem);
        }
    }
    rig_.farEnd.simulate(options);
}

void Script::sim(Reader& reader) {
    if (!rig_.farEnd.simulated()) {
        throw BadScript("no generator is simulated");
    }
    if (const std::string answer = rig_.farEnd.command(reader.text()); answer.starts_with('?')) {
        throw BadScript("the simulated generator answers " + inQuotes(answer));
    }
}

void Script::lesson(Reader& reader) {
    const std::string name = reader.text();
    const simulator::Lesson read = simulator::readLessonFile(name);
    if (!read.problems.empty()) {
        throw BadScript(name + ":" + read.problems.front());
    }
    rig_.farEnd.teach(read, [this](const std::string& line) { rig_.report.print(line); });
}

void Script::hint(Reader&) {
    if (!rig_.farEnd.simulated()) {
        throw BadScript("no generator is simulated");
    }
    rig_.farEnd.hint();
}

Control& Script::control(std::string_view name) {
    Control* found = rig_.find(name);
    if (found == nullptr) {
        throw BadScript("no such control: " + inQuotes(name));
    }
    return *found;
}

void Script::requireKind(const Control& target, Kind kind, std::string_view kindName) {
    // What can't be reached is refused, whatever it is.
    if (rig_.application().input().reachable(target) && target.kind() != kind) {
        throw BadScript(inQuotes(nameOf(target)) + " is no " + std::string(kindName));
    }
}

void Script::tellRefused(bool reached, std::string_view word, const std::string& name) {
    if (!reached) {
        rig_.report.print("refused " + std::string(word) + " " + name);
    }
}

void Script::press(Reader& reader) {
    Control& target = control(reader.word());
    const std::string name = nameOf(target);
    const bool reached = rig_.application().input().press(target);
    tellRefused(reached, "press", name);
    if (reached) {
        pressed_.insert(name);
    }
}

void Script::release(Reader& reader) {
    const std::string_view name = reader.word();
    const bool over = reader.atEnd();
    if (!over && !equalsNoCase(reader.word(), "outside")) {
        throw BadScript("release wants a control, and \"outside\" or nothing behind it");
    }
    Control* target = rig_.find(name);
    if (target != nullptr) {
        pressed_.erase(nameOf(*target));
        rig_.application().input().release(*target, over);
    } else if (const auto gone = pressed_.find(name); gone != pressed_.end()) {
        pressed_.erase(gone); // the press took it off the screen
    } else {
        throw BadScript("no such control: " + inQuotes(name));
    }
}

void Script::click(Reader& reader) {
    Control& target = control(reader.word());
    const std::string name = nameOf(target);
    tellRefused(rig_.application().input().click(target), "click", name);
}

void Script::hold(Reader& reader) {
    Control& target = control(reader.word());
    const Milliseconds ms = reader.whole(0, kLongestWait);
    const std::string name = nameOf(target);
    const bool reached = rig_.application().input().press(target);
    tellRefused(reached, "hold", name);
    if (!reached) {
        return;
    }
    rig_.wait(ms);
    // It may have gone meanwhile, or another may stand under its name.
    if (!rig_.ended() && rig_.find(name) == &target) {
        rig_.application().input().release(target);
    }
}

void Script::type(Reader& reader) {
    Control& target = control(reader.word());
    requireKind(target, Kind::TextBox, "text box");
    tellRefused(rig_.application().input().type(target, reader.text()), "type", nameOf(target));
}

void Script::select(Reader& reader) {
    Control& target = control(reader.word());
    requireKind(target, Kind::List, "list");
    const std::string entry = reader.text();
    if (rig_.application().input().reachable(target) &&
        std::find(target.items().begin(), target.items().end(), entry) == target.items().end()) {
        throw BadScript("the list has no entry " + inQuotes(entry));
    }
    tellRefused(rig_.application().input().select(target, entry), "select", nameOf(target));
}

void Script::slide(Reader& reader) {
    Control& target = control(reader.word());
    requireKind(target, Kind::Slider, "slider");
    const auto value = static_cast<std::int32_t>(reader.whole(0, kLargestTwips));
    tellRefused(rig_.application().input().slide(target, value), "slide", nameOf(target));
}

void Script::size(Reader& reader) {
    const auto width = static_cast<Twips>(reader.whole(0, kLargestTwips));
    rig_.resize(width, static_cast<Twips>(reader.whole(0, kLargestTwips)));
}

void Script::close(Reader&) {
    rig_.requestClose();
}

void Script::answer(Reader& reader) {
    const std::string_view given = reader.word();
    using Answer = MemoryDesktop::Answer;
    if (equalsNoCase(given, "yes")) {
        rig_.machine.desktop.answer(Answer::Yes);
    } else if (equalsNoCase(given, "no")) {
        rig_.machine.desktop.answer(Answer::No);
    } else if (equalsNoCase(given, "ok")) {
        rig_.machine.desktop.answer(Answer::Ok);
    } else {
        throw BadScript("answer wants \"yes\", \"no\" or \"ok\"");
    }
}

void Script::call(Reader& reader) {
    const auto [operations, owner, name] = rig_.member(reader.word());
    if (!operations.hasOperation(name)) {
        throw BadScript("no such operation: " + inQuotes(name));
    }
    std::vector<Value> arguments;
    while (!reader.atEnd()) {
        arguments.push_back(reader.value());
    }
    if (equalsNoCase(name, "LeaveNow")) {
        rig_.leaveRequested();
    }
    atEdge([&, &table = operations, &from = owner, &called = name] {
        if (const auto result = table.call(called, arguments)) {
            printValue(from, called, *result);
        }
    });
}

void Script::set(Reader& reader) {
    const auto [operations, owner, name] = rig_.member(reader.word());
    if (!operations.canSet(name)) {
        throw BadScript("no property to set: " + inQuotes(name));
    }
    const Value value = reader.value();
    atEdge([&, &table = operations, &written = name] { table.set(written, value); });
}

void Script::get(Reader& reader) {
    const auto [operations, owner, name] = rig_.member(reader.word());
    if (!operations.canGet(name)) {
        throw BadScript("no property to get: " + inQuotes(name));
    }
    printValue(owner, operations.spelling(name), operations.get(name));
}

void Script::printValue(std::string_view owner, std::string_view name, const Value& value) {
    rig_.report.print("value " + std::string(owner) + "." + std::string(name) + " = " + valueText(value));
}

void Script::show(Reader& reader) {
    do {
        const std::string_view name = reader.word();
        const Control* found = rig_.find(name);
        rig_.report.print("state " + (found == nullptr ? std::string(name) + " missing" : stateText(*found)));
    } while (!reader.atEnd());
}

void Script::list(Reader& reader) {
    const std::string_view name = reader.word();
    const ControlHost* owner = rig_.findHost(name);
    if (owner == nullptr) {
        throw BadScript("no such owner of controls: " + inQuotes(name));
    }
    for (const auto& owned : owner->controls()) {
        rig_.report.print("state " + stateText(*owned));
    }
}

void Script::store(Reader&) {
    std::vector<std::string> lines;
    for (const auto& [address, value] : rig_.machine.store.entries()) {
        const std::string application = address.application.empty() ? "" : address.application + "/";
        lines.push_back("store " + application + address.section + "/" + address.key + " = " +
                        scenarioText(value));
    }
    std::sort(lines.begin(), lines.end());
    for (const std::string& line : lines) {
        rig_.report.print(line);
    }
}

void Script::cat(Reader& reader) {
    const std::string_view name = reader.rest();
    const std::string* content = rig_.machine.folder.find(bytesOf(name));
    if (content == nullptr) {
        throw BadScript("no such file: " + inQuotes(name));
    }
    auto lines = split(*content, "\n");
    if (lines.back().empty()) {
        lines.pop_back();
    }
    for (std::string_view line : lines) {
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        rig_.report.print("line " + scenarioText(line));
    }
}

} // namespace quillon
