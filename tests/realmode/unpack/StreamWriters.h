#pragma once
// Write packed frames by hand, bit by bit, valid ones and some that no packer writes.

#include <cstdint>
#include <map>

#include "tests/realmode/unpack/CabinetBuilder.h"
#include "tools/cabarc/lzx/BitWriter.h"

namespace realmode::unpack::testing {

/// Lengths of codes by symbol: 1 or 2; the others have none.
using CodeLengths = std::map<unsigned, unsigned>;

/// LZX with the smallest window.
class LzxWriter {
 public:
    static constexpr unsigned kVerbatim = 1;
    static constexpr unsigned kAligned = 2;
    static constexpr unsigned kUncompressed = 3;
    static constexpr unsigned kMainSymbols = 496;
    static constexpr unsigned kLengthSymbols = 249;
    /// The main symbol of a match with this position slot and a length of 2 to 8; 9 stands for all longer
    /// ones.
    static constexpr unsigned Match(unsigned slot, unsigned length) { return 256 + 8 * slot + length - 2; }

    void Put(std::uint32_t bits, int count) { bits_.Put(bits, count); }
    /// The bit before the first block of a folder: no call is translated.
    void NothingTranslated() { Put(0, 1); }
    void BlockHeader(unsigned type, std::uint32_t size);
    /// The trees of a verbatim block that is the first of its folder.
    void Trees(const CodeLengths& main, const CodeLengths& lengths = {});
    /// The code lengths of the symbols from `begin` to before `end`.
    void Lengths(const CodeLengths& lengths, unsigned begin, unsigned end);
    /// The pretree that Lengths uses: the symbol 0 has the code 0, 15 has 10, 16 has 11.
    void Pretree();
    /// The padding and the repeat queue before the bytes of an uncompressed block.
    void Queue(std::uint32_t r0, std::uint32_t r1, std::uint32_t r2);
    void Raw(const Bytes& bytes) { bits_.PutBytes(bytes); }
    /// Ends the frame and returns it.
    Bytes Frame();

 private:
    tools::cabarc::lzx::BitWriter bits_;
};

/// MSZIP.
class DeflateWriter {
 public:
    static constexpr unsigned kStored = 0;
    static constexpr unsigned kFixed = 1;
    static constexpr unsigned kDynamic = 2;

    /// Begins a frame with its signature, "CK".
    DeflateWriter() : bytes_{'C', 'K'} {}

    void BlockHeader(bool isLast, unsigned type);
    /// A number, whose lowest bit comes first.
    void Number(unsigned value, unsigned count);
    /// A code, whose highest bit comes first.
    void Code(unsigned code, unsigned count);
    /// Items of fixed codes: a byte below 144, the end of a block, a match of 3 bytes with a slot of
    /// distances.
    void FixedLiteral(char letter) { Code(0x30 + static_cast<unsigned char>(letter), 8); }
    void FixedEnd() { Code(0, 7); }
    void FixedMatch3(unsigned slot);
    void StoredBlock(bool isLast, const Bytes& bytes);
    Bytes Frame() const { return bytes_; }

 private:
    void Bit(unsigned bit);

    Bytes bytes_;
    unsigned used_ = 8;  // bits of the last byte
};

}  // namespace realmode::unpack::testing
