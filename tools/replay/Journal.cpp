#include "Journal.h"

#include "shell/RecordingReader.h"
#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace quillon {

namespace {

constexpr std::size_t kViewLimit = 2048; // characters of the debug view that survive the next line

struct Mark {
    std::string_view text;
    Entry::Kind kind;
};

constexpr std::array kMarks{Mark{"(Tx)", Entry::Kind::Sent}, Mark{"(Rx)", Entry::Kind::Received},
                            Mark{"(Nx)", Entry::Kind::Lost}, Mark{"(--)", Entry::Kind::Note}};

/// The mark that a record begins with, if it is one.
const Mark* markOf(std::string_view text) {
    const auto* const found =
        std::ranges::find_if(kMarks, [text](const Mark& mark) { return text.starts_with(mark.text); });
    return found == kMarks.end() ? nullptr : found;
}

std::string lineProblem(std::size_t line, std::string_view what) {
    return "line " + std::to_string(line) + ": " + std::string(what);
}

/// Takes records off a log. Behind each stands the whole text of the debug view, which is made of records
/// itself and may be cut anywhere, so it is known by what it must be and not by how it looks.
class LogReader {
public:
    explicit LogReader(std::string_view content)
        : rest_(content), end_(content.find("\r\n") == std::string_view::npos ? "\n" : "\r\n") {}

    Journal read() {
        while (!rest_.empty()) {
            const Mark* mark = markOf(rest_);
            if (mark == nullptr) {
                skipToMark();
                continue;
            }
            const std::string line(rest_.substr(0, rest_.find(end_)));
            journal_.entries.push_back({mark->kind, line.substr(mark->text.size())});
            take(line.size() + end_.size());
            takeView(line);
        }
        return std::move(journal_);
    }

private:
    void takeView(const std::string& line) {
        const std::string top = line + std::string(end_);
        // With the view on, the new line stands on the old text, or on nothing when it was wiped; with the
        // view off, its text is what it was, or empty.
        for (std::string view : {top + view_.substr(0, kViewLimit), view_, top, std::string()}) {
            if (rest_.starts_with(view + std::string(end_))) {
                take(view.size() + end_.size());
                view_ = std::move(view);
                return;
            }
        }
        if (!rest_.empty()) {
            journal_.problems.push_back(lineProblem(line_, "this does not end the record before it"));
        }
        view_.clear();
    }

    void skipToMark() {
        journal_.problems.push_back(lineProblem(line_, "no record begins here"));
        std::size_t next = rest_.find(end_);
        while (next != std::string_view::npos && markOf(rest_.substr(next + end_.size())) == nullptr) {
            next = rest_.find(end_, next + end_.size());
        }
        take(next == std::string_view::npos ? rest_.size() : next + end_.size());
    }

    void take(std::size_t length) {
        const std::string_view taken = rest_.substr(0, length);
        line_ += static_cast<std::size_t>(std::ranges::count(taken, '\n'));
        rest_.remove_prefix(taken.size());
    }

    std::string_view rest_;
    std::string_view end_;
    std::string view_;
    std::size_t line_ = 1;
    Journal journal_;
};

/// The bytes that a quoted text of a recording means.
std::string unquoted(std::string_view text) {
    const auto first = text.find('"');
    const auto last = text.rfind('"');
    text = first < last ? text.substr(first + 1, last - first - 1) : std::string_view{};
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\' || at + 1 == text.size()) {
            bytes += text[at];
            continue;
        }
        const char kind = text[++at];
        if (kind == 'x') {
            unsigned value = 0;
            const std::string_view digits = text.substr(at + 1, 2);
            std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
            bytes += static_cast<char>(value);
            at += digits.size();
        } else {
            bytes += kind == 'r' ? '\r' : kind == 'n' ? '\n' : kind == 't' ? '\t' : kind;
        }
    }
    return bytes;
}

} // namespace

void RecordingReader::line(std::string_view line) {
    ++line_;
    if (inFile_ || line.starts_with("file ")) {
        inFile_ = line != "end";
    } else {
        command(line);
    }
}

void RecordingReader::command(std::string_view line) {
    constexpr std::array<std::string_view, 8> kOperator{"press ", "release ", "type ", "select ",
                                                        "slide ", "size ",    "close", "answer "};
    const auto beginsLine = [line](std::string_view word) { return line.starts_with(word); };
    if (line.starts_with("wait ")) {
        time_ += number(line.substr(5));
    } else if (line.starts_with("gap ")) {
        journal_.entries.push_back({Entry::Kind::Note, std::string(line), time_});
        time_ += number(line.substr(4));
    } else if (line.starts_with("rx ")) {
        receive(unquoted(line));
    } else if (line.starts_with("# ")) {
        remark(line.substr(2));
    } else if (std::ranges::any_of(kOperator, beginsLine)) {
        journal_.entries.push_back({Entry::Kind::Operator, std::string(line), time_});
    }
}

/// "TIME tx TEXT", "TIME lost TEXT", and what the console did and why; everything else is for the reader of
/// the file.
void RecordingReader::remark(std::string_view text) {
    const auto blank = text.find(' ');
    if (blank == std::string_view::npos) {
        return;
    }
    const std::string_view rest = text.substr(blank + 1);
    if (rest.starts_with("tx ")) {
        journal_.entries.push_back({Entry::Kind::Sent, unquoted(rest), number(text.substr(0, blank))});
    } else if (rest.starts_with("lost ")) {
        lose(unquoted(rest));
    } else if (rest.starts_with("run ") || rest.starts_with("fault ")) {
        journal_.entries.push_back({Entry::Kind::Note, std::string(rest), number(text.substr(0, blank))});
    }
}

/// A frame stands where the console wrote it, this where the device had not taken it.
void RecordingReader::lose(const std::string& frame) {
    const auto found =
        std::find_if(journal_.entries.rbegin(), journal_.entries.rend(), [&frame](const Entry& entry) {
            return entry.kind == Entry::Kind::Sent && entry.text == frame;
        });
    if (found != journal_.entries.rend()) {
        found->kind = Entry::Kind::Lost;
    } else {
        journal_.entries.push_back({Entry::Kind::Lost, frame, time_});
    }
}

/// Bytes come as the line brought them; frames end at LF or ETX.
void RecordingReader::receive(std::string_view bytes) {
    for (const char c : bytes) {
        if (c != '\n' && c != '\x03') {
            frame_ += c;
            continue;
        }
        if (frame_.ends_with('\r')) {
            frame_.pop_back();
        }
        if (!frame_.empty()) {
            journal_.entries.push_back({Entry::Kind::Received, std::exchange(frame_, {}), time_});
        }
    }
}

Milliseconds RecordingReader::number(std::string_view text) {
    Milliseconds value = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), value).ec != std::errc{}) {
        journal_.problems.push_back(lineProblem(line_, "a time is wanted"));
    }
    return value;
}

Journal readJournal(std::string_view content) {
    if (!isRecording(content)) {
        return LogReader(content).read();
    }
    RecordingReader reader;
    while (!content.empty()) {
        const auto end = content.find('\n');
        reader.line(content.substr(0, end));
        content.remove_prefix(end == std::string_view::npos ? content.size() : end + 1);
    }
    return std::move(reader.journal());
}

} // namespace quillon
