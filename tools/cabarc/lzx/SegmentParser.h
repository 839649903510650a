#pragma once
// Chooses the items and blocks of one segment. The matches are looked up once and kept; then the segment is
// parsed several times, each time with prices learnt from the blocks that the parse before led to.
// SegmentParser.cpp says why that settles, and what it costs.
//
// A segment is what is in memory at once: up to kMaxBytes of the folder, and the matches of all its
// positions.

#include <cstdint>
#include <span>
#include <vector>

#include "tools/cabarc/lzx/BlockSplitter.h"
#include "tools/cabarc/lzx/Item.h"
#include "tools/cabarc/lzx/MatchFinder.h"
#include "tools/cabarc/lzx/OptimalParser.h"

namespace tools::cabarc::lzx {

/// What the encoder spends on a folder.
struct LzxOptions {
    SearchLimits Search;
    /// A match of this many bytes (kMinMatch to kMaxMatch) is taken by the parser at once; nothing that
    /// starts inside it is considered. The default is the longest match; less saves time on long repetitions
    /// and costs size.
    std::uint32_t TakeAtOnceLength = kMaxMatch;
    /// Parses of each segment, at least 1: the first with the prices of what came before, the others with
    /// the prices of their own blocks.
    int Passes = 2;
};

/// Parses one folder, segment by segment. From one segment to the next it keeps the match finder, the recent
/// offsets and the counts that the first pass begins with.
class SegmentParser {
 public:
    /// The most bytes that a segment takes.
    static constexpr std::uint32_t kMaxBytes = 1U << 20;

    /// A segment ends after the frame in which the cache reaches this many matches (four bytes each).
    static constexpr std::size_t kMaxCachedMatches = 3U << 20;

    /// REQUIRES: a window of 15 to 21 bits, and options within their bounds.
    SegmentParser(int windowBits, const LzxOptions& options);

    /// Parses the next segment. `buffer` holds the folder from position `bufferStart` on (bytes from the
    /// start of the folder): at least a window of it, or all of it, before `position`, a frame border, where
    /// the segment before ended. The segment ends after kMaxBytes, or earlier at a frame border when it has
    /// many matches, or with the buffer. Returns its length in bytes. REQUIRES: the buffer ends with the
    /// folder, or a frame or more after the segment.
    std::uint32_t Parse(std::span<const std::uint8_t> buffer, std::uint32_t bufferStart,
                        std::uint32_t position);

    /// The items and blocks of the segment that was parsed last, until the next call of Parse. Items follow
    /// each other without gaps; blocks are those of SplitIntoBlocks.
    const std::vector<Item>& Items() const { return items_; }
    const std::vector<BlockSpan>& Blocks() const { return blocks_; }

 private:
    std::uint32_t FindMatches(std::span<const std::uint8_t> ahead, std::uint32_t position);
    void ParseFirst(std::span<const std::uint8_t> segment, std::uint32_t position);
    void ParseAgain(std::span<const std::uint8_t> segment, std::uint32_t position);

    LzxOptions options_;
    MatchFinder finder_;
    OptimalParser parser_;
    Prices prices_;
    MatchCache matches_;
    SymbolCounts running_;  ///< what the first parse has seen lately, the older the less it counts
    RecentOffsets recent_;  ///< at the start of the segment
    std::vector<Item> items_;
    std::vector<Item> nextItems_;
    std::vector<BlockSpan> blocks_;
};

}  // namespace tools::cabarc::lzx
