#pragma once

#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "Reader.h"
#include "Rig.h"
#include "base/Text.h"

namespace quillon {

/// One scenario file, carried out line by line against an application of its own.
class Script {
public:
    /// A recording ends at the first gap in it, unless the run is to go on beyond.
    Script(std::string_view content, std::ostream& out, bool beyondGaps = false);

    /// True when every expectation held. Throws BadScript at a line that can't be carried out.
    [[nodiscard]] bool run();
    /// What it is carried out on.
    [[nodiscard]] Rig& rig() { return rig_; }
    /// Told of each line before it is carried out, remarks too.
    std::function<void(std::string_view line)> onLine;
    /// The number of the line in work, from 1.
    [[nodiscard]] int line() const { return line_; }

private:
    /// When a command may stand in a file.
    enum class Stage {
        Before, ///< only before the start
        Early,  ///< before the start, and later too
        Later,  ///< starts the application if nothing has
        Last,   ///< the same, and still allowed when the window has unloaded
    };
    struct Command {
        std::string_view name;
        Stage stage;
        void (Script::*run)(Reader& reader);
    };
    static const std::vector<Command>& commands();

    void runLine(std::string_view text);
    void admit(Stage stage, std::string_view name);
    [[nodiscard]] bool nextLine(std::string_view& text);
    void standBox();
    void check(bool held);
    [[nodiscard]] std::size_t countOf(Reader& reader) const;

    [[nodiscard]] Control& control(std::string_view name);
    void requireKind(const Control& target, Kind kind, std::string_view kindName);
    void tellRefused(bool reached, std::string_view word, const std::string& name);
    void printValue(std::string_view owner, std::string_view name, const Value& value);

    void file(Reader& reader);
    void args(Reader& reader);
    void screen(Reader& reader);
    void port(Reader& reader);
    void power(Reader& reader);
    void start(Reader& reader);
    void box(Reader& reader);
    void wait(Reader& reader);
    void gap(Reader& reader);
    void rx(Reader& reader);
    void msg(Reader& reader);
    void ack(Reader& reader);
    void reply(Reader& reader);
    void simulate(Reader& reader);
    void sim(Reader& reader);
    void lesson(Reader& reader);
    void hint(Reader& reader);
    void press(Reader& reader);
    void release(Reader& reader);
    void click(Reader& reader);
    void hold(Reader& reader);
    void type(Reader& reader);
    void select(Reader& reader);
    void slide(Reader& reader);
    void size(Reader& reader);
    void close(Reader& reader);
    void answer(Reader& reader);
    void call(Reader& reader);
    void set(Reader& reader);
    void get(Reader& reader);
    void show(Reader& reader);
    void list(Reader& reader);
    void store(Reader& reader);
    void cat(Reader& reader);
    void mark(Reader& reader);
    void expect(Reader& reader);
    void reject(Reader& reader);
    void count(Reader& reader);
    void quiet(Reader& reader);

    std::string_view rest_; // of the file, behind the line in work
    int line_ = 0;
    std::string_view command_; // the line in work
    bool held_ = true;
    bool beyondGaps_;
    bool boxStands_ = false;
    std::set<std::string, NoCaseLess> pressed_; // names of what `press` pressed and no `release` let go
    Rig rig_;
};

} // namespace quillon
