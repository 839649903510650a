#include "realmode/unpack/LzxDecoder.h"

namespace realmode::unpack {

namespace {

constexpr uint32_t kPretreeSymbols = 20;
constexpr uint32_t kMaxCodeLength = 16;
constexpr uint32_t kMaxTranslationSize = 0x7FFFFFFF;

uint32_t SlotsOf(uint32_t windowBits) {
    if (windowBits == 21) return 50;
    return windowBits == 20 ? 42 : 2 * windowBits;
}

uint32_t Smaller(uint32_t a, uint32_t b) {
    return a < b ? a : b;
}

}  // namespace

void LzxDecoder::BeginFolder(uint32_t windowBits) {
    mainSymbols_ = kLiterals + 8 * SlotsOf(windowBits);
    for (uint8_t& length : mainLengths_) length = 0;
    for (uint8_t& length : lengthLengths_) length = 0;
    for (uint32_t& distance : queue_) distance = 1;
    translationSize_ = blockLeft_ = 0;
    padIsDue_ = hasBegun_ = false;
}

Fault LzxDecoder::DecodeFrame(FarBytes input, uint32_t packed, uint32_t frameBytes) {
    // The pad byte of a block that ended exactly with its frame may be in either data record.
    const uint32_t begin = padIsDue_ && packed > 0 ? 1 : 0;
    padIsDue_ = false;
    bits_.Begin(input, begin, packed, BitReader::Order::Words);
    if (!hasBegun_) BeginStream();
    if (translationSize_ > kMaxTranslationSize) return Fault::BadStream;
    uint32_t at = 0;
    while (at < frameBytes) {
        const Fault fault = DecodePart(at, frameBytes);
        if (fault != Fault::None) return fault;
    }
    return bits_.IsAtEnd() ? Fault::None : Fault::BadStream;
}

void LzxDecoder::BeginStream() {
    hasBegun_ = true;
    if (bits_.Read(1) == 0) return;
    const uint32_t high = bits_.Read(16);
    translationSize_ = high << 16 | bits_.Read(16);
}

Fault LzxDecoder::DecodePart(uint32_t& at, uint32_t end) {
    if (blockLeft_ == 0) {
        const Fault fault = BeginBlock();
        if (fault != Fault::None) return fault;
    }
    return block_ == Block::Uncompressed ? CopyUncompressed(at, end) : DecodeItems(at, end);
}

Fault LzxDecoder::BeginBlock() {
    block_ = static_cast<Block>(bits_.Read(3));
    const uint32_t high = bits_.Read(16);
    blockLeft_ = high << 8 | bits_.Read(8);
    if (bits_.IsOverrun() || blockLeft_ == 0) return Fault::BadStream;
    switch (block_) {
        case Block::Verbatim:
        case Block::Aligned:
            return ReadTrees(block_ == Block::Aligned) ? Fault::None : Fault::BadTree;
        case Block::Uncompressed:
            return BeginUncompressed();
        default:
            return Fault::BadStream;
    }
}

bool LzxDecoder::ReadTrees(bool aligned) {
    using Lack = HuffmanCode::Lack;
    if (aligned) {
        uint8_t lengths[kAlignedSymbols];
        for (uint8_t& length : lengths) length = static_cast<uint8_t>(bits_.Read(3));
        if (!codes_.Aligned.Make(lengths, kAlignedSymbols, Lack::Nothing)) return false;
    }
    return ReadLengths(mainLengths_, kLiterals) &&
           ReadLengths(mainLengths_ + kLiterals, mainSymbols_ - kLiterals) &&
           ReadLengths(lengthLengths_, kLengthSymbols) &&
           codes_.Main.Make(mainLengths_, mainSymbols_, Lack::Nothing) &&
           codes_.Second.Make(lengthLengths_, kLengthSymbols, Lack::AllSymbols);
}

bool LzxDecoder::ReadLengths(uint8_t* lengths, uint32_t count) {
    uint8_t pretree[kPretreeSymbols];
    for (uint8_t& length : pretree) length = static_cast<uint8_t>(bits_.Read(4));
    if (!codes_.Lengths.Make(pretree, kPretreeSymbols, HuffmanCode::Lack::Nothing)) return false;
    const uint8_t* const end = lengths + count;
    while (lengths != end) {
        const uint32_t symbol = codes_.Lengths.Read(bits_);
        if (!ReadRun(symbol, lengths, end)) return false;
    }
    return !bits_.IsOverrun();
}

// One item of a list of lengths: a difference to the old length, or a run of equal lengths.
bool LzxDecoder::ReadRun(uint32_t symbol, uint8_t*& length, const uint8_t* end) {
    uint32_t run = 1;
    uint32_t difference = symbol;
    if (symbol == 17) run = 4 + bits_.Read(4);
    if (symbol == 18) run = 20 + bits_.Read(5);
    if (symbol == 19) {
        run = 4 + bits_.Read(1);
        difference = codes_.Lengths.Read(bits_);
    }
    uint32_t value = 0;
    if (symbol != 17 && symbol != 18) {
        if (difference > kMaxCodeLength) return false;
        value = *length + kMaxCodeLength + 1 - difference;
        if (value > kMaxCodeLength) value -= kMaxCodeLength + 1;
    }
    if (run > static_cast<uint32_t>(end - length)) return false;
    for (; run > 0; --run) *length++ = static_cast<uint8_t>(value);
    return true;
}

Fault LzxDecoder::BeginUncompressed() {
    blockIsOdd_ = blockLeft_ % 2 != 0;
    if (bits_.IsAtBorder()) bits_.Read(16);
    const uint32_t at = bits_.SkipToBorder();
    if (at + sizeof queue_ > bits_.End()) return Fault::BadStream;
    for (uint32_t i = 0; i < 3; ++i) queue_[i] = bits_.Input().Get32(at + 4 * i);
    bits_.Begin(bits_.Input(), at + sizeof queue_, bits_.End(), BitReader::Order::Words);
    return Fault::None;
}

Fault LzxDecoder::CopyUncompressed(uint32_t& at, uint32_t end) {
    const uint32_t count = Smaller(blockLeft_, end - at);
    uint32_t from = bits_.SkipToBorder();
    if (from + count > bits_.End()) return Fault::BadStream;
    FarBytes::Copy(window_.Frame(), at, bits_.Input(), from, count);
    at += count;
    from += count;
    blockLeft_ -= count;
    if (blockLeft_ == 0 && blockIsOdd_) {
        padIsDue_ = from == bits_.End();
        if (!padIsDue_) ++from;
    }
    bits_.Begin(bits_.Input(), from, bits_.End(), BitReader::Order::Words);
    return Fault::None;
}

Fault LzxDecoder::DecodeItems(uint32_t& at, uint32_t end) {
    const FarBytes frame = window_.Frame();
    const uint32_t begin = at;
    const uint32_t stop = at + Smaller(blockLeft_, end - at);
    while (at < stop) {
        const uint32_t symbol = codes_.Main.Read(bits_);
        if (symbol < kLiterals) {
            frame.Put8(at++, static_cast<uint8_t>(symbol));
            continue;
        }
        const Fault fault = DecodeMatch(symbol, at, stop);
        if (fault != Fault::None) return fault;
    }
    blockLeft_ -= at - begin;
    return Fault::None;
}

Fault LzxDecoder::DecodeMatch(uint32_t symbol, uint32_t& at, uint32_t end) {
    if (symbol == HuffmanCode::kNoSymbol) return Fault::BadStream;
    uint32_t length = symbol % 8 + 2;
    if (length == 9) {
        const uint32_t more = codes_.Second.Read(bits_);
        if (more == HuffmanCode::kNoSymbol) return Fault::BadStream;
        length += more;
    }
    const uint32_t distance = ReadDistance((symbol - kLiterals) / 8);
    if (length > end - at) return Fault::BadMatch;
    const Fault fault = window_.CopyMatch(at, distance, length);
    at += length;
    return fault;
}

// Reads what the slot needs of the bits and brings the repeat queue up to date.
uint32_t LzxDecoder::ReadDistance(uint32_t slot) {
    if (slot < 3) {
        const uint32_t distance = queue_[slot];
        queue_[slot] = queue_[0];
        queue_[0] = distance;
        return distance;
    }
    // The formatted distance is 2 more than the distance; each pair of slots has one more extra bit.
    uint32_t extra = 0;
    uint32_t distance = slot;
    if (slot >= 36) {
        extra = 17;
        distance = (slot - 34) << extra;
    } else if (slot >= 4) {
        extra = slot / 2 - 1;
        distance = (2 + slot % 2) << extra;
    }
    distance += ReadExtra(extra) - 2;
    queue_[2] = queue_[1];
    queue_[1] = queue_[0];
    queue_[0] = distance;
    return distance;
}

uint32_t LzxDecoder::ReadExtra(uint32_t bits) {
    if (block_ == Block::Aligned && bits >= 3) {
        const uint32_t high = bits_.Read(bits - 3) << 3;
        return high + codes_.Aligned.Read(bits_);
    }
    if (bits <= 16) return bits_.Read(bits);
    const uint32_t high = bits_.Read(bits - 16) << 16;
    return high + bits_.Read(16);
}

}  // namespace realmode::unpack
