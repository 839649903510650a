// Everything here but the entropy is exact and follows from counts alone: the bits of a block's items are the
// sum of count times code length over all symbols, plus the extra bits. So the price of a block takes time in
// proportion to the alphabets, about 900 symbols, and not to its items, and a block can be priced as both
// coded types without being written. The one thing that counts do not show is the order of the items, which
// no code of the format depends on.

#include "tools/cabarc/lzx/BlockCodes.h"

#include "tools/cabarc/lzx/HuffmanCode.h"

namespace tools::cabarc::lzx {

namespace {

template <std::size_t Size>
std::uint64_t CodedBits(const std::array<std::uint32_t, Size>& counts,
                        const std::array<std::uint8_t, Size>& lengths) {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < Size; ++i) bits += std::uint64_t{counts[i]} * lengths[i];
    return bits;
}

}  // namespace

// A match has one main symbol for its position slot and the start of its length; lengths from 9 on have a
// symbol of the length tree as well, and the place inside the slot follows in the extra bits.
ItemSymbols::ItemSymbols(Item item) {
    if (item.IsLiteral()) {
        Main = item.Byte();
        return;
    }
    Slot = SlotOf(item.Formatted());
    const int overMinimum = static_cast<int>(item.Length() - kMinMatch);
    const int header = std::min(overMinimum, kLengthHeaders - 1);
    if (header == kLengthHeaders - 1) Length = overMinimum - header;
    Main = kLiterals + Slot * kLengthHeaders + header;
    if (Slot >= kFirstAlignedSlot) Aligned = static_cast<int>(item.Formatted() % kAlignedSymbols);
}

void SymbolCounts::Add(Item item) {
    const ItemSymbols symbols(item);
    ++Main[static_cast<std::size_t>(symbols.Main)];
    if (symbols.Length >= 0) ++Length[static_cast<std::size_t>(symbols.Length)];
    if (symbols.Aligned >= 0) ++Aligned[static_cast<std::size_t>(symbols.Aligned)];
}

CodeLengths BuildCodes(const SymbolCounts& counts) {
    CodeLengths codes;
    BuildCodeLengths(counts.Main, kMaxCodeLength, codes.Main);
    BuildCodeLengths(counts.Length, kMaxCodeLength, codes.Length);
    BuildCodeLengths(counts.Aligned, kMaxAlignedLength, codes.Aligned);
    return codes;
}

// The slots are read off the main symbols: no count of their own is needed.
std::uint64_t ExtraOffsetBits(const SymbolCounts& counts, BlockType type) {
    std::uint64_t bits = 0;
    std::size_t symbol = kLiterals;
    for (int slot = 0; slot < kMaxSlots; ++slot) {
        const bool codesLowBits = type == BlockType::Aligned && slot >= kFirstAlignedSlot;
        const auto plainBits =
            static_cast<std::uint64_t>(ExtraBits(slot) - (codesLowBits ? kAlignedBits : 0));
        for (int header = 0; header < kLengthHeaders; ++header) bits += counts.Main[symbol++] * plainBits;
    }
    return bits;
}

std::uint64_t BodyBits(const SymbolCounts& counts, const CodeLengths& codes, BlockType type) {
    const std::uint64_t bits = CodedBits(counts.Main, codes.Main) + CodedBits(counts.Length, codes.Length) +
                               ExtraOffsetBits(counts, type);
    return type == BlockType::Aligned ? bits + CodedBits(counts.Aligned, codes.Aligned) : bits;
}

BodyPlan PlanBody(const SymbolCounts& counts) {
    constexpr std::uint64_t kAlignedTreeBits = kAlignedLengthBits * kAlignedSymbols;
    const CodeLengths codes = BuildCodes(counts);
    const std::uint64_t verbatim = BodyBits(counts, codes, BlockType::Verbatim);
    const std::uint64_t aligned = BodyBits(counts, codes, BlockType::Aligned) + kAlignedTreeBits;
    if (aligned < verbatim) return {codes, BlockType::Aligned, aligned};
    return {codes, BlockType::Verbatim, verbatim};
}

float EntropyTerms::EntropyBits(std::span<const std::uint32_t> counts) const {
    std::uint32_t total = 0;
    float sum = 0;
    for (const std::uint32_t count : counts) {
        total += count;
        sum += (*this)(count);
    }
    return (*this)(total)-sum;
}

}  // namespace tools::cabarc::lzx
