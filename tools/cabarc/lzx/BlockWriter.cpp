#include "tools/cabarc/lzx/BlockWriter.h"

#include <algorithm>
#include <array>

#include "tools/cabarc/lzx/HuffmanCode.h"
#include "tools/cabarc/lzx/TreeHeader.h"
#include "tools/shared/ByteOrder.h"

namespace tools::cabarc::lzx {

static_assert(kFrameSize == tools::cabarc::kFrameSize);

namespace {

constexpr std::uint64_t kAlignedTreeBits = 3 * kAlignedSymbols;
// An uncompressed block's padding (8.5 bits in the mean) and repeat queue.
constexpr std::uint64_t kRawOverheadBits = 9 + 32 * kRepeats;

// The three length lists of a block header, worded.
struct Trees {
    Trees(const CodeLengths& before, const CodeLengths& codes, std::size_t mainSymbols)
        : Literals(std::span(before.Main).first(kLiterals), std::span(codes.Main).first(kLiterals)),
          Matches(std::span(before.Main).first(mainSymbols).subspan(kLiterals),
                  std::span(codes.Main).first(mainSymbols).subspan(kLiterals)),
          Lengths(before.Length, codes.Length) {}

    std::uint32_t Bits() const { return Literals.Bits() + Matches.Bits() + Lengths.Bits(); }

