#include "tools/cabarc/lzx/BlockWriter.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/TestData.h"
#include "tests/tools/cabarc/lzx/LzxDecoder.h"
#include "tools/cabarc/lzx/BlockPlanner.h"

namespace tools::cabarc::lzx::testing {
namespace {

using tools::testing::Bytes;
using tools::testing::RandomBytes;

constexpr int kWriterWindow = 16;

// A folder that is being packed: items with the bytes that they stand for, and the blocks into which they
// are divided.
class PackedFolder {
 public:
    void Literals(const Bytes& bytes) {
        for (const std::uint8_t byte : bytes) {
            Items.push_back(Item::Literal(byte));
            Content.push_back(byte);
        }
    }
    void Match(std::uint32_t length, std::uint32_t formatted) {
        Items.push_back(Item::Match(length, formatted));
        const std::uint32_t offset = recent_.Apply(formatted);
        for (std::uint32_t i = 0; i < length; ++i) Content.push_back(Content[Content.size() - offset]);
    }
    void EndBlock() {
        BlockSpan span{0, Items.size(), 0, static_cast<std::uint32_t>(Content.size())};
        if (!Spans.empty()) span = {Spans.back().EndItem, span.EndItem, Spans.back().End, span.End};
        Spans.push_back(span);
    }

    FrameCollector Written() const {
        FrameCollector frames;
        BlockWriter(kWriterWindow, 0, frames).Write({Content, Items, Spans});
        return frames;
    }

    Bytes Content;
    std::vector<Item> Items;
    std::vector<BlockSpan> Spans;

