#include "tools/cabarc/MsZipCompressor.h"

#include <zlib.h>

#include <new>
#include <stdexcept>

#include "tools/shared/ByteOrder.h"

namespace tools::cabarc {

namespace {

constexpr std::uint8_t kSignature[] = {'C', 'K'};
constexpr std::size_t kSignatureSize = sizeof(kSignature);
/// Header of a stored deflate block: 3 bits, padded to a byte, and the size twice.
constexpr std::size_t kStoredHeaderSize = 5;

}  // namespace

/// A raw deflate stream of zlib. The largest memory level lets a whole frame be one deflate block.
class MsZipCompressor::Deflater {
 public:
    Deflater() {
        if (deflateInit2(&stream_, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL,
                         Z_DEFAULT_STRATEGY) != Z_OK) {
            throw std::bad_alloc();
        }
    }
    ~Deflater() { deflateEnd(&stream_); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    /// Writes one complete stream to `out`. Returns its size, or 0 when it does not fit.
    std::size_t Run(std::span<const std::uint8_t> data, std::span<const std::uint8_t> history,
                    std::span<std::uint8_t> out) {
        deflateReset(&stream_);
        if (!history.empty()) {
            deflateSetDictionary(&stream_, history.data(), static_cast<uInt>(history.size()));
        }
        stream_.next_in =
            const_cast<Bytef*>(data.data());  // zlib only reads; its default interface lacks const
        stream_.avail_in = static_cast<uInt>(data.size());
        stream_.next_out = out.data();
        stream_.avail_out = static_cast<uInt>(out.size());
        const bool complete = deflate(&stream_, Z_FINISH) == Z_STREAM_END;
        return complete ? out.size() - stream_.avail_out : 0;
    }

 private:
    z_stream stream_ = {};
};

MsZipCompressor::MsZipCompressor(BlockSink& sink) : sink_(sink), deflater_(std::make_unique<Deflater>()) {}

MsZipCompressor::~MsZipCompressor() = default;

void MsZipCompressor::CompressFrame(std::span<const std::uint8_t> frame,
                                    std::span<const std::uint8_t> previous) {
    // No stream may be longer than one stored block, which is what incompressible data becomes; readers count
    // on it.
    const std::size_t storedSize = kStoredHeaderSize + frame.size();
    payload_.assign(std::begin(kSignature), std::end(kSignature));
    payload_.resize(kSignatureSize + storedSize);
    std::uint8_t* const stream = payload_.data() + kSignatureSize;
    std::size_t size = deflater_->Run(frame, previous, {stream, storedSize});
    if (size == 0) {
        const auto count = static_cast<std::uint32_t>(frame.size());
        stream[0] = 1;  // final block, stored
        PutU16(stream + 1, count);
        PutU16(stream + 3, ~count & 0xFFFFU);
        std::copy(frame.begin(), frame.end(), stream + kStoredHeaderSize);
        size = storedSize;
    }
    payload_.resize(kSignatureSize + size);
    sink_.PutBlock(payload_, static_cast<std::uint16_t>(frame.size()));
}

}  // namespace tools::cabarc
