#pragma once
// The bits of one frame. LZX takes the bits of a field from the highest on and packs them into 16-bit words
// from the highest bit on, but stores each word with its low byte first. Whole bytes occur only in
// uncompressed blocks, and only at a word border.
//
// Invariant: between two calls at most 15 bits wait in a 64-bit register, because every full word leaves it
// at once. So a field of 32 bits always fits above them, and Put needs no loop over parts of a field.
// Nothing here fails: the bytes grow in memory, and the caller limits the size of a frame.

#include <cstdint>
#include <span>
#include <vector>

namespace tools::cabarc::lzx {

/// Collects one frame at a time; Clear begins the next one, and the memory of the bytes is used again.
class BitWriter {
 public:
    /// The longest field of Put, and the size of the words in which the format stores bits.
    static constexpr int kMaxFieldBits = 32;
    static constexpr int kWordBits = 16;

    /// Appends the low `count` (0 to kMaxFieldBits) bits of `bits`, most significant first. REQUIRES: all
    /// higher bits are 0.
    void Put(std::uint32_t bits, int count) {
        pending_ = (pending_ << count) | bits;
        pendingBits_ += count;
        while (pendingBits_ >= kWordBits) {
            pendingBits_ -= kWordBits;
            PutWord(static_cast<std::uint16_t>(pending_ >> pendingBits_));
        }
    }

    /// Fills the current word with zero bits; does nothing at a word border.
    void PadToWord() {
        if (pendingBits_ != 0) Put(0, kWordBits - pendingBits_);
    }

    /// Pads as the start of an uncompressed block demands: 1 to 16 zero bits, 16 when already at a word
    /// border.
    void PadBeforeRawBytes() { Put(0, kWordBits - pendingBits_); }

    /// Appends whole bytes. REQUIRES: no bits wait, which holds at a word border and after other raw bytes.
    void PutBytes(std::span<const std::uint8_t> raw) { bytes_.insert(bytes_.end(), raw.begin(), raw.end()); }

    /// The whole words and raw bytes so far, until the next call that is not const. The bits that still
    /// wait for their word are not among them: PadToWord ends a frame.
    const std::vector<std::uint8_t>& Bytes() const { return bytes_; }

    /// Forgets what was written, waiting bits included; the next frame starts at a fresh word.
    void Clear() {
        bytes_.clear();
        pending_ = 0;
        pendingBits_ = 0;
    }

 private:
    void PutWord(std::uint16_t word) {
        bytes_.push_back(static_cast<std::uint8_t>(word));
        bytes_.push_back(static_cast<std::uint8_t>(word >> 8));
    }

    std::vector<std::uint8_t> bytes_;
    std::uint64_t pending_ = 0;  ///< the low pendingBits_ bits wait; what is above them has been written
    int pendingBits_ = 0;        ///< 0 to kWordBits - 1 between calls
};

}  // namespace tools::cabarc::lzx
