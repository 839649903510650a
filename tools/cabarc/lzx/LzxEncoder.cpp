// The buffer holds, in this order: a window of what is packed, which matches refer to; what is ready, that
// is, in whole frames and translated; and what has only arrived. Packing starts when the buffer is full and
// stops when less than a segment and a frame is ready, so that every search sees to the end of its longest
// match. What is then left ahead is less than a segment and two frames, so the buffer always has space for
// the next call.
//
// Translation changes the bytes in place before anything is packed, and matches are those of the translated
// bytes. So a folder that fits into the buffer is judged as a whole, a longer one by its start.

#include "tools/cabarc/lzx/LzxEncoder.h"

#include <algorithm>
#include <stdexcept>

#include "tools/cabarc/lzx/BlockWriter.h"
#include "tools/cabarc/lzx/E8Translation.h"

namespace tools::cabarc::lzx {

namespace {

int CheckedWindowBits(int windowBits) {
    if (windowBits < kMinWindowBits || windowBits > kMaxWindowBits)
        throw std::invalid_argument("LZX windows have 15 to 21 bits");
    return windowBits;
}

const LzxOptions& CheckedOptions(const LzxOptions& options) {
    if (options.Search.Depth < 1 || options.Passes < 1)
        throw std::invalid_argument("LZX needs a search depth and at least one pass");
    if (options.Search.NiceLength < MatchFinder::kMinNiceLength || options.Search.NiceLength > kMaxMatch ||
        options.TakeAtOnceLength < kMinMatch || options.TakeAtOnceLength > kMaxMatch)
        throw std::invalid_argument("no LZX match is as long as an option says");
    return options;
}

}  // namespace

LzxEncoder::LzxEncoder(int windowBits, const LzxOptions& options, RecordSink& sink)
    : windowBits_(CheckedWindowBits(windowBits)),
      sink_(sink),
      parser_(windowBits, CheckedOptions(options)),
      capacity_((std::size_t{1} << windowBits) + kAheadBytes) {
    buffer_.reserve(capacity_);
}

LzxEncoder::~LzxEncoder() = default;

// The buffer is worked on only when it is full, so that the result does not depend on the size of the calls.
void LzxEncoder::Write(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const std::size_t part = std::min(bytes.size(), capacity_ - buffer_.size());
        buffer_.insert(buffer_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(part));
        bytes = bytes.subspan(part);
        if (buffer_.size() == capacity_) Encode(false);
    }
}

void LzxEncoder::Finish() {
    if (bufferStart_ + buffer_.size() > position_) Encode(true);
}

void LzxEncoder::Start() {
    translate_ = TranslationPays(buffer_);
    writer_ = std::make_unique<BlockWriter>(windowBits_, translate_ ? kTranslationSize : 0, sink_);
}

// Packs what the buffer holds: up to its end when the folder ends with it, else as many segments as leave a
// frame to look ahead into.
void LzxEncoder::Encode(bool last) {
    if (!writer_) Start();
    const auto end = static_cast<std::uint32_t>(bufferStart_ + buffer_.size());
    while (ready_ < end && (last || end - ready_ >= kFrameSize)) {
        const std::uint32_t size = std::min(kFrameSize, end - ready_);
        if (translate_) TranslateFrame(std::span(buffer_).subspan(ready_ - bufferStart_, size), ready_);
        ready_ += size;
    }
    const std::span<const std::uint8_t> readable(buffer_.data(), ready_ - bufferStart_);
    while (last ? position_ < ready_ : ready_ - position_ >= SegmentParser::kMaxBytes + kFrameSize) {
        const std::uint32_t length = parser_.Parse(readable, bufferStart_, position_);
        writer_->Write(
            {readable.subspan(position_ - bufferStart_, length), parser_.Items(), parser_.Blocks()});
        position_ += length;
    }
    DropHistory();
}

// Keeps one window of what is packed.
void LzxEncoder::DropHistory() {
    const std::uint32_t keepFrom = position_ - std::min(position_, 1U << windowBits_);
    if (keepFrom <= bufferStart_) return;
    buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(keepFrom - bufferStart_));
    bufferStart_ = keepFrom;
}

}  // namespace tools::cabarc::lzx
