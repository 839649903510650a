// The writer decides nothing. It takes each block's plan and writes the parts one after another:
//
//     type, size                                  of every block
//     aligned tree                                of an aligned block
//     encoded code lengths, items                 of a verbatim or aligned block
//     padding, recent offsets, bytes              of an uncompressed block
//
// Only the limit of a frame's size comes back from here to the plan. Codes suit the block as a whole, and a
// frame inside it that is unlike the rest can take up to 16 bits for each byte, twice its size. Readers
// accept about a fifth more than its size (kMaxFramePayload). Such a frame is cut out, stored, and the
// segment written again from its start. As a stored frame is never too large, each round leaves one fewer
// that can be, so this comes to an end; hardly any input needs a second round.

#include "tools/cabarc/lzx/BlockWriter.h"

#include <algorithm>
#include <array>

#include "tools/cabarc/lzx/HuffmanCode.h"
#include "tools/shared/ByteOrder.h"

namespace tools::cabarc::lzx {

BlockWriter::BlockWriter(int windowBits, std::uint32_t translationSize, RecordSink& sink)
    : translationSize_(translationSize), sink_(sink), planner_(windowBits) {}

void BlockWriter::Write(const Segment& segment) {
    std::vector<BlockPlan> plans = planner_.Plan(segment.Items, segment.Blocks);
    const RecentOffsets atStart = recent_;
    for (;;) {
        WriteBlocks(segment, plans);
        const auto tooLarge = std::find_if(frames_.begin(), frames_.end(), [](const Frame& frame) {
            return frame.Payload.size() > kMaxFramePayload;
        });
        if (tooLarge == frames_.end()) break;
        const auto begin = static_cast<std::uint32_t>(tooLarge - frames_.begin()) * kFrameSize;
        plans = planner_.StoreFrame(segment.Items, std::move(plans), begin, begin + tooLarge->Size);
        recent_ = atStart;
        frames_.clear();
    }
    planner_.Commit(plans);
    for (const Frame& frame : frames_) sink_.PutRecord(frame.Payload, static_cast<std::uint16_t>(frame.Size));
    frames_.clear();
    startWritten_ = true;
}

void BlockWriter::WriteBlocks(const Segment& segment, std::span<const BlockPlan> plans) {
    if (!startWritten_) {
        bits_.Put(translationSize_ != 0 ? 1 : 0, 1);
        if (translationSize_ != 0) bits_.Put(translationSize_, 32);
    }
    for (const BlockPlan& plan : plans) {
        bits_.Put(static_cast<std::uint32_t>(plan.Type), kBlockTypeBits);
        bits_.Put(plan.Span.Bytes(), kBlockSizeBits);
        if (plan.IsCoded()) {
            WriteCoded(segment, plan);
        } else {
            WriteUncompressed(segment, plan.Span);
        }
    }
    if (inFrame_ > 0) EndFrame();
}

void BlockWriter::WriteUncompressed(const Segment& segment, const BlockSpan& span) {
    for (const Item item : span.ItemsIn(segment.Items)) recent_.Apply(item);
    bits_.PadBeforeRawBytes();
    // The block sets the recent offsets. Setting them to what the parse has after these bytes keeps all
    // later items valid.
    std::array<std::uint8_t, 4 * kRecentOffsets> recent;
    for (std::size_t i = 0; i < kRecentOffsets; ++i) PutU32(recent.data() + 4 * i, recent_.Offsets[i]);
    bits_.PutBytes(recent);
    for (std::uint32_t at = span.Begin; at < span.End;) {
        const std::uint32_t part = std::min(span.End - at, kFrameSize - inFrame_);
        bits_.PutBytes(segment.Bytes.subspan(at, part));
        at += part;
        const bool hasPadByte = span.Bytes() % 2 != 0;
        if (at == span.End && hasPadByte) bits_.PutBytes(std::array<std::uint8_t, 1>{0});
        Advance(part);
    }
}

void BlockWriter::WriteCoded(const Segment& segment, const BlockPlan& plan) {
    if (plan.Type == BlockType::Aligned)
        for (const std::uint8_t length : plan.Codes.Aligned) bits_.Put(length, kAlignedLengthBits);
    plan.Trees->Write(bits_);
    WriteItems(plan.Span.ItemsIn(segment.Items), plan.Codes, plan.Type);
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
        if (symbols.Slot >= kRecentOffsets) {
            const std::uint32_t extra = item.Formatted() - SlotBase(symbols.Slot);
            if (type == BlockType::Aligned && symbols.Aligned >= 0) {
                const auto aligned = static_cast<std::size_t>(symbols.Aligned);
                bits_.Put(extra >> kAlignedBits, ExtraBits(symbols.Slot) - kAlignedBits);
                bits_.Put(alignedCodes[aligned], lengths.Aligned[aligned]);
            } else {
                bits_.Put(extra, ExtraBits(symbols.Slot));
            }
        }
        recent_.Apply(item);
        Advance(item.Length());
    }
}

// Counts the bytes that the bits so far stand for, and closes a full frame. No item crosses the end of a
// frame, so the count meets it exactly.
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
