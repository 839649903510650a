// LZX: what few packers write and a decoder has to know nevertheless, and what it must reject.

#include <gtest/gtest.h>

#include "tests/realmode/unpack/CabinetBuilder.h"
#include "tests/realmode/unpack/FlatMachine.h"
#include "tests/realmode/unpack/StreamWriters.h"

namespace realmode::unpack::testing {
namespace {

Outcome UnpackLzx(const std::vector<BuiltRecord>& records) {
    return Unpack(OneFile(Lzx(15), records).Build());
}

// Returns the bytes of the file in a valid cabinet.
Bytes LzxFile(const std::vector<BuiltRecord>& records) {
    const Outcome outcome = UnpackLzx(records);
    EXPECT_EQ(Fault::None, outcome.Result) << TextOf(outcome.Result);
    return outcome.Target.Files.at("F").Contents;
}

Fault LzxFault(const std::vector<BuiltRecord>& records) {
    return UnpackLzx(records).Result;
}

// A frame of one verbatim block with the letter a (code 0) and a match (code 1), up to its items.
LzxWriter Begun(std::uint32_t size, unsigned match, const CodeLengths& lengths = {}) {
    LzxWriter writer;
    writer.NothingTranslated();
    writer.BlockHeader(LzxWriter::kVerbatim, size);
    writer.Trees({{'a', 1}, {match, 1}}, lengths);
    return writer;
}

TEST(Lzx, ARepeatedMatchOverlapsItself) {
    LzxWriter writer = Begun(9, LzxWriter::Match(0, 8));
    writer.Put(0b01, 2);
    EXPECT_EQ(Text("aaaaaaaaa"), LzxFile({{writer.Frame(), 9}}));
}

TEST(Lzx, ALengthOfTheLengthTreeIsAddedToNine) {
    LzxWriter writer = Begun(258, LzxWriter::Match(0, 9), {{0, 1}, {248, 1}});
    writer.Put(0b011, 3);
    EXPECT_EQ(Bytes(258, 'a'), LzxFile({{writer.Frame(), 258}}));
}

TEST(Lzx, AnUncompressedBlockSetsTheQueue) {
    LzxWriter writer;
    writer.NothingTranslated();
    writer.BlockHeader(LzxWriter::kUncompressed, 4);
    writer.Queue(3, 2, 4);
    writer.Raw(Text("wxyz"));
    writer.BlockHeader(LzxWriter::kVerbatim, 6);
    writer.Trees({{LzxWriter::Match(0, 2), 1}, {LzxWriter::Match(1, 2), 2}, {LzxWriter::Match(2, 2), 2}});
    writer.Put(0b0'10'11, 5);
    // R0 = 3: "xy"; R1 = 2, now first: "xy"; R2 = 4: "xy".
    EXPECT_EQ(Text("wxyzxyxyxy"), LzxFile({{writer.Frame(), 10}}));
}

TEST(Lzx, TheThirdDistanceIsExchangedAndNotMovedUp) {
    LzxWriter writer;
    writer.NothingTranslated();
    writer.BlockHeader(LzxWriter::kUncompressed, 4);
    writer.Queue(1, 2, 4);
    writer.Raw(Text("wxyz"));
    writer.BlockHeader(LzxWriter::kVerbatim, 6);
    writer.Trees({{LzxWriter::Match(1, 2), 1}, {LzxWriter::Match(2, 2), 1}});
    writer.Put(0b1'0'1, 3);
    // R2 = 4: "wx", queue 4 2 1; R1 = 2: "wx", queue 2 4 1; R2 = 1: "xx".
    EXPECT_EQ(Text("wxyzwxwxxx"), LzxFile({{writer.Frame(), 10}}));
}

TEST(Lzx, AfterAHeaderThatFillsItsWordSixteenBitsOfPaddingFollow) {
    // With one of these numbers of letters the second header ends with its word.
    for (int letters = 1; letters <= 16; ++letters) {
        LzxWriter writer;
        writer.NothingTranslated();
        writer.BlockHeader(LzxWriter::kVerbatim, static_cast<std::uint32_t>(letters));
        writer.Trees({{'a', 1}, {'b', 1}});
        writer.Put(0, letters);
        writer.BlockHeader(LzxWriter::kUncompressed, 2);
        writer.Queue(1, 1, 1);
        writer.Raw(Text("xy"));
        Bytes expected(static_cast<std::size_t>(letters), 'a');
        expected.insert(expected.end(), {'x', 'y'});
        EXPECT_EQ(expected, LzxFile({{writer.Frame(), static_cast<unsigned>(letters) + 2}})) << letters;
    }
}

// An odd uncompressed block that ends with its frame; then a frame with a block of one letter.
std::vector<BuiltRecord> OddBlockAtFrameEnd(bool padInFirst, bool padInSecond) {
    LzxWriter writer;
    writer.NothingTranslated();
    writer.BlockHeader(LzxWriter::kUncompressed, 1);
    writer.Queue(1, 1, 1);
    writer.Raw({'x', 0});
    writer.BlockHeader(LzxWriter::kUncompressed, kFrameBytes - 1);
    writer.Queue(1, 1, 1);
    writer.Raw(Bytes(kFrameBytes - 1, 'y'));
    if (padInFirst) writer.Raw({0});
    const Bytes first = writer.Frame();
    if (padInSecond) writer.Raw({0});
    writer.BlockHeader(LzxWriter::kUncompressed, 2);
    writer.Queue(1, 1, 1);
    writer.Raw({'z', 'z'});
    return {{first, kFrameBytes}, {writer.Frame(), 2}};
}

TEST(Lzx, ThePadByteOfAnOddBlockMayBeInEitherRecord) {
    Bytes expected(kFrameBytes + 2, 'y');
    expected.front() = 'x';
    expected[kFrameBytes] = expected[kFrameBytes + 1] = 'z';
    EXPECT_EQ(expected, LzxFile(OddBlockAtFrameEnd(true, false)));
    EXPECT_EQ(expected, LzxFile(OddBlockAtFrameEnd(false, true)));
}

TEST(Lzx, ABlockMayBeLongerThanTheFolder) {
    LzxWriter writer = Begun(1000, LzxWriter::Match(0, 2));
    writer.Put(0, 3);
    EXPECT_EQ(Text("aaa"), LzxFile({{writer.Frame(), 3}}));
}

TEST(Lzx, AMatchBeforeTheFolderIsRefused) {
    LzxWriter writer = Begun(2, LzxWriter::Match(0, 2));
    writer.Put(1, 1);
    EXPECT_EQ(Fault::BadMatch, LzxFault({{writer.Frame(), 2}}));
    LzxWriter far = Begun(3, LzxWriter::Match(4, 2));
    far.Put(0b011, 3);  // a, then slot 4 with the extra bit set: a distance of 3
    EXPECT_EQ(Fault::BadMatch, LzxFault({{far.Frame(), 3}}));
}

TEST(Lzx, ADistanceThatNoWindowHasIsRefused) {
    for (const std::uint32_t distance : {0U, 32766U, 0x80000000U, 0xFFFFFFFFU}) {
        LzxWriter writer;
        writer.NothingTranslated();
        writer.BlockHeader(LzxWriter::kUncompressed, kFrameBytes);
        writer.Queue(distance, 1, 1);
        writer.Raw(Bytes(kFrameBytes, 'x'));
        const Bytes first = writer.Frame();
        writer.BlockHeader(LzxWriter::kVerbatim, 2);
        writer.Trees({{'a', 1}, {LzxWriter::Match(0, 2), 1}});
        writer.Put(1, 1);
        EXPECT_EQ(Fault::BadMatch, LzxFault({{first, kFrameBytes}, {writer.Frame(), 2}})) << distance;
    }
}

TEST(Lzx, AMatchOverTheEndOfItsFrameIsRefused) {
    LzxWriter writer = Begun(10, LzxWriter::Match(0, 8));
    writer.Put(0b001, 3);
    EXPECT_EQ(Fault::BadMatch, LzxFault({{writer.Frame(), 9}}));
}

TEST(Lzx, AMatchOverTheEndOfItsBlockIsRefused) {
    LzxWriter writer = Begun(8, LzxWriter::Match(0, 8));
    writer.Put(0b01, 2);
    EXPECT_EQ(Fault::BadMatch, LzxFault({{writer.Frame(), 9}}));
}

TEST(Lzx, ALengthOfAnEmptyTreeIsRefused) {
    LzxWriter writer = Begun(20, LzxWriter::Match(0, 9));
    writer.Put(0b01, 2);
    EXPECT_EQ(Fault::BadStream, LzxFault({{writer.Frame(), 20}}));
}

TEST(Lzx, TreesThatAreNotCompleteAreRefused) {
    for (const CodeLengths& main :
         {CodeLengths{}, CodeLengths{{'a', 1}}, CodeLengths{{'a', 1}, {'b', 2}},
          CodeLengths{{'a', 1}, {'b', 1}, {'c', 1}}, CodeLengths{{'a', 1}, {'b', 1}, {300, 2}}}) {
        LzxWriter writer;
        writer.NothingTranslated();
        writer.BlockHeader(LzxWriter::kVerbatim, 1);
        writer.Trees(main);
        writer.Put(0, 1);
        EXPECT_EQ(Fault::BadTree, LzxFault({{writer.Frame(), 1}})) << main.size();
    }
    LzxWriter oneLength = Begun(1, LzxWriter::Match(0, 2), {{5, 1}});
    oneLength.Put(0, 1);
    EXPECT_EQ(Fault::BadTree, LzxFault({{oneLength.Frame(), 1}}));
}

TEST(Lzx, AnIncompletePretreeOrAlignedTreeIsRefused) {
    LzxWriter pretree;
    pretree.NothingTranslated();
    pretree.BlockHeader(LzxWriter::kVerbatim, 1);
    for (int i = 0; i < 20; ++i) pretree.Put(i == 0 ? 1 : 0, 4);
    EXPECT_EQ(Fault::BadTree, LzxFault({{pretree.Frame(), 1}}));
    LzxWriter aligned;
    aligned.NothingTranslated();
    aligned.BlockHeader(LzxWriter::kAligned, 1);
    for (int i = 0; i < 8; ++i) aligned.Put(i == 0 ? 1 : 2, 3);
    EXPECT_EQ(Fault::BadTree, LzxFault({{aligned.Frame(), 1}}));
}

// A pretree of two codes: 0 for an element that stays, 1 for a symbol.
void PutTwoCodes(LzxWriter& writer, int symbol) {
    for (int i = 0; i < 20; ++i) writer.Put(i == 0 || i == symbol ? 1 : 0, 4);
}

TEST(Lzx, ARunOverTheEndOfItsListIsRefused) {
    for (const int symbol : {17, 18, 19}) {
        LzxWriter writer;
        writer.NothingTranslated();
        writer.BlockHeader(LzxWriter::kVerbatim, 1);
        PutTwoCodes(writer, symbol);
        for (int i = 0; i < 253; ++i) writer.Put(0, 1);
        writer.Put(1, 1);
        writer.Put(0, 7);
        EXPECT_EQ(Fault::BadTree, LzxFault({{writer.Frame(), 1}})) << symbol;
    }
}

TEST(Lzx, ARunInThePlaceOfADifferenceIsRefused) {
    LzxWriter writer;
    writer.NothingTranslated();
    writer.BlockHeader(LzxWriter::kVerbatim, 1);
    PutTwoCodes(writer, 19);
    writer.Put(0b101, 3);  // a run, of 4, of a run
    EXPECT_EQ(Fault::BadTree, LzxFault({{writer.Frame(), 1}}));
}

TEST(Lzx, UnknownAndEmptyBlocksAreRefused) {
    for (const unsigned type : {0U, 4U, 5U, 6U, 7U}) {
        LzxWriter writer;
        writer.NothingTranslated();
        writer.BlockHeader(type, 1);
        writer.Raw(Bytes(200));
        EXPECT_EQ(Fault::BadStream, LzxFault({{writer.Frame(), 1}})) << type;
    }
    for (const unsigned type : {LzxWriter::kVerbatim, LzxWriter::kUncompressed}) {
        LzxWriter writer;
        writer.NothingTranslated();
        writer.BlockHeader(type, 0);
        writer.Raw(Bytes(200));
        EXPECT_EQ(Fault::BadStream, LzxFault({{writer.Frame(), 1}})) << type;
    }
}

TEST(Lzx, AFrameWhosePackedBytesEndEarlyIsRefused) {
    LzxWriter writer = Begun(40, LzxWriter::Match(0, 2));
    EXPECT_EQ(Fault::BadStream, LzxFault({{writer.Frame(), 40}}));
    LzxWriter raw;
    raw.NothingTranslated();
    raw.BlockHeader(LzxWriter::kUncompressed, 5);
    raw.Queue(1, 1, 1);
    raw.Raw(Text("abcd"));
    EXPECT_EQ(Fault::BadStream, LzxFault({{raw.Frame(), 5}}));
    for (std::size_t size = 0; size < 16; ++size) {
        LzxWriter header;
        header.NothingTranslated();
        header.BlockHeader(LzxWriter::kUncompressed, 5);
        header.Queue(1, 1, 1);
        Bytes frame = header.Frame();
        frame.resize(size);
        EXPECT_EQ(Fault::BadStream, LzxFault({{frame, 5}})) << size;
    }
}

TEST(Lzx, PackedBytesThatAreLeftOverAreRefused) {
    LzxWriter writer = Begun(1, LzxWriter::Match(0, 2));
    writer.Put(0, 1);
    Bytes frame = writer.Frame();
    EXPECT_EQ(Fault::None, LzxFault({{frame, 1}}));
    frame.insert(frame.end(), {0, 0});
    EXPECT_EQ(Fault::BadStream, LzxFault({{frame, 1}}));
}

TEST(Lzx, ATreeThatEndsEarlyIsRefused) {
    LzxWriter writer = Begun(1, LzxWriter::Match(0, 2));
    Bytes frame = writer.Frame();
    frame.resize(frame.size() / 2);
    EXPECT_EQ(Fault::BadTree, LzxFault({{frame, 1}}));
}

TEST(Lzx, ANegativeTranslationSizeIsRefused) {
    LzxWriter writer;
    writer.Put(1, 1);
    writer.Put(0x8000, 16);
    writer.Put(0, 16);
    writer.BlockHeader(LzxWriter::kVerbatim, 1);
    writer.Trees({{'a', 1}, {'b', 1}});
    writer.Put(0, 1);
    EXPECT_EQ(Fault::BadStream, LzxFault({{writer.Frame(), 1}}));
}

}  // namespace
}  // namespace realmode::unpack::testing
