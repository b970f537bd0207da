#include "link/MessageDecoder.h"

#include <algorithm>
#include <cassert>

#include "base/Fault.h"
#include "link/InboundTable.h"

namespace quillon {

MessageDecoder::MessageDecoder(Handlers& handlers) : edge_(handlers) {
    for (const InboundRow& row : kInboundTable) {
        const auto handler = handlers_.try_emplace(std::string(row.handler)).first;
        m_Messages.emplace(row.key, &*handler);
        longestKey_ = std::max(longestKey_, row.key.size());
    }
}

void MessageDecoder::bind(std::string_view handler, Handler work) {
    const auto row = handlers_.find(handler);
    if (row == handlers_.end()) {
        throw Fault(Fault::kNoSuchName);
    }
    row->second = std::move(work);
}

bool MessageDecoder::complete() const {
    return std::ranges::all_of(handlers_, [](const auto& entry) { return entry.second != nullptr; });
}

void MessageDecoder::addTo(Operations& operations) const {
    for (const auto& entry : handlers_) {
        operations.add(entry.first, [&work = entry.second](std::string_view value) {
            if (work) {
                work(value);
            }
        });
    }
}

void MessageDecoder::AddParentMessage(const Operations& ParentObject, std::string_view fName,
                                      std::string_view Key) {
    if (!ParentObject.hasOperation(fName)) {
        throw Fault(Fault::kNoSuchName);
    }
    m_Parent = &ParentObject;
    m_ParentMessages.insert_or_assign(std::string(Key), std::string(fName));
    longestKey_ = std::max(longestKey_, Key.size());
}

void MessageDecoder::DecodeMessages(std::string_view text) {
    while (!text.empty()) {
        const auto end = text.find('\r');
        const std::string_view piece = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!piece.empty()) {
            decode(piece);
        }
    }
}

void MessageDecoder::decode(std::string_view piece) {
    // No key is longer than the longest one, so a long piece of garbage costs no more than a short one.
    Outcome outcome = Outcome::NotFound;
    std::string_view key = piece;
    for (std::size_t length = std::min(piece.size(), longestKey_); length > 0; --length) {
        outcome = attempt(piece, length);
        if (outcome != Outcome::NotFound) {
            key = piece.substr(0, length);
            break;
        }
    }
    if (outcome == Outcome::NotFound && notices_.heard) {
        notices_.heard();
    }
    if (outcome == Outcome::Own && notices_.handled) {
        notices_.handled();
    }
    if (notices_.taken) {
        notices_.taken(key, piece.substr(key.size()), outcome != Outcome::NotFound);
    }
}

/// Runs a handler. A fault ends it, and nothing is rolled back; one number says that the message is not its
/// own.
bool MessageDecoder::takes(const Cause& message, const std::function<void()>& work) const {
    bool own = true;
    try {
        edge_.run(message, [&] {
            try {
                work();
            } catch (const Fault& fault) {
                if (fault.number() != Fault::kNotFound) {
                    throw;
                }
                own = false;
            }
        });
    } catch (const Fault& fault) { // and was told
        assert(fault.number() != Fault::kNoSuchName);
    }
    return own;
}

MessageDecoder::Outcome MessageDecoder::attempt(std::string_view piece, std::size_t keyLength) {
    const std::string_view key = piece.substr(0, keyLength);
    const std::string_view value = piece.substr(keyLength);
    if (const auto row = m_Messages.find(key); row != m_Messages.end()) {
        const auto& [name, handler] = *row->second;
        const bool own = takes({Cause::Kind::Message, piece, name}, [&work = handler, value] {
            if (work) {
                work(value);
            }
        });
        if (notices_.heard) {
            notices_.heard();
        }
        if (own) {
            return Outcome::Own;
        }
    }
    const auto row = m_ParentMessages.find(key);
    if (row == m_ParentMessages.end()) {
        return Outcome::NotFound;
    }
    const bool taken = takes({Cause::Kind::Message, piece, row->second},
                             [&] { m_Parent->call(row->second, {std::string(value)}); });
    if (notices_.heard) {
        notices_.heard();
    }
    return taken ? Outcome::Parent : Outcome::NotFound;
}

} // namespace quillon
