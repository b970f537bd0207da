#pragma once

#include <memory>
#include <string_view>

#include "panel/layout/Names.h"
#include "runtime/Platform.h"

namespace quillon {

/// Shows the traffic of the line in the debug view and writes it to "log.txt". A full file is renamed
/// "log-older.txt" and a new one begun. Neither has an effect on the protocol; a file that cannot be written
/// is the folder's to report.
class CommunicationLog {
public:
    /// `panel` holds the debug view and the status strip that it stands in for.
    CommunicationLog(PanelHost& panel, Folder& folder, Desktop& desktop);

    [[nodiscard]] bool DebugActive() const { return DebugActive_; }
    /// Shows the debug view in place of the status strip, or the reverse.
    void setDebugActive(bool active);
    [[nodiscard]] bool LogActive() const { return LogActive_; }
    /// Opens "log.txt" anew and reminds the operator that it is on; False closes it.
    void setLogActive(bool active);
    /// The key: turning the view off empties it.
    void toggleDebug();
    void clearDebug();

    /// A frame was handed to the device, the empty one included.
    void sent(std::string_view message);
    /// A frame was written that the device did not take.
    void notSent(std::string_view message);
    /// A line about the port itself.
    void noted(std::string_view text);
    /// A fault has ended a handler. Shown while the debug view is on; the file holds only what was on the
    /// line.
    void ended(std::string_view what);
    /// A frame came, with the CR that ends its last message. Nothing happens for an empty one.
    void received(std::string_view frame);

private:
    void write(std::string_view record);
    void record(std::string_view mark, std::string_view text);

    Control& fraDebug_;
    Control& fraStatus_;
    Control& txtDebugComm_;
    Folder& folder_;
    Desktop& desktop_;
    std::unique_ptr<TextSink> file_;
    std::size_t size_ = 0; // of what went into the file
    bool DebugActive_ = false;
    bool LogActive_ = false;
};

} // namespace quillon
