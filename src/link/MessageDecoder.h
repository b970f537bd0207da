#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "base/Text.h"
#include "runtime/Handlers.h"
#include "runtime/Operations.h"

namespace quillon {

/// Finds where a message's mnemonic ends and calls the handler for it. The longest prefix that is a key wins;
/// the own table is searched before the host's.
class MessageDecoder {
public:
    /// Gets the value: what stands behind the mnemonic.
    using Handler = std::function<void(std::string_view value)>;

    /// Fills the own table with all keys. A key whose handler nobody binds matches and does nothing. What
    /// runs the handlers must outlive this.
    explicit MessageDecoder(Handlers& handlers);

    /// Gives the handler of that name its work. kNoSuchName when no row names it.
    void bind(std::string_view handler, Handler work);

    /// No handler is without its work.
    [[nodiscard]] bool complete() const;

    /// Makes every handler an operation of its name, which takes the value. This must outlive them.
    void addTo(Operations& operations) const;

    /// Registers a message of the host: `Key` calls the operation `fName` of the object. The object named
    /// last serves all of the host's messages. It must outlive this. kNoSuchName when it has no such
    /// operation.
    void AddParentMessage(const Operations& ParentObject, std::string_view fName, std::string_view Key);

    /// Decodes one frame. `heard` runs once for every piece of text, known or not, after its handler;
    /// `handled` for each message that the own table took. `taken` follows each piece's handler, with what
    /// stands behind the mnemonic; a piece that nobody knows is all mnemonic.
    struct Notices {
        std::function<void()> heard;
        std::function<void()> handled;
        std::function<void(std::string_view key, std::string_view value, bool known)> taken;
    };
    void setNotices(Notices notices) { notices_ = std::move(notices); }
    void DecodeMessages(std::string_view text);

private:
    enum class Outcome { NotFound, Own, Parent };

    void decode(std::string_view piece);
    [[nodiscard]] Outcome attempt(std::string_view piece, std::size_t keyLength);
    [[nodiscard]] bool takes(const Cause& message, const std::function<void()>& work) const;

    template <typename T> using Table = std::unordered_map<std::string, T, NoCaseHash, NoCaseEqual>;

    Handlers& edge_;
    Table<Handler> handlers_;                            // by handler name
    Table<const Table<Handler>::value_type*> m_Messages; // by key
    Table<std::string> m_ParentMessages;
    const Operations* m_Parent = nullptr;
    std::size_t longestKey_ = 0;
    Notices notices_;
};

} // namespace quillon
