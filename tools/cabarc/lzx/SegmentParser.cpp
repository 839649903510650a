#include "tools/cabarc/lzx/SegmentParser.h"

#include <algorithm>

namespace tools::cabarc::lzx {

namespace {

// A segment ends when this many matches are cached (four bytes each).
constexpr std::size_t kMaxCachedMatches = 3U << 20;

// What the first parse believes before it has seen anything: flat literals, and matches that are the rarer
// the longer and the farther they are.
SymbolCounts FirstGuess() {
    SymbolCounts counts;
    std::fill_n(counts.Main.begin(), kLiterals, 4U);
    for (int slot = 0; slot < kMaxSlots; ++slot)
        for (int header = 0; header < kLengthHeaders; ++header)
            counts.Main[static_cast<std::size_t>(kLiterals + slot * kLengthHeaders + header)] =
                slot < kRepeats ? 6U : 2U;
    for (std::size_t i = 0; i < kLengthSymbols; ++i)
        counts.Length[i] = static_cast<std::uint32_t>(std::max<std::size_t>(1, 60 / (i + 1)));
    counts.Aligned.fill(1);
    return counts;
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
      parser_(options.SureLength),
      running_(FirstGuess()) {
    matches_.All.reserve(kMaxCachedMatches + kFrameSize * static_cast<std::size_t>(options.Search.Depth + 2));
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
            if (length < options_.SureLength) continue;
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

// Frame by frame, with prices from the frames before.
void SegmentParser::ParseFirst(std::span<const std::uint8_t> segment, std::uint32_t position) {
    RepeatQueue queue = queue_;
    items_.clear();
    for (std::size_t i = 0; i < segment.size(); i += kFrameSize) {
        const std::size_t firstItem = items_.size();
        prices_.Learn(running_, false);
        parser_.Parse(&segment[i],
                      static_cast<std::uint32_t>(std::min<std::size_t>(kFrameSize, segment.size() - i)),
                      matches_, i, position + i, prices_, queue, items_);
        Fade(running_);
        running_.Add(std::span(items_).subspan(firstItem));
    }
}

void SegmentParser::ParseAgain(std::span<const std::uint8_t> segment, std::uint32_t position) {
    RepeatQueue queue = queue_;
    nextItems_.clear();
    for (BlockSpan& block : blocks_) {
        SymbolCounts counts;
        counts.Add(std::span(items_).subspan(block.FirstItem, block.EndItem - block.FirstItem));
        const CodeLengths codes = BuildCodes(counts);
        prices_.Learn(counts, BodyBits(counts, codes, BlockType::Aligned) <
                                  BodyBits(counts, codes, BlockType::Verbatim));
        block.FirstItem = nextItems_.size();
        for (std::uint32_t i = block.Begin; i < block.End;) {
            const std::uint32_t end = std::min(block.End, (i / kFrameSize + 1) * kFrameSize);
            parser_.Parse(&segment[i], end - i, matches_, i, position + i, prices_, queue, nextItems_);
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
    for (const Item item : items_) queue_.Apply(item);
    return static_cast<std::uint32_t>(segment.size());
}

}  // namespace tools::cabarc::lzx
