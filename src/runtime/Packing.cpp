#include "runtime/Packing.h"

#include <algorithm>
#include <array>

#ifdef QUILLON_PACKING
#include <zlib.h>
#endif

namespace quillon {

namespace {

constexpr std::string_view kMark = "\x1F\x8B"; // a gzip file begins with it

} // namespace

#ifdef QUILLON_PACKING

namespace {

constexpr int kLevel = 6;
constexpr int kGzip = 15 + 16; // the largest window, and the frame of a gzip file
constexpr int kMemory = 8;
constexpr std::size_t kPiece = 32'768;

void give(z_stream& stream, std::string_view input) {
    // zlib never writes there.
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(input.data()));
    stream.avail_in = static_cast<uInt>(input.size());
}

/// Runs one step with room for a piece; what comes out of it is put behind `out`.
template <typename Step> int stepInto(z_stream& stream, std::string& out, Step step) {
    std::array<char, kPiece> piece;
    stream.next_out = reinterpret_cast<Bytef*>(piece.data());
    stream.avail_out = static_cast<uInt>(piece.size());
    const int result = step();
    out.append(piece.data(), piece.size() - stream.avail_out);
    return result;
}

} // namespace

bool canPack() {
    return true;
}

struct Packer::Stream {
    z_stream z{};
    bool good = deflateInit2(&z, kLevel, Z_DEFLATED, kGzip, kMemory, Z_DEFAULT_STRATEGY) == Z_OK;
};

Packer::Packer() : stream_(std::make_unique<Stream>()) {}

Packer::~Packer() {
    deflateEnd(&stream_->z);
}

std::string Packer::run(std::string_view text, bool last) {
    std::string out;
    give(stream_->z, text);
    while (stream_->good) {
        const int result =
            stepInto(stream_->z, out, [&] { return deflate(&stream_->z, last ? Z_FINISH : Z_NO_FLUSH); });
        if (result != Z_OK || (!last && stream_->z.avail_in == 0)) {
            break;
        }
    }
    return out;
}

Unpacked unpacked(std::string_view content, std::size_t limit) {
    if (!content.starts_with(kMark)) {
        return {std::string(content), true};
    }
    Unpacked result;
    z_stream stream{};
    if (inflateInit2(&stream, kGzip) != Z_OK) {
        return {{}, false};
    }
    give(stream, content);
    for (int state = Z_OK; result.whole;) {
        state = stepInto(stream, result.text, [&] { return inflate(&stream, Z_NO_FLUSH); });
        result.whole = (state == Z_OK || state == Z_STREAM_END) && result.text.size() <= limit;
        if (state == Z_STREAM_END) {
            if (stream.avail_in == 0) {
                break;
            }
            inflateReset(&stream);
        }
    }
    inflateEnd(&stream);
    return result;
}

#else

bool canPack() {
    return false;
}

struct Packer::Stream {};

Packer::Packer() = default;
Packer::~Packer() = default;

std::string Packer::run(std::string_view text, bool /*last*/) {
    return std::string(text);
}

Unpacked unpacked(std::string_view content, std::size_t /*limit*/) {
    if (content.starts_with(kMark)) {
        return {{}, false};
    }
    return {std::string(content), true};
}

#endif

} // namespace quillon
