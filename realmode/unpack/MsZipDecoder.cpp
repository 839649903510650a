#include "realmode/unpack/MsZipDecoder.h"

namespace realmode::unpack {

namespace {

constexpr uint32_t kLetters = 0x4B43;  // "CK"
constexpr uint32_t kLettersBytes = 2;
constexpr uint32_t kLiterals = 256;
constexpr uint32_t kEndOfBlock = 256;
constexpr uint32_t kFirstLength = 257;
constexpr uint32_t kLengthSymbols = 29;
constexpr uint32_t kDistanceSymbols = 30;
constexpr uint32_t kLongestMatch = 258;

// The order in which a block lists the lengths of the codes of lengths.
constexpr uint8_t kOrder[] = {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15};

void Fill(uint8_t* lengths, uint32_t begin, uint32_t end, uint8_t value) {
    for (uint32_t i = begin; i < end; ++i) lengths[i] = value;
}

}  // namespace

Fault MsZipDecoder::DecodeFrame(FarBytes input, uint32_t packed, uint32_t frameBytes) {
    if (packed < kLettersBytes || input.Get16(0) != kLetters) return Fault::BadStream;
    bits_.Begin(input, kLettersBytes, packed, BitReader::Order::TurnedBytes);
    uint32_t at = 0;
    for (bool isLast = false; !isLast;) {
        isLast = bits_.Read(1) != 0;
        const Fault fault = DecodeBlock(bits_.ReadTurned(2), at, frameBytes);
        if (fault != Fault::None) return fault;
        if (bits_.IsOverrun()) return Fault::BadStream;
    }
    return at == frameBytes && bits_.IsAtEnd() ? Fault::None : Fault::BadStream;
}

Fault MsZipDecoder::DecodeBlock(uint32_t type, uint32_t& at, uint32_t end) {
    if (type == 0) return CopyStored(at, end);
    if (type == 3) return Fault::BadStream;
    if (!(type == 1 ? MakeFixedCodes() : ReadCodes())) return Fault::BadTree;
    return DecodeItems(at, end);
}

Fault MsZipDecoder::CopyStored(uint32_t& at, uint32_t end) {
    constexpr uint32_t kSizes = 4;
    const uint32_t from = bits_.SkipToBorder();
    if (from + kSizes > bits_.End()) return Fault::BadStream;
    const uint32_t sizes = bits_.Input().Get32(from);
    const uint32_t count = sizes & 0xFFFF;
    if ((sizes >> 16 ^ count) != 0xFFFF || count > end - at || from + kSizes + count > bits_.End())
        return Fault::BadStream;
    FarBytes::Copy(window_.Frame(), at, bits_.Input(), from + kSizes, count);
    at += count;
    bits_.Begin(bits_.Input(), from + kSizes + count, bits_.End(), BitReader::Order::TurnedBytes);
    return Fault::None;
}

bool MsZipDecoder::MakeFixedCodes() {
    Fill(lengths_, 0, 144, 8);
    Fill(lengths_, 144, 256, 9);
    Fill(lengths_, 256, 280, 7);
    Fill(lengths_, 280, kMaxMainSymbols, 8);
    Fill(lengths_, kMaxMainSymbols, kMaxMainSymbols + kMaxDistanceSymbols, 5);
    return codes_.Main.Make(lengths_, kMaxMainSymbols, HuffmanCode::Lack::Nothing) &&
           codes_.Second.Make(lengths_ + kMaxMainSymbols, kMaxDistanceSymbols, HuffmanCode::Lack::Nothing);
}

bool MsZipDecoder::ReadCodes() {
    const uint32_t mainSymbols = 257 + bits_.ReadTurned(5);
    const uint32_t distanceSymbols = 1 + bits_.ReadTurned(5);
    const uint32_t listed = 4 + bits_.ReadTurned(4);
    if (mainSymbols > kFirstLength + kLengthSymbols || distanceSymbols > kDistanceSymbols) return false;
    Fill(lengths_, 0, sizeof kOrder, 0);
    for (uint32_t i = 0; i < listed; ++i) lengths_[kOrder[i]] = static_cast<uint8_t>(bits_.ReadTurned(3));
    if (!codes_.Lengths.Make(lengths_, sizeof kOrder, HuffmanCode::Lack::Nothing)) return false;
    if (!ReadLengths(mainSymbols + distanceSymbols) || lengths_[kEndOfBlock] == 0) return false;
    return codes_.Main.Make(lengths_, mainSymbols, HuffmanCode::Lack::AllButOneBit) &&
           codes_.Second.Make(lengths_ + mainSymbols, distanceSymbols, HuffmanCode::Lack::AllButOneBit);
}

bool MsZipDecoder::ReadLengths(uint32_t count) {
    for (uint32_t i = 0; i < count;) {
        const uint32_t symbol = codes_.Lengths.Read(bits_);
        if (symbol < 16) {
            lengths_[i++] = static_cast<uint8_t>(symbol);
            continue;
        }
        uint32_t run = 0;
        uint8_t value = 0;
        switch (symbol) {
            case 16:
                if (i == 0) return false;
                value = lengths_[i - 1];
                run = 3 + bits_.ReadTurned(2);
                break;
            case 17:
                run = 3 + bits_.ReadTurned(3);
                break;
            case 18:
                run = 11 + bits_.ReadTurned(7);
                break;
            default:
                return false;
        }
        if (run > count - i) return false;
        Fill(lengths_, i, i + run, value);
        i += run;
    }
    return true;
}

Fault MsZipDecoder::DecodeItems(uint32_t& at, uint32_t end) {
    const FarBytes frame = window_.Frame();
    for (;;) {
        const uint32_t symbol = codes_.Main.Read(bits_);
        if (symbol == kEndOfBlock) return Fault::None;
        if (symbol < kLiterals) {
            if (at == end) return Fault::BadStream;
            frame.Put8(at++, static_cast<uint8_t>(symbol));
            continue;
        }
        const Fault fault = DecodeMatch(symbol, at, end);
        if (fault != Fault::None) return fault;
    }
}

Fault MsZipDecoder::DecodeMatch(uint32_t symbol, uint32_t& at, uint32_t end) {
    // Lengths: 8 symbols for 3 to 10, then 4 for each number of extra bits, and one for the longest.
    symbol -= kFirstLength;
    if (symbol >= kLengthSymbols) return Fault::BadStream;
    uint32_t length = symbol + 3;
    if (symbol == kLengthSymbols - 1) {
        length = kLongestMatch;
    } else if (symbol >= 8) {
        const uint32_t extra = symbol / 4 - 1;
        length = 3 + ((4 + symbol % 4) << extra) + bits_.ReadTurned(extra);
    }
    // Distances: 4 symbols for 1 to 4, then 2 for each number of extra bits.
    const uint32_t slot = codes_.Second.Read(bits_);
    if (slot >= kDistanceSymbols) return Fault::BadStream;
    uint32_t distance = slot + 1;
    if (slot >= 4) {
        const uint32_t extra = slot / 2 - 1;
        distance = 1 + ((2 + slot % 2) << extra) + bits_.ReadTurned(extra);
    }
    if (length > end - at) return Fault::BadMatch;
    const Fault fault = window_.CopyMatch(at, distance, length);
    at += length;
    return fault;
}

}  // namespace realmode::unpack
