#pragma once
// A canonical Huffman code as LZX and deflate have them: shorter codes come first, codes of one length in the
// order of their symbols. Codes of up to 10 bits are found in a table, longer ones by comparing.

#include <stdint.h>

#include "realmode/unpack/BitReader.h"

namespace realmode::unpack {

class HuffmanCode {
 public:
    static constexpr uint32_t kMaxSymbols = 656;
    static constexpr uint32_t kMaxBits = 16;
    static constexpr uint32_t kNoSymbol = 0xFFFF;

    /// What a code may lack besides being complete.
    enum class Lack : uint8_t {
        Nothing,
        AllSymbols,    ///< no symbol has a code
        AllButOneBit,  ///< or a single symbol has one, of one bit
    };

    /// Makes the code from the length of each symbol's code: 1 to 16 bits, or 0 for none. Returns false when
    /// there is no code with these lengths, or when it lacks more than `lack` permits.
    bool Make(const uint8_t* lengths, uint32_t symbols, Lack lack);

    /// Takes a symbol; kNoSymbol when the bits begin no code.
    uint32_t Read(BitReader& bits) const {
        const uint32_t next = bits.Peek16();
        const uint32_t entry = table_[next >> tableShift_];
        if (entry == 0) return ReadLong(bits, next);
        bits.Skip(entry & 15);
        return entry >> 4;
    }

 private:
    // 2 KB for each of the four codes: all of them, with the code and the stack, are in one segment of 64 KB.
    static constexpr uint32_t kTableBits = 10;
    static_assert(kTableBits < 16, "the length of a code in the table has four bits");
    static_assert(kMaxSymbols <= 1 << 12, "a symbol has the other twelve bits of an entry");

    bool FindLimits(const uint8_t* lengths, uint32_t symbols, Lack lack);
    void Sort(const uint8_t* lengths, uint32_t symbols);
    void FillTable(const uint8_t* lengths);
    uint32_t ReadLong(BitReader& bits, uint32_t next) const;

    uint16_t table_[1 << kTableBits];    // symbol * 16 + length, 0 where the code is longer
    uint16_t symbols_[kMaxSymbols];      // in the order of their codes
    uint32_t limit_[kMaxBits + 1];       // the first 16 bits after the codes of each length
    uint16_t firstIndex_[kMaxBits + 2];  // of each length, in symbols_
    uint32_t tableShift_ = 0;
    uint32_t tableBits_ = 0;
};

/// The memory for the codes of either method: a folder has one method, so they share it.
struct Codes {
    HuffmanCode Main;     ///< literals and matches
    HuffmanCode Second;   ///< LZX: lengths; deflate: distances
    HuffmanCode Aligned;  ///< LZX only
    HuffmanCode Lengths;  ///< of the codes of the others
};

}  // namespace realmode::unpack
