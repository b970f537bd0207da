#include "link/MessageDecoder.h"

#include <algorithm>
#include <cassert>

#include "base/Fault.h"
#include "link/InboundTable.h"

namespace quillon {

namespace {

/// Runs a handler. Returns its fault number, 0 for none; nothing is rolled back.
template <typename Work> int faultOf(Work&& work) {
    try {
        work();
        return 0;
    } catch (const Fault& fault) {
        assert(fault.number() != Fault::kNoSuchName);
        return fault.number();
    }
}

} // namespace

MessageDecoder::MessageDecoder() {
    for (const InboundRow& row : kInboundTable) {
        const auto handler = handlers_.try_emplace(std::string(row.handler)).first;
        m_Messages.emplace(row.key, &handler->second);
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
    for (std::size_t length = std::min(piece.size(), longestKey_); length > 0; --length) {
        outcome = attempt(piece.substr(0, length), piece.substr(length));
        if (outcome != Outcome::NotFound) {
            break;
        }
    }
    if (outcome == Outcome::NotFound && notices_.heard) {
        notices_.heard();
    }
    if (outcome == Outcome::Own && notices_.handled) {
        notices_.handled();
    }
}

MessageDecoder::Outcome MessageDecoder::attempt(std::string_view key, std::string_view value) {
    if (const auto row = m_Messages.find(key); row != m_Messages.end()) {
        const Handler& handler = *row->second;
        const int fault = faultOf([&] {
            if (handler) {
                handler(value);
            }
        });
        if (notices_.heard) {
            notices_.heard();
        }
        // A handler that ends with this number says that the message is not its own.
        if (fault != Fault::kNotFound) {
            return Outcome::Own;
        }
    }
    const auto row = m_ParentMessages.find(key);
    if (row == m_ParentMessages.end()) {
        return Outcome::NotFound;
    }
    const int fault = faultOf([&] { m_Parent->call(row->second, {std::string(value)}); });
    if (notices_.heard) {
        notices_.heard();
    }
    return fault == Fault::kNotFound ? Outcome::NotFound : Outcome::Parent;
}

} // namespace quillon
