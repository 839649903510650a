#include "tools/cabarc/MsZipCompressor.h"

#include <zlib.h>

#include <new>

#include "tools/shared/ByteOrder.h"

namespace tools::cabarc {

namespace {

constexpr std::uint8_t kFrameSignature[] = {'C', 'K'};
constexpr std::size_t kFrameSignatureSize = sizeof(kFrameSignature);
// The memory levels that are tried on each frame. The larger makes a frame one deflate block; the smaller
// begins a new block, with codes of its own, every 4096 symbols, which suits frames of mixed contents.
constexpr int kMemoryLevels[] = {9, 6};

}  // namespace

// A raw deflate stream of zlib.
class MsZipCompressor::Deflater {
 public:
    explicit Deflater(int memoryLevel) {
        if (deflateInit2(&stream_, Z_BEST_COMPRESSION, Z_DEFLATED, -MAX_WBITS, memoryLevel,
                         Z_DEFAULT_STRATEGY) != Z_OK)
            throw std::bad_alloc();
    }
    ~Deflater() { deflateEnd(&stream_); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    // Writes one complete stream to `out`. Returns its size, or 0 when it does not fit.
    std::size_t Run(std::span<const std::uint8_t> data, std::span<const std::uint8_t> history,
                    std::span<std::uint8_t> out) {
        deflateReset(&stream_);
        if (!history.empty())
            deflateSetDictionary(&stream_, history.data(), static_cast<uInt>(history.size()));
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

MsZipCompressor::MsZipCompressor(RecordSink& sink) : sink_(sink) {
    for (const int level : kMemoryLevels) deflaters_.push_back(std::make_unique<Deflater>(level));
}

MsZipCompressor::~MsZipCompressor() = default;

void MsZipCompressor::CompressFrame(std::span<const std::uint8_t> frame,
                                    std::span<const std::uint8_t> previous) {
    PutStored(frame);
    for (const auto& deflater : deflaters_) {
        trial_.assign(std::begin(kFrameSignature), std::end(kFrameSignature));
        // The limit is one byte less than the best result so far; a stream that reaches it is abandoned
        // there.
        trial_.resize(payload_.size() - 1);
        const std::size_t size =
            deflater->Run(frame, previous, std::span(trial_).subspan(kFrameSignatureSize));
        if (size == 0) continue;
        trial_.resize(kFrameSignatureSize + size);
        payload_.swap(trial_);
    }
    sink_.PutRecord(payload_, static_cast<std::uint16_t>(frame.size()));
}

// The frame as one stored block. No stream may be longer than that; readers rely on it.
void MsZipCompressor::PutStored(std::span<const std::uint8_t> frame) {
    const auto size = static_cast<std::uint32_t>(frame.size());
    payload_.assign(std::begin(kFrameSignature), std::end(kFrameSignature));
    payload_.push_back(1);  // final block, stored
    AppendU16(payload_, size);
    AppendU16(payload_, ~size & 0xFFFFU);
    payload_.insert(payload_.end(), frame.begin(), frame.end());
}

}  // namespace tools::cabarc
