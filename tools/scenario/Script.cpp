#include "Script.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "base/Fault.h"
#include "base/Text.h"

namespace quillon {

const std::vector<Script::Command>& Script::commands() {
    // clang-format off
    static const std::vector<Command> kCommands{
        {"file",     Stage::Before, &Script::file},
        {"args",     Stage::Before, &Script::args},
        {"screen",   Stage::Before, &Script::screen},
        {"port",     Stage::Early,  &Script::port},
        {"power",    Stage::Early,  &Script::power},
        {"start",    Stage::Before, &Script::start},
        {"box",      Stage::Later,  &Script::box},
        {"wait",     Stage::Later,  &Script::wait},
        {"gap",      Stage::Later,  &Script::gap},
        {"rx",       Stage::Later,  &Script::rx},
        {"msg",      Stage::Later,  &Script::msg},
        {"ack",      Stage::Later,  &Script::ack},
        {"reply",    Stage::Later,  &Script::reply},
        {"simulate", Stage::Later,  &Script::simulate},
        {"sim",      Stage::Later,  &Script::sim},
        {"lesson",   Stage::Later,  &Script::lesson},
        {"hint",     Stage::Later,  &Script::hint},
        {"press",    Stage::Later,  &Script::press},
        {"release",  Stage::Later,  &Script::release},
        {"click",    Stage::Later,  &Script::click},
        {"hold",     Stage::Later,  &Script::hold},
        {"type",     Stage::Later,  &Script::type},
        {"select",   Stage::Later,  &Script::select},
        {"slide",    Stage::Later,  &Script::slide},
        {"size",     Stage::Later,  &Script::size},
        {"close",    Stage::Later,  &Script::close},
        {"answer",   Stage::Later,  &Script::answer},
        {"call",     Stage::Later,  &Script::call},
        {"set",      Stage::Later,  &Script::set},
        {"get",      Stage::Later,  &Script::get},
        {"show",     Stage::Last,   &Script::show},
        {"list",     Stage::Later,  &Script::list},
        {"store",    Stage::Last,   &Script::store},
        {"cat",      Stage::Last,   &Script::cat},
        {"mark",     Stage::Later,  &Script::mark},
        {"expect",   Stage::Last,   &Script::expect},
        {"reject",   Stage::Last,   &Script::reject},
        {"count",    Stage::Last,   &Script::count},
        {"quiet",    Stage::Later,  &Script::quiet},
    };
    // clang-format on
    return kCommands;
}

Script::Script(std::string_view content, std::ostream& out, bool beyondGaps)
    : rest_(withoutByteOrderMark(content)), beyondGaps_(beyondGaps), rig_(out) {
    rig_.machine.desktop.onBox = [this,
                                  tell = rig_.machine.desktop.onBox](const MemoryDesktop::Shown& shown) {
        tell(shown);
        standBox();
    };
}

bool Script::run() {
    std::string_view text;
    while (nextLine(text)) {
        text = trimBlanks(text);
        if (onLine) {
            onLine(text);
        }
        if (!text.empty() && !text.starts_with('#')) {
            runLine(text);
        }
    }
    return held_;
}

/// Where the file goes on with "box stands", the box that has just come up stands until it says "box goes".
void Script::standBox() {
    const auto before = std::pair(rest_, line_);
    std::string_view text;
    do {
        if (!nextLine(text)) {
            break;
        }
        text = trimBlanks(text);
    } while (text.empty() || text.starts_with('#'));
    if (text != "box stands") {
        std::tie(rest_, line_) = before;
        return;
    }
    for (boxStands_ = true; boxStands_ && nextLine(text);) {
        text = trimBlanks(text);
        if (!text.empty() && !text.starts_with('#')) {
            runLine(text);
        }
    }
}

void Script::box(Reader& reader) {
    if (!boxStands_ || !equalsNoCase(reader.word(), "goes")) {
        throw BadScript("box wants \"stands\" where a box has come up, and \"goes\" behind that");
    }
    boxStands_ = false;
}

bool Script::nextLine(std::string_view& text) {
    if (rest_.empty()) {
        return false;
    }
    const auto end = rest_.find('\n');
    text = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    if (text.ends_with('\r')) {
        text.remove_suffix(1);
    }
    ++line_;
    return true;
}

void Script::runLine(std::string_view text) {
    command_ = text;
    Reader reader(text);
    const std::string_view name = reader.word();
    const auto& all = commands();
    const auto command = std::find_if(all.begin(), all.end(),
                                      [name](const Command& row) { return equalsNoCase(row.name, name); });
    if (command == all.end()) {
        throw BadScript("no such command: \"" + std::string(name) + "\"");
    }
    try {
        admit(command->stage, command->name);
        rig_.catchUp();
        (this->*command->run)(reader);
    } catch (const Fault& fault) {
        throw BadScript("fault " + std::to_string(fault.number()) + " in \"" + std::string(text) + "\"");
    }
    reader.finish();
}

void Script::admit(Stage stage, std::string_view name) {
    if (rig_.ended() && stage != Stage::Last) {
        throw BadScript("the window has unloaded; \"" + std::string(name) + "\" comes too late");
    }
    if (stage == Stage::Before && rig_.started()) {
        throw BadScript(inQuotes(name) + " belongs before the start");
    }
    if ((stage == Stage::Later || stage == Stage::Last) && !rig_.started()) {
        rig_.start();
    }
}

void Script::check(bool held) {
    if (!held) {
        held_ = false;
        rig_.report.printFailure("fail " + std::to_string(line_) + ": " + std::string(command_));
    }
}

void Script::mark(Reader&) {
    rig_.report.mark();
}

std::size_t Script::countOf(Reader& reader) const {
    if (reader.atEnd()) {
        throw BadScript("a text to look for is missing");
    }
    return rig_.report.count(reader.rest());
}

void Script::expect(Reader& reader) {
    check(countOf(reader) > 0);
}

void Script::reject(Reader& reader) {
    check(countOf(reader) == 0);
}

void Script::count(Reader& reader) {
    constexpr std::int64_t kMany = 1'000'000'000;
    const auto wanted = static_cast<std::size_t>(reader.whole(0, kMany));
    check(countOf(reader) == wanted);
}

void Script::quiet(Reader& reader) {
    const std::string_view what = reader.word();
    if (!equalsNoCase(what, "event") && !equalsNoCase(what, "off")) {
        throw BadScript("quiet wants \"event\" or \"off\"");
    }
    rig_.report.setEventsQuiet(equalsNoCase(what, "event"));
}

} // namespace quillon
