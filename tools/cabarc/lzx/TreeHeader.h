#pragma once
// Code lengths as a block header carries them: differences to the lengths of the block before, with runs,
// under a small tree of their own. Many wordings say the same lengths; this finds one of the shortest.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/lzx/BitWriter.h"
#include "tools/cabarc/lzx/LzxFormat.h"

namespace tools::cabarc::lzx {

/// One list of code lengths, worded for the stream.
class TreeHeader {
 public:
    /// Words `lengths`, the list that the reader has now being `previous` (both equally long, lengths up to
    /// 16).
    TreeHeader(std::span<const std::uint8_t> previous, std::span<const std::uint8_t> lengths);

    /// Size in the stream, in bits.
    std::uint32_t Bits() const { return bits_; }

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
