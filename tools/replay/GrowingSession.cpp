#include "GrowingSession.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "shell/RecordingReader.h"

namespace quillon {

namespace {

std::string contentOf(std::ifstream& file) {
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace

GrowingSession::GrowingSession(std::filesystem::path folder, const RecordedSession& session)
    : folder_(std::move(folder)), session_(session.number), part_(session.parts.front().number) {
    for (const RecordingPart& part : session.parts) {
        known_.push_back(part.number);
    }
}

std::string GrowingSession::more() {
    std::string lines;
    for (;;) {
        const bool begun = file_.is_open();
        if (!begun && !beginPart()) {
            return lines;
        }
        // Looked for before the rest is read: nothing is added to a part behind which there is another.
        const auto following = next();
        // A part that is begun may have been packed before it was read.
        const std::string read = contentOf(file_);
        file_.clear(); // its end is only the end for now
        add(begun ? read : recordingTextOf(read).text, lines);
        if (!following) {
            return lines;
        }
        file_.close();
        const bool gap = *following != part_ + 1;
        part_ = *following;
        if (gap && beginPart()) {
            const auto begin = partBegin(recordingTextOf(contentOf(file_)).text);
            const Milliseconds ms = std::max<Milliseconds>(begin.value_or(time_) - time_, 0);
            add("gap " + std::to_string(ms) + " 0\n", lines);
            file_.close();
        }
    }
}

std::optional<std::int64_t> GrowingSession::next() const {
    const auto known = std::ranges::upper_bound(known_, part_);
    if (known != known_.end()) {
        return *known;
    }
    std::error_code error;
    const bool there = std::filesystem::exists(folder_ / partName(session_, part_ + 1), error) ||
                       std::filesystem::exists(folder_ / partName(session_, part_ + 1, true), error);
    return there ? std::optional(part_ + 1) : std::nullopt;
}

bool GrowingSession::beginPart() {
    for (const bool packed : {false, true}) {
        file_.clear();
        file_.open(folder_ / partName(session_, part_, packed), std::ios::binary);
        if (file_.is_open()) {
            return true;
        }
    }
    return false;
}

void GrowingSession::add(std::string_view bytes, std::string& lines) {
    partial_ += bytes;
    const std::size_t whole = partial_.rfind('\n') + 1;
    forEachRecordedLine(std::string_view(partial_).substr(0, whole),
                        [this](std::string_view line) { time_ += recordedTime(line); });
    lines.append(partial_, 0, whole);
    partial_.erase(0, whole);
}

} // namespace quillon
