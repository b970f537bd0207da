#include "link/CommunicationLog.h"

#include <string>

namespace quillon {

namespace {

constexpr std::size_t kViewLimit = 2048;       // characters that survive the next line
constexpr std::size_t kFileLimit = 10'000'000; // bytes: a week of the poll, an hour of the busiest line
constexpr std::string_view kLineEnd = "\r\n";

} // namespace

CommunicationLog::CommunicationLog(PanelHost& panel, Folder& folder, Desktop& desktop)
    : fraDebug_(panel["fraDebug"]), fraStatus_(panel["fraStatus"]), txtDebugComm_(panel["txtDebugComm"]),
      folder_(folder), desktop_(desktop) {}

void CommunicationLog::setDebugActive(bool active) {
    DebugActive_ = active;
    fraDebug_.setVisible(active);
    fraStatus_.setVisible(!active);
}

void CommunicationLog::setLogActive(bool active) {
    LogActive_ = active;
    file_ = active ? folder_.create("log.txt") : nullptr;
    size_ = 0;
    if (active) {
        desktop_.message(BoxKind::Info, "WARNING",
                         "Log file active. Remember to remove -logFile from command line");
    }
}

void CommunicationLog::toggleDebug() {
    if (DebugActive_) {
        setDebugActive(false);
        clearDebug();
    } else {
        setDebugActive(true);
    }
}

void CommunicationLog::clearDebug() {
    txtDebugComm_.setText("");
}

void CommunicationLog::sent(std::string_view message) {
    record("(Tx)", message);
}

void CommunicationLog::notSent(std::string_view message) {
    record("(Nx)", message);
}

void CommunicationLog::noted(std::string_view text) {
    record("(--)", text);
}

void CommunicationLog::ended(std::string_view what) {
    if (DebugActive_) {
        record("(--)", what);
    }
}

void CommunicationLog::received(std::string_view frame) {
    if (!frame.empty()) {
        // The last character is the CR of the last message; those between messages stay.
        record("(Rx)", frame.substr(0, frame.size() - 1));
    }
}

void CommunicationLog::record(std::string_view mark, std::string_view text) {
    if (!DebugActive_ && !LogActive_) {
        return;
    }
    std::string line(mark);
    line.append(text).append(kLineEnd);
    if (DebugActive_) {
        txtDebugComm_.setText(line + txtDebugComm_.text().substr(0, kViewLimit));
    }
    if (LogActive_) {
        write(line.append(txtDebugComm_.text()).append(kLineEnd));
    }
}

void CommunicationLog::write(std::string_view record) {
    if (size_ + record.size() > kFileLimit) {
        file_.reset();
        folder_.rename("log.txt", "log-older.txt");
        file_ = folder_.create("log.txt");
        size_ = 0;
    }
    size_ += record.size();
    if (file_) {
        file_->write(record);
    }
}

} // namespace quillon