 private:
    RecentOffsets recent_;
};

// Appends literals of a small alphabet with matches of every length and many offsets between them, up to
// `size` bytes; no match crosses the end of a frame.
void AppendMixture(PackedFolder& folder, std::size_t size, std::uint32_t step, std::uint32_t seed) {
    const Bytes noise = RandomBytes(4 * size, seed);
    for (std::size_t i = 0; folder.Content.size() < size; i += 4) {
        const std::size_t frameEnd = (folder.Content.size() / 32768 + 1) * 32768;
        const std::size_t left = std::min(size, frameEnd) - folder.Content.size();
        const std::size_t length = 2 + noise[i + 1];
        const std::uint32_t offset = (noise[i + 2] * 16U + noise[i + 3]) / step * step;
        if (noise[i] < 60 && length <= left && offset > 2 && offset <= folder.Content.size()) {
            folder.Match(static_cast<std::uint32_t>(length), offset + 2);
        } else {
            folder.Literals({static_cast<std::uint8_t>(noise[i] % 50)});
        }
    }
}

TEST(BlockWriter, WritesWhatADecoderReads) {
    PackedFolder folder;
    AppendMixture(folder, 30'001, 1, 1);
    folder.EndBlock();
    AppendMixture(folder, 80'000, 8, 2);
    folder.EndBlock();
    // An uncompressed block with matches inside: it sets the recent offsets that matches after it use.
    folder.Literals(RandomBytes(10'000, 3));
    for (const std::uint32_t offset : {5'000U, 777U, 23U}) folder.Match(3, offset + 2);
    folder.Literals(RandomBytes(9'991, 4));
    folder.EndBlock();
    for (const std::uint32_t recent : {2U, 1U, 0U, 2U}) folder.Match(30, recent);
    AppendMixture(folder, 131'072, 1, 4);
    folder.EndBlock();
    LzxContents contents;
    EXPECT_TRUE(DecodeLzx(folder.Written().Frames, kWriterWindow, &contents) == folder.Content);
    EXPECT_EQ(3U, contents.Verbatim + contents.Aligned);
    EXPECT_EQ(1U, contents.Uncompressed);
}

TEST(BlockWriter, CarriesCodesAndOffsetsFromSegmentToSegment) {
    PackedFolder first;
    AppendMixture(first, 65'536, 1, 5);
    first.EndBlock();
    FrameCollector frames;
    BlockWriter writer(kWriterWindow, 0, frames);
    writer.Write({first.Content, first.Items, first.Spans});
    const std::size_t firstSize = frames.PackedSize();
    // The same again, with the offsets that the decoder has by then.
    PackedFolder whole = first;
    const std::size_t firstItems = whole.Items.size();
    for (int i = 0; i < 100; ++i) whole.Match(20, static_cast<std::uint32_t>(i % 3));
    for (const Item item : first.Items) {
        if (whole.Content.size() > 98'000) break;
        if (item.IsLiteral()) whole.Literals({item.Byte()});
    }
    const std::span<const Item> secondItems = std::span(whole.Items).subspan(firstItems);
    const std::span<const std::uint8_t> secondBytes = std::span(whole.Content).subspan(65'536);
    const std::vector<BlockSpan> spans{
        {0, secondItems.size(), 0, static_cast<std::uint32_t>(secondBytes.size())}};
    ASSERT_LE(secondBytes.size(), 32'768U);
    writer.Write({secondBytes, secondItems, spans});
    EXPECT_GT(frames.PackedSize(), firstSize);
    EXPECT_TRUE(DecodeLzx(frames.Frames, kWriterWindow) == whole.Content);
}

TEST(BlockWriter, TakesAsManyBitsAsTheBlockIsPricedAt) {
    for (const std::uint32_t step : {1U, 8U}) {
        PackedFolder folder;
        AppendMixture(folder, 32'000, step, 6);
        folder.EndBlock();
        const std::vector<BlockPlan> plans = BlockPlanner(kWriterWindow).Plan(folder.Items, folder.Spans);
        ASSERT_EQ(1U, plans.size());
        const BlockPlan& plan = plans[0];
        EXPECT_EQ(plan.Type, step == 8 ? BlockType::Aligned : BlockType::Verbatim);
        SymbolCounts counts;
        counts.Add(folder.Items);
        const std::uint64_t bits =
            1 + 3 + 24 + (step == 8 ? 24 : 0) + plan.Trees->Bits() + BodyBits(counts, plan.Codes, plan.Type);
        EXPECT_EQ(folder.Written().PackedSize(), (bits + 15) / 16 * 2);
    }
}

TEST(BlockWriter, StoresAFrameThatItsBlocksCodesWouldMakeTooLarge) {
    // Fifteen frames of sixteen letters and one frame of noise, all in one block: the noise would take about
    // 12 bits a byte.
    PackedFolder folder;
    for (std::uint32_t frame = 0; frame < 16; ++frame) {
        Bytes bytes = RandomBytes(32'768, frame);
        if (frame != 7)
            for (std::uint8_t& byte : bytes) byte %= 16;
        folder.Literals(bytes);
    }
    folder.EndBlock();
    const FrameCollector frames = folder.Written();
    ASSERT_EQ(16U, frames.Frames.size());
    LzxContents contents;
    EXPECT_TRUE(DecodeLzx(frames.Frames, kWriterWindow, &contents) == folder.Content);
    EXPECT_EQ(1U, contents.Uncompressed);
    EXPECT_EQ(2U, contents.Verbatim);
    EXPECT_LE(frames.Frames[7].Payload.size(), 32'768U + 20);
    EXPECT_LT(frames.Frames[8].Payload.size(), 17'000U);
}

TEST(BlockWriter, AnnouncesTheTranslationOnceAtTheStart) {
    PackedFolder folder;
    AppendMixture(folder, 32'768, 1, 8);
    folder.EndBlock();
    FrameCollector frames;
    BlockWriter writer(kWriterWindow, 12'000'000, frames);
    writer.Write({folder.Content, folder.Items, folder.Spans});
    // One bit, then 0x00B71B00, high word first.
    const Bytes& start = frames.Frames[0].Payload;
    EXPECT_EQ(start[1], 0x80 | (0x00B7 >> 9));
    EXPECT_EQ(start[0], (0x00B7 >> 1) & 0xFF);
    EXPECT_EQ(start[3], 0x80 | (0x1B00 >> 9));
    EXPECT_EQ(start[2], (0x1B00 >> 1) & 0xFF);
}

}  // namespace
}  // namespace tools::cabarc::lzx::testing
