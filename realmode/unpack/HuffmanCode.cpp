#include "realmode/unpack/HuffmanCode.h"

namespace realmode::unpack {

namespace {

constexpr uint32_t kWhole = 1U << HuffmanCode::kMaxBits;

}  // namespace

bool HuffmanCode::Make(const uint8_t* lengths, uint32_t symbols, Lack lack) {
    if (!FindLimits(lengths, symbols, lack)) return false;
    Sort(lengths, symbols);
    FillTable(lengths);
    return true;
}

bool HuffmanCode::FindLimits(const uint8_t* lengths, uint32_t symbols, Lack lack) {
    uint16_t count[kMaxBits + 1] = {};
    for (uint32_t i = 0; i < symbols; ++i) ++count[lengths[i]];
    uint32_t used = 0;
    uint32_t longest = 0;
    firstIndex_[1] = 0;
    for (uint32_t length = 1; length <= kMaxBits; ++length) {
        used += count[length] * (kWhole >> length);
        if (count[length] != 0) longest = length;
        limit_[length] = used;
        firstIndex_[length + 1] = static_cast<uint16_t>(firstIndex_[length] + count[length]);
    }
    tableBits_ = longest == 0 ? 1 : longest < kTableBits ? longest : kTableBits;
    tableShift_ = kMaxBits - tableBits_;
    if (used == kWhole) return true;
    if (used == 0) return lack != Lack::Nothing;
    return used == kWhole / 2 && longest == 1 && lack == Lack::AllButOneBit;
}

void HuffmanCode::Sort(const uint8_t* lengths, uint32_t symbols) {
    uint16_t place[kMaxBits + 1];
    for (uint32_t length = 1; length <= kMaxBits; ++length) place[length] = firstIndex_[length];
    for (uint32_t i = 0; i < symbols; ++i)
        if (lengths[i] != 0) symbols_[place[lengths[i]]++] = static_cast<uint16_t>(i);
}

void HuffmanCode::FillTable(const uint8_t* lengths) {
    uint16_t* next = table_;
    for (uint32_t i = 0; i < firstIndex_[tableBits_ + 1]; ++i) {
        const uint32_t length = lengths[symbols_[i]];
        const auto entry = static_cast<uint16_t>(symbols_[i] << 4 | length);
        for (uint32_t left = 1U << (tableBits_ - length); left > 0; --left) *next++ = entry;
    }
    uint16_t* const end = table_ + (1U << tableBits_);
    while (next != end) *next++ = 0;
}

uint32_t HuffmanCode::ReadLong(BitReader& bits, uint32_t next) const {
    for (uint32_t length = tableBits_ + 1; length <= kMaxBits; ++length) {
        if (next >= limit_[length]) continue;
        bits.Skip(length);
        const uint32_t index = firstIndex_[length] + ((next - limit_[length - 1]) >> (kMaxBits - length));
        return symbols_[index];
    }
    return kNoSymbol;
}

}  // namespace realmode::unpack
