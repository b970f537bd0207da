#include "runtime/MemoryPlatform.h"

#include <algorithm>
#include <utility>

#include "base/Text.h"

namespace quillon {

bool MemorySerialPort::open(int port, std::string_view settings) {
    close();
    if (failing_.contains(port)) {
        missed_ = {port, std::string(settings)};
        return false;
    }
    openPort_ = port;
    if (onOpened) {
        onOpened(port, settings);
    }
    return true;
}

void MemorySerialPort::close() {
    missed_.reset();
    if (const auto closed = std::exchange(openPort_, std::nullopt); closed && onClosed) {
        onClosed(*closed);
    }
}

void MemorySerialPort::write(std::string_view bytes) {
    if (!isOpen()) {
        return;
    }
    if (gone_) {
        tellOutcome(bytes, false);
        return;
    }
    written_ += bytes;
    if (onWritten) {
        onWritten(bytes);
    }
    tellOutcome(bytes, true);
}

void MemorySerialPort::receive(std::string_view bytes) {
    if (isOpen() && receiver_ && !bytes.empty()) {
        receiver_(bytes);
    }
}

void MemorySerialPort::setFailing(int port, bool failing) {
    if (failing) {
        failing_.insert(port);
    } else {
        failing_.erase(port);
    }
}

void MemorySerialPort::arrive(int port) {
    setFailing(port, false);
    if (const auto missed = missed_; missed && missed->port == port && open(port, missed->settings)) {
        tellArrival();
    }
}

void MemorySerialPort::setGone(bool gone) {
    if (std::exchange(gone_, gone) != gone && isOpen()) {
        tellNotice(gone ? "the device is gone" : "the device is back");
    }
}

std::string MemorySerialPort::takeWritten() {
    return std::exchange(written_, {});
}

std::optional<std::string> MemoryUserStore::read(std::string_view application, std::string_view section,
                                                 std::string_view key) const {
    const auto entry = entries_.find({std::string(application), std::string(section), std::string(key)});
    return entry == entries_.end() ? std::nullopt : std::optional(entry->second);
}

void MemoryUserStore::write(std::string_view application, std::string_view section, std::string_view key,
                            std::string_view value) {
    if (!readOnly_) {
        entries_[{std::string(application), std::string(section), std::string(key)}] = value;
    }
}

void MemoryUserStore::removeSection(std::string_view application, std::string_view section) {
    if (!readOnly_) {
        std::erase_if(entries_, [&](const auto& entry) {
            return entry.first.application == application && entry.first.section == section;
        });
    }
}

namespace {

/// Writes to the file's content itself, so a reader sees at once what was written.
class MemorySink final : public TextSink {
public:
    MemorySink(std::shared_ptr<std::string> file, std::shared_ptr<const bool> readOnly)
        : file_(std::move(file)), readOnly_(std::move(readOnly)) {}

    bool write(std::string_view text) override {
        if (*readOnly_) {
            return false;
        }
        *file_ += text;
        return true;
    }

private:
    std::shared_ptr<std::string> file_;
    std::shared_ptr<const bool> readOnly_;
};

} // namespace

std::optional<std::string> MemoryFolder::read(std::string_view name, std::size_t limit) const {
    const std::size_t begin = name.find_last_of("\\/") + 1;
    const std::string_view directory = name.substr(0, begin);
    const bool other = std::any_of(files_.begin(), files_.end(), [directory](const auto& file) {
        return !directory.empty() && equalsNoCase(file.first.substr(0, directory.size()), directory);
    });
    const std::string* file = find(other ? name : name.substr(begin));
    return file == nullptr || file->size() > limit ? std::nullopt : std::optional(*file);
}

std::unique_ptr<TextSink> MemoryFolder::create(std::string_view name) {
    if (*readOnly_) {
        return nullptr;
    }
    put(name, {});
    return std::make_unique<MemorySink>(files_.find(name)->second, readOnly_);
}

void MemoryFolder::rename(std::string_view name, std::string_view newName) {
    if (const auto file = files_.find(name); file != files_.end() && !*readOnly_) {
        files_.insert_or_assign(std::string(newName), file->second);
        files_.erase(files_.find(name));
    }
}

void MemoryFolder::put(std::string_view name, std::string_view content) {
    files_.insert_or_assign(std::string(name), std::make_shared<std::string>(content));
}

const std::string* MemoryFolder::find(std::string_view name) const {
    const auto file = files_.find(name);
    return file == files_.end() ? nullptr : file->second.get();
}

void MemoryDesktop::message(BoxKind kind, std::string_view title, std::string_view text) {
    show(kind == BoxKind::Critical ? Box::Critical : Box::Info, title, text);
}

bool MemoryDesktop::ask(std::string_view title, std::string_view text) {
    return show(Box::Question, title, text);
}

bool MemoryDesktop::show(Box box, std::string_view title, std::string_view text) {
    bool yes = false;
    if (!answers_.empty()) {
        yes = answers_.front() == Answer::Yes && box == Box::Question;
        answers_.pop_front();
    }
    const Shown shown{box, std::string(title), std::string(text), yes};
    boxes_.push_back(shown);
    if (onBox) {
        onBox(shown);
    }
    return yes;
}

void MemoryDesktop::setScreen(int width, int height) {
    width_ = width;
    height_ = height;
}

Refusal MemoryPowerControl::exitWindows(bool restart, bool force) {
    exits_.push_back({restart, force});
    if (onExit) {
        onExit(exits_.back());
    }
    return refusal_;
}

void VirtualTime::advance(Milliseconds ms, const std::function<bool()>& stop) {
    const Milliseconds end = now() + ms;
    while (!(stop && stop())) {
        const auto due = schedule_.nextDue();
        if (!due || *due > end) {
            clock_.set(end);
            return;
        }
        clock_.set(std::max(now(), *due));
        schedule_.runOne();
    }
}

} // namespace quillon