    TreeHeader Literals;
    TreeHeader Matches;
    TreeHeader Lengths;
};

bool IsOdd(std::uint32_t n) {
    return n % 2 != 0;
}

}  // namespace

BlockWriter::BlockWriter(int windowBits, std::uint32_t translationSize, BlockSink& sink)
    : mainSymbols_(static_cast<std::size_t>(MainSymbols(windowBits))),
      translationSize_(translationSize),
      sink_(sink) {}

void BlockWriter::Write(const Segment& segment) {
    std::vector<Block> blocks = ChooseRawBlocks(segment);
    const State start = state_;
    for (;;) {
        WriteBlocks(segment, blocks);
        const auto tooLarge = std::find_if(frames_.begin(), frames_.end(), [](const Frame& frame) {
            return frame.Payload.size() > kMaxFramePayload;
        });
        if (tooLarge == frames_.end()) break;
        // A frame that does not suit the trees it lies under is cut out and stored. That makes one frame
        // fewer that can be too large, so this comes to an end.
        const auto begin = static_cast<std::uint32_t>(tooLarge - frames_.begin()) * kFrameSize;
        blocks = StoreFrame(segment, blocks, begin, begin + tooLarge->Size);
        state_ = start;
        frames_.clear();
    }
    for (const Frame& frame : frames_) sink_.PutBlock(frame.Payload, static_cast<std::uint16_t>(frame.Size));
    frames_.clear();
    startWritten_ = true;
}

// Cuts the blocks at the borders of one frame and makes the frame an uncompressed block.
std::vector<BlockWriter::Block> BlockWriter::StoreFrame(const Segment& segment,
                                                        const std::vector<Block>& blocks, std::uint32_t begin,
                                                        std::uint32_t end) {
    std::vector<Block> result;
    BlockSpan stored{0, 0, begin, end};
    for (const Block& block : blocks) {
        // Items never cross a frame border, so the cuts fall between items.
        std::size_t item = block.Span.FirstItem;
        std::uint32_t at = block.Span.Begin;
        const auto takeUpTo = [&](std::uint32_t limit) {
            BlockSpan part{item, item, at, at};
            while (part.EndItem < block.Span.EndItem && part.End < limit)
                part.End += segment.Items[part.EndItem++].Length();
            item = part.EndItem;
            at = part.End;
            return part;
        };
        const BlockSpan before = takeUpTo(begin);
        const BlockSpan inside = takeUpTo(end);
        const BlockSpan after = takeUpTo(block.Span.End);
        if (before.End > before.Begin) result.push_back({before, block.Raw});
        if (inside.End > inside.Begin) {
            if (inside.Begin == begin) stored.FirstItem = inside.FirstItem;
            stored.EndItem = inside.EndItem;
            if (inside.End == end) result.push_back({stored, true});
        }
        if (after.End > after.Begin) result.push_back({after, block.Raw});
    }
    return result;
}

// Marks the blocks that are cheaper as plain bytes. Readers disagree about where the pad byte of an odd-sized
// block goes, so a stored block gives items to its neighbours until it begins and ends at even places; only
// the end of the folder may be odd.
std::vector<BlockWriter::Block> BlockWriter::ChooseRawBlocks(const Segment& segment) const {
    std::vector<Block> blocks;
    CodeLengths before = state_.Codes;
    for (const BlockSpan& span : segment.Blocks) {
        SymbolCounts counts;
        counts.Add(segment.Items.subspan(span.FirstItem, span.EndItem - span.FirstItem));
        const CodeLengths codes = BuildCodes(counts);
        const std::uint64_t coded = Trees(before, codes, mainSymbols_).Bits() +
                                    std::min(BodyBits(counts, codes, BlockType::Verbatim),
                                             BodyBits(counts, codes, BlockType::Aligned) + kAlignedTreeBits);
        const bool raw = kRawOverheadBits + 8 * std::uint64_t{span.End - span.Begin} < coded;
        if (raw && !blocks.empty() && blocks.back().Raw) {
            blocks.back().Span.EndItem = span.EndItem;
            blocks.back().Span.End = span.End;
        } else {
            blocks.push_back({span, raw});
        }
        if (!raw) before = codes;
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (!blocks[i].Raw) continue;
        BlockSpan& span = blocks[i].Span;
        // The first block of a segment begins at a frame border, which is even.
        while (IsOdd(span.Begin) && span.FirstItem < span.EndItem) {
            span.Begin += segment.Items[span.FirstItem++].Length();
            blocks[i - 1].Span.End = span.Begin;
            blocks[i - 1].Span.EndItem = span.FirstItem;
        }
        while (IsOdd(span.End) && i + 1 < blocks.size() && span.FirstItem < span.EndItem) {
            span.End -= segment.Items[--span.EndItem].Length();
            blocks[i + 1].Span.Begin = span.End;
            blocks[i + 1].Span.FirstItem = span.EndItem;
        }
    }
    std::erase_if(blocks, [](const Block& block) { return block.Span.Begin == block.Span.End; });
    return blocks;
}

void BlockWriter::WriteBlocks(const Segment& segment, const std::vector<Block>& blocks) {
    if (!startWritten_) {
        bits_.Put(translationSize_ != 0 ? 1 : 0, 1);
        if (translationSize_ != 0) bits_.Put(translationSize_, 32);
    }
    for (const Block& block : blocks) {
        if (block.Raw) {
            WriteRaw(segment, block.Span);
        } else {
            WriteCoded(segment, block.Span);
        }
    }
    if (inFrame_ > 0) EndFrame();
}

void BlockWriter::WriteRaw(const Segment& segment, const BlockSpan& span) {
    for (std::size_t i = span.FirstItem; i < span.EndItem; ++i) state_.Queue.Apply(segment.Items[i]);
    bits_.Put(static_cast<std::uint32_t>(BlockType::Uncompressed), kBlockTypeBits);
    bits_.Put(span.End - span.Begin, kBlockSizeBits);
    bits_.PadBeforeRawBytes();
    // The block sets the queue. Setting what the parse has after these bytes keeps all later items valid.
    std::array<std::uint8_t, 4 * kRepeats> queue;
    for (std::size_t i = 0; i < kRepeats; ++i) PutU32(queue.data() + 4 * i, state_.Queue.Offsets[i]);
    bits_.PutBytes(queue);
    for (std::uint32_t at = span.Begin; at < span.End;) {
        const std::uint32_t part = std::min(span.End - at, kFrameSize - inFrame_);
        bits_.PutBytes(segment.Bytes.subspan(at, part));
        at += part;
        if (at == span.End && IsOdd(span.End - span.Begin)) bits_.PutBytes(std::array<std::uint8_t, 1>{0});
        Advance(part);
    }
}

void BlockWriter::WriteCoded(const Segment& segment, const BlockSpan& span) {
    const std::span<const Item> items = segment.Items.subspan(span.FirstItem, span.EndItem - span.FirstItem);
    SymbolCounts counts;
    counts.Add(items);
    const CodeLengths codes = BuildCodes(counts);
    const BlockType type = BodyBits(counts, codes, BlockType::Aligned) + kAlignedTreeBits <
                                   BodyBits(counts, codes, BlockType::Verbatim)
                               ? BlockType::Aligned
                               : BlockType::Verbatim;
    bits_.Put(static_cast<std::uint32_t>(type), kBlockTypeBits);
    bits_.Put(span.End - span.Begin, kBlockSizeBits);
    if (type == BlockType::Aligned)
        for (const std::uint8_t length : codes.Aligned) bits_.Put(length, 3);
    const Trees trees(state_.Codes, codes, mainSymbols_);
    trees.Literals.Write(bits_);
    trees.Matches.Write(bits_);
    trees.Lengths.Write(bits_);
    state_.Codes = codes;
    WriteItems(items, codes, type);
}

void BlockWriter::WriteItems(std::span<const Item> items, const CodeLengths& lengths, BlockType type) {
    std::array<std::uint16_t, kMaxMainSymbols> mainCodes;
    std::array<std::uint16_t, kLengthSymbols> lengthCodes;
    std::array<std::uint16_t, kAlignedSymbols> alignedCodes;
    AssignCodes(lengths.Main, mainCodes);
    AssignCodes(lengths.Length, lengthCodes);
    AssignCodes(lengths.Aligned, alignedCodes);
    for (const Item item : items) {
        const ItemSymbols symbols(item);
        const auto main = static_cast<std::size_t>(symbols.Main);
        bits_.Put(mainCodes[main], lengths.Main[main]);
        if (symbols.Length >= 0) {
            const auto length = static_cast<std::size_t>(symbols.Length);
            bits_.Put(lengthCodes[length], lengths.Length[length]);
        }
        if (symbols.Slot >= kRepeats) {
            const std::uint32_t extra = item.Formatted() - SlotBase(symbols.Slot);
            if (type == BlockType::Aligned && symbols.Aligned >= 0) {
                const auto aligned = static_cast<std::size_t>(symbols.Aligned);
                bits_.Put(extra >> 3, ExtraBits(symbols.Slot) - 3);
                bits_.Put(alignedCodes[aligned], lengths.Aligned[aligned]);
            } else {
                bits_.Put(extra, ExtraBits(symbols.Slot));
            }
        }
        state_.Queue.Apply(item);
        Advance(item.Length());
    }
}

// Counts bytes that the bits so far stand for; a full frame is closed.
void BlockWriter::Advance(std::uint32_t bytes) {
    inFrame_ += bytes;
    if (inFrame_ == kFrameSize) EndFrame();
}

void BlockWriter::EndFrame() {
    bits_.PadToWord();
    frames_.push_back({bits_.Bytes(), inFrame_});
    bits_.Clear();
    inFrame_ = 0;
}

}  // namespace tools::cabarc::lzx
