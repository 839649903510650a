#pragma once
// Code lengths as a block's header carries them: differences from the lengths of the coded block before,
// with runs, under a pretree of their own. There are many encodings of the same lengths; this finds one of
// the shortest, though not always the shortest, because the prices of the steps follow from the steps
// chosen.
//
// Its size in bits is known before anything is written, because the choice between a coded and an
// uncompressed block depends on it.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/lzx/BitWriter.h"
#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx {

/// One list of code lengths, ready to be written.
class EncodedCodeLengths {
 public:
    /// The longest run that one pretree symbol can stand for.
    static constexpr std::uint32_t kLongestRun = 51;

    /// Encodes `lengths` (each at most kMaxCodeLength) for a decoder that holds `previous`, the lengths of
    /// the same list in the last coded block. REQUIRES: both equally long.
    EncodedCodeLengths(std::span<const std::uint8_t> previous, std::span<const std::uint8_t> lengths);

    /// Size in the stream, in bits, the pretree included.
    std::uint32_t Bits() const { return bits_; }

    /// Appends exactly Bits() bits to `writer`.
    void Write(BitWriter& writer) const;

 private:
    /// One pretree symbol with what follows it.
    struct Step {
        std::uint8_t Symbol = 0;
        std::uint8_t Extra = 0;       ///< run length over the minimum, for the run symbols
        std::uint8_t Difference = 0;  ///< the symbol after an equal run
    };
    using StepCosts = std::array<std::uint32_t, kPretreeSymbols>;

    void ChooseSteps(std::span<const std::uint8_t> previous, std::span<const std::uint8_t> lengths,
                     const StepCosts& costs);
    void BuildPretree();

    std::vector<Step> steps_;
    std::array<std::uint8_t, kPretreeSymbols> pretree_{};
    std::uint32_t bits_ = 0;
};

}  // namespace tools::cabarc::lzx
