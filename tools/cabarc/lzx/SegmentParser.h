#pragma once
// Chooses the items and blocks of one segment. The matches are looked up once and kept; then the segment is
// parsed several times, each time with prices learnt from the blocks that the parse before led to.

#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/lzx/BlockSplitter.h"
#include "tools/cabarc/lzx/Item.h"
#include "tools/cabarc/lzx/MatchFinder.h"
#include "tools/cabarc/lzx/Parser.h"

namespace tools::cabarc::lzx {

/// What the encoder spends on a folder.
struct LzxOptions {
    SearchLimits Search;
    /// A match this long is taken by the parser at once; nothing that starts inside it is considered.
    std::uint32_t SureLength = kMaxMatch;
    /// Parses of each segment: the first with running prices, the others with the prices of their blocks.
    int Passes = 2;
};

class SegmentParser {
 public:
    SegmentParser(int windowBits, const LzxOptions& options);

    /// The most bytes that a segment takes.
    static constexpr std::uint32_t kMaxBytes = 1U << 20;

    /// Parses the next segment. `buffer` holds the folder from position `bufferStart` on, at least a window
    /// of it (or all of it) before `position`, a frame border. The segment ends after kMaxBytes, or earlier
    /// at a frame border when it has many matches, or with the buffer. Returns its length in bytes.
    std::uint32_t Parse(std::span<const std::uint8_t> buffer, std::uint32_t bufferStart,
                        std::uint32_t position);

    const std::vector<Item>& Items() const { return items_; }
    const std::vector<BlockSpan>& Blocks() const { return blocks_; }

 private:
    std::uint32_t FindMatches(std::span<const std::uint8_t> ahead, std::uint32_t position);
    void ParseFirst(std::span<const std::uint8_t> segment, std::uint32_t position);
    void ParseAgain(std::span<const std::uint8_t> segment, std::uint32_t position);

    LzxOptions options_;
    MatchFinder finder_;
    Parser parser_;
    Prices prices_;
    MatchTable matches_;
    SymbolCounts running_;  ///< what the first parse has seen lately, the older the less it counts
    RepeatQueue queue_;     ///< at the start of the segment
    std::vector<Item> items_;
    std::vector<Item> nextItems_;
    std::vector<BlockSpan> blocks_;
};

}  // namespace tools::cabarc::lzx
