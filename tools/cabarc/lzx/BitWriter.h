#pragma once
// The bits of one frame: taken most significant first into 16-bit words, the words stored low byte first.

#include <cstdint>
#include <span>
#include <vector>

namespace tools::cabarc::lzx {

class BitWriter {
 public:
    /// Appends the low `count` (0..32) bits of `bits`, most significant first. Higher bits must be 0.
    void Put(std::uint32_t bits, int count) {
        pending_ = (pending_ << count) | bits;
        pendingBits_ += count;
        while (pendingBits_ >= 16) {
            pendingBits_ -= 16;
            PutWord(static_cast<std::uint16_t>(pending_ >> pendingBits_));
        }
    }

    /// Fills the running word with zero bits; does nothing at a word border.
    void PadToWord() {
        if (pendingBits_ != 0) Put(0, 16 - pendingBits_);
    }

    /// Pads as the start of an uncompressed block demands: 1 to 16 zero bits, 16 when already at a word
    /// border.
    void PadBeforeRawBytes() { Put(0, 16 - pendingBits_); }

    /// Appends whole bytes. Only at a word border (or after an odd number of raw bytes).
    void PutBytes(std::span<const std::uint8_t> raw) { bytes_.insert(bytes_.end(), raw.begin(), raw.end()); }

    /// The whole words and raw bytes so far.
    const std::vector<std::uint8_t>& Bytes() const { return bytes_; }

    /// Forgets what was written; the next frame starts at a fresh word.
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
    std::uint64_t pending_ = 0;
    int pendingBits_ = 0;
};

}  // namespace tools::cabarc::lzx
