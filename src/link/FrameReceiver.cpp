#include "link/FrameReceiver.h"

#include <algorithm>
#include <utility>

#include "base/Numbers.h"

namespace quillon {

namespace {

constexpr char kEtx = 3;
constexpr char kLf = 10;
constexpr std::int16_t kCountLimit = 511; // the byte that finds the count here is lost

} // namespace

FrameReceiver::FrameReceiver(LinkEvents& events, FrameHandler frame)
    : events_(events), frame_(std::move(frame)) {
    m_RxText.reserve(256);
    complete_.reserve(256);
}

void FrameReceiver::receive(std::string_view bytes) {
    waiting_.append(bytes);
    while (taken_ < waiting_.size()) {
        takeByte(waiting_[taken_++]);
    }
    waiting_.clear();
    taken_ = 0;
}

void FrameReceiver::takeByte(char c) {
    if (m_RxCount == kCountLimit) {
        m_RxCount = 0;
        return;
    }
    ++m_RxCount;
    if (ReducedCommandCineAndDSI) {
        reducedMode(static_cast<unsigned char>(c));
    }
    if (c != kEtx && c != kLf) {
        if (m_RxText.size() < kLongestFrame) {
            m_RxText.push_back(c);
        } else {
            overlong_ = true;
        }
        return;
    }
    // The text is free for the next frame before the handler runs: it may make more bytes arrive.
    const bool dropped = std::exchange(overlong_, false);
    std::string frame = std::move(complete_);
    frame.assign(m_RxText);
    m_RxText.clear();
    m_RxCount = 0;
    if (!dropped) {
        frame_(frame);
    }
    complete_ = std::move(frame);
}

void FrameReceiver::cutText(std::size_t removed) {
    m_RxText.resize(m_RxText.size() - std::min(removed, m_RxText.size()));
    m_RxCount = static_cast<std::int16_t>(std::min<std::size_t>(m_RxText.size(), kCountLimit - 1));
}

void FrameReceiver::reducedMode(unsigned char byte) {
    const auto character = [this](std::size_t fromEnd) {
        return m_RxText.size() < fromEnd ? '\0' : m_RxText[m_RxText.size() - fromEnd];
    };
    if (m_RxByteMark) {
        if (byte > 100) {
            events_.KVPCINEChangeValue.raise(decimalText(byte - 100));
            cutText(1);
        }
        m_RxByteMark = false;
    }
    if (m_RxWordMark && m_RxCount > 2) {
        if (character(2) == 't') {
            // A high byte of 128 and above is no value of the generator's; it leaves the text all the same.
            if (const int high = static_cast<unsigned char>(character(1)); high < 128) {
                events_.MSDSIChangeValue.raise(decimalText(high * 256 + byte));
            }
            cutText(2);
        } else {
            const auto position = static_cast<std::size_t>(m_RxCount - 2);
            if (position >= m_RxText.size() || m_RxText[position] != 't') {
                m_RxWordMark = false;
            }
        }
    }
    if (!m_RxByteMark && !m_RxWordMark) {
        m_RxByteMark = byte == 'K';
        m_RxWordMark = byte == 't';
    }
}

} // namespace quillon
