// Prices and parse depend on each other: a parse needs prices, prices are those of codes, and codes come from
// the counts of a parse. So a segment is parsed several times.
//
//   First pass    frame by frame, with prices from what the frames before led to. What was seen last counts
//                 most: at each frame all older counts are halved. The counts run on from segment to segment.
//   Split         into blocks by the items of the pass. It needs items, so it comes after a parse.
//   Second pass   block by block, each with the prices of the codes that its own items would have. Then the
//                 segment is split again, as the items have changed.
//
// A pass makes the parse fit codes that fit the parse before; nothing proves that it converges, or even that
// a pass never makes the output larger. It settles quickly all the same, for the shape of the counts is that
// of the data: further passes change few items.
//
// The matches are the same in every pass. Finding them costs as much as a parse, so they are kept, four
// bytes for each, which is why there are segments at all: the cache for a whole folder would be many times
// the folder's size. The cache ends a segment early where matches are many; then it holds at least
// kMaxCachedMatches, and at most one frame's matches more. Segments end at frame borders, which no match
// crosses, so that cutting costs nothing but the block that ends there.
//
// The inside of a match of the take-at-once length is entered into the match finder but not searched: the
// parser never expands a node there. (A parse may not take that match, when something longer at a recent
// offset ends elsewhere. Then the nodes after that end have no matches in the cache, only literals and
// recent offsets, until the place where the skipped match ends.)
//
// One pass, with the prices of what came before, is the right choice only where time matters much more than
// size: a pass takes about a third of the time of packing. Data that must leave at once, before a segment is
// complete, cannot be packed in this way.

#include "tools/cabarc/lzx/SegmentParser.h"

#include <algorithm>

namespace tools::cabarc::lzx {

namespace {

// What the first parse believes before it has seen anything: flat literals, and matches that are the rarer
// the longer and the farther they are.
SymbolCounts FirstGuess() {
    SymbolCounts counts;
    std::fill_n(counts.Main.begin(), kLiterals, 4U);
    for (int slot = 0; slot < kMaxSlots; ++slot)
        for (int header = 0; header < kLengthHeaders; ++header)
            counts.Main[static_cast<std::size_t>(kLiterals + slot * kLengthHeaders + header)] =
                slot < kRecentOffsets ? 6U : 2U;
    for (std::size_t i = 0; i < kLengthSymbols; ++i)
        counts.Length[i] = static_cast<std::uint32_t>(std::max<std::size_t>(1, 60 / (i + 1)));
    counts.Aligned.fill(1);
    return counts;
}

// The type of block for which a stretch with these counts is parsed. What the aligned tree costs is left out:
// a parse for an aligned block makes the low bits more uneven and may well earn it. Counting it here made the
// output larger, by up to 0.03 %.
BlockType TypeToParseFor(const SymbolCounts& counts) {
    const CodeLengths codes = BuildCodes(counts);
    const bool aligned =
        BodyBits(counts, codes, BlockType::Aligned) < BodyBits(counts, codes, BlockType::Verbatim);
    return aligned ? BlockType::Aligned : BlockType::Verbatim;
}

// Lets what was seen so far count half.
void Fade(SymbolCounts& counts) {
    for (std::uint32_t& n : counts.Main) n = (n + 1) / 2;
    for (std::uint32_t& n : counts.Length) n = (n + 1) / 2;
    for (std::uint32_t& n : counts.Aligned) n = (n + 1) / 2;
}

}  // namespace

SegmentParser::SegmentParser(int windowBits, const LzxOptions& options)
    : options_(options),
      finder_(windowBits, options.Search),
      parser_(options.TakeAtOnceLength),
      running_(FirstGuess()) {
    // Whether the cache is full is asked before each frame. A position has one match from the pairs, one from
    // the triples and at most one for each node that the search visits.
    const std::size_t mostOfPosition = std::min<std::size_t>(
        static_cast<std::size_t>(options.Search.Depth) + 2, MatchFinder::kMaxMatchesOfPosition);
    matches_.All.reserve(kMaxCachedMatches + kFrameSize * mostOfPosition);
    matches_.First.reserve(kMaxBytes + 1);
}

std::uint32_t SegmentParser::FindMatches(std::span<const std::uint8_t> ahead, std::uint32_t position) {
    const auto end = static_cast<std::uint32_t>(std::min<std::size_t>(ahead.size(), kMaxBytes));
    matches_.All.clear();
    matches_.First.clear();
    // push_back of a temporary would also ask the vector for its last element.
    const auto beginPosition = [&] {
        const auto first = static_cast<std::uint32_t>(matches_.All.size());
        matches_.First.push_back(first);
    };
    std::uint32_t i = 0;
    while (i < end && matches_.All.size() < kMaxCachedMatches) {
        const std::uint32_t frameEnd = std::min(i + kFrameSize, end);
        while (i < frameEnd) {
            beginPosition();
            const auto available = static_cast<std::uint32_t>(ahead.size() - i);
            const std::uint32_t length =
                finder_.Find(position + i, ahead.data() + i, available, frameEnd - i, matches_.All);
            ++i;
            if (length < options_.TakeAtOnceLength) continue;
            // The parser will take this match and jump over its inside.
            for (const std::uint32_t last = i + length - 1; i < last; ++i) {
                beginPosition();
                finder_.Skip(position + i, ahead.data() + i, static_cast<std::uint32_t>(ahead.size() - i));
            }
        }
    }
    beginPosition();
    return i;
}

void SegmentParser::ParseFirst(std::span<const std::uint8_t> segment, std::uint32_t position) {
    RecentOffsets recent = recent_;
    items_.clear();
    for (std::size_t i = 0; i < segment.size(); i += kFrameSize) {
        const std::size_t firstItem = items_.size();
        prices_.Learn(running_, BlockType::Verbatim);
        parser_.Parse(&segment[i],
                      static_cast<std::uint32_t>(std::min<std::size_t>(kFrameSize, segment.size() - i)),
                      matches_, i, position + i, prices_, recent, items_);
        Fade(running_);
        running_.Add(std::span(items_).subspan(firstItem));
    }
}

void SegmentParser::ParseAgain(std::span<const std::uint8_t> segment, std::uint32_t position) {
    RecentOffsets recent = recent_;
    nextItems_.clear();
    for (BlockSpan& block : blocks_) {
        SymbolCounts counts;
        counts.Add(block.ItemsIn(items_));
        prices_.Learn(counts, TypeToParseFor(counts));
        block.FirstItem = nextItems_.size();
        for (std::uint32_t i = block.Begin; i < block.End;) {
            const std::uint32_t end = std::min(block.End, (i / kFrameSize + 1) * kFrameSize);
            parser_.Parse(&segment[i], end - i, matches_, i, position + i, prices_, recent, nextItems_);
            i = end;
        }
        block.EndItem = nextItems_.size();
    }
    std::swap(items_, nextItems_);
}

std::uint32_t SegmentParser::Parse(std::span<const std::uint8_t> buffer, std::uint32_t bufferStart,
                                   std::uint32_t position) {
    const std::span<const std::uint8_t> ahead = buffer.subspan(position - bufferStart);
    const std::span<const std::uint8_t> segment = ahead.first(FindMatches(ahead, position));
    ParseFirst(segment, position);
    blocks_ = SplitIntoBlocks(items_);
    for (int pass = 1; pass < options_.Passes; ++pass) {
        ParseAgain(segment, position);
        blocks_ = SplitIntoBlocks(items_);
    }
    for (const Item item : items_) recent_.Apply(item);
    return static_cast<std::uint32_t>(segment.size());
}

}  // namespace tools::cabarc::lzx
