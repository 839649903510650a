#include "tools/cabarc/lzx/BlockCodes.h"

#include "tools/cabarc/lzx/HuffmanCode.h"

namespace tools::cabarc::lzx {

namespace {

template <std::size_t Size>
void AddCounts(std::array<std::uint32_t, Size>& to, const std::array<std::uint32_t, Size>& from) {
    for (std::size_t i = 0; i < Size; ++i) to[i] += from[i];
}

template <std::size_t Size>
std::uint64_t CodedBits(const std::array<std::uint32_t, Size>& counts,
                        const std::array<std::uint8_t, Size>& lengths) {
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < Size; ++i) bits += std::uint64_t{counts[i]} * lengths[i];
    return bits;
}

}  // namespace

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

void SymbolCounts::Add(const SymbolCounts& other) {
    AddCounts(Main, other.Main);
    AddCounts(Length, other.Length);
    AddCounts(Aligned, other.Aligned);
}

CodeLengths BuildCodes(const SymbolCounts& counts) {
    CodeLengths codes;
    BuildCodeLengths(counts.Main, kMaxCodeLength, codes.Main);
    BuildCodeLengths(counts.Length, kMaxCodeLength, codes.Length);
    BuildCodeLengths(counts.Aligned, kMaxAlignedLength, codes.Aligned);
    return codes;
}

std::uint64_t BodyBits(const SymbolCounts& counts, const CodeLengths& codes, BlockType type) {
    std::uint64_t bits = CodedBits(counts.Main, codes.Main) + CodedBits(counts.Length, codes.Length);
    std::size_t symbol = kLiterals;
    for (int slot = 0; slot < kMaxSlots; ++slot) {
        const bool splitsLowBits = type == BlockType::Aligned && slot >= kFirstAlignedSlot;
        const auto rawBits = static_cast<std::uint64_t>(ExtraBits(slot) - (splitsLowBits ? 3 : 0));
        for (int header = 0; header < kLengthHeaders; ++header) bits += counts.Main[symbol++] * rawBits;
    }
    if (type == BlockType::Aligned) bits += CodedBits(counts.Aligned, codes.Aligned);
    return bits;
}

}  // namespace tools::cabarc::lzx
