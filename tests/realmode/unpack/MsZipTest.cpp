// MSZIP: what few packers write and a decoder has to know nevertheless, and what it must reject.

#include <gtest/gtest.h>

#include <array>

#include "tests/realmode/unpack/CabinetBuilder.h"
#include "tests/realmode/unpack/FlatMachine.h"
#include "tests/realmode/unpack/StreamWriters.h"

namespace realmode::unpack::testing {
namespace {

Outcome UnpackMsZip(const std::vector<BuiltRecord>& records) {
    return Unpack(OneFile(kMsZip, records).Build());
}

Bytes MsZipFile(const std::vector<BuiltRecord>& records) {
    const Outcome outcome = UnpackMsZip(records);
    EXPECT_EQ(Fault::None, outcome.Result) << TextOf(outcome.Result);
    return outcome.Target.Files.at("F").Contents;
}

Fault MsZipFault(const DeflateWriter& writer, unsigned size) {
    return UnpackMsZip({{writer.Frame(), size}}).Result;
}

// The header of a block with codes of its own: a list of lengths of 0 to 2, which lists the first
// `mainSymbols` for literals and matches, and the others for distances.
void PutTinyCodes(DeflateWriter& writer, unsigned mainSymbols, const std::vector<unsigned>& lengths) {
    writer.BlockHeader(true, DeflateWriter::kDynamic);
    writer.Number(mainSymbols - 257, 5);
    writer.Number(static_cast<unsigned>(lengths.size()) - mainSymbols - 1, 5);
    writer.Number(18 - 4, 4);
    for (const unsigned symbol : {16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1})
        writer.Number(symbol == 0 || symbol == 1 || symbol == 2 || symbol == 18 ? 2 : 0, 3);
    for (const unsigned length : lengths) writer.Code(length, 2);
}

TEST(MsZip, StoredBlocksFollowEachOther) {
    DeflateWriter writer;
    writer.StoredBlock(false, Text("abc"));
    writer.StoredBlock(false, {});
    writer.StoredBlock(true, Text("de"));
    EXPECT_EQ(Text("abcde"), MsZipFile({{writer.Frame(), 5}}));
}

TEST(MsZip, KindsOfBlocksMix) {
    DeflateWriter writer;
    writer.BlockHeader(false, DeflateWriter::kFixed);
    writer.FixedLiteral('a');
    writer.FixedLiteral('b');
    writer.FixedMatch3(1);
    writer.FixedEnd();
    writer.StoredBlock(false, Text("X"));
    writer.BlockHeader(true, DeflateWriter::kFixed);
    writer.FixedMatch3(0);
    writer.FixedEnd();
    EXPECT_EQ(Text("ababaXXXX"), MsZipFile({{writer.Frame(), 9}}));
}

TEST(MsZip, TheLongestMatchAndTheFarthestDistance) {
    const Bytes before = [] {
        Bytes bytes(kFrameBytes, '.');
        bytes[0] = '#';
        return bytes;
    }();
    DeflateWriter first;
    first.StoredBlock(true, before);
    DeflateWriter second;
    second.BlockHeader(true, DeflateWriter::kFixed);
    second.Code(0xC0 + 285 - 280, 8);
    second.Code(29, 5);
    second.Number(8191, 13);
    second.FixedEnd();
    Bytes expected = before;
    expected.insert(expected.end(), before.begin(), before.begin() + 258);
    EXPECT_EQ(expected, MsZipFile({{first.Frame(), kFrameBytes}, {second.Frame(), 258}}));
}

TEST(MsZip, ASingleCodeOfDistancesMayHaveOneBit) {
    DeflateWriter writer;
    std::vector<unsigned> lengths(258 + 1);
    lengths['a'] = 2;
    lengths[256] = 2;
    lengths[257] = 1;
    lengths[258] = 1;
    PutTinyCodes(writer, 258, lengths);
    writer.Code(0b10, 2);  // a
    writer.Code(0b00, 2);  // a match of 3, the distance 1
    writer.Code(0b11, 2);
    EXPECT_EQ(Text("aaaa"), MsZipFile({{writer.Frame(), 4}}));
}

TEST(MsZip, AFrameOfMoreOrFewerBytesIsRefused) {
    DeflateWriter writer;
    writer.StoredBlock(true, Text("abc"));
    EXPECT_EQ(Fault::BadStream, MsZipFault(writer, 4));
    EXPECT_EQ(Fault::BadStream, MsZipFault(writer, 2));
    DeflateWriter literals;
    literals.BlockHeader(true, DeflateWriter::kFixed);
    for (int i = 0; i < 3; ++i) literals.FixedLiteral('a');
    literals.FixedEnd();
    EXPECT_EQ(Fault::BadStream, MsZipFault(literals, 4));
    EXPECT_EQ(Fault::BadStream, MsZipFault(literals, 2));
}

TEST(MsZip, AMatchOverTheEndOfItsFrameIsRefused) {
    DeflateWriter writer;
    writer.BlockHeader(true, DeflateWriter::kFixed);
    writer.FixedLiteral('a');
    writer.FixedMatch3(0);
    writer.FixedEnd();
    EXPECT_EQ(Fault::BadMatch, MsZipFault(writer, 3));
}

TEST(MsZip, AMatchBeforeTheFolderIsRefused) {
    DeflateWriter writer;
    writer.BlockHeader(true, DeflateWriter::kFixed);
    writer.FixedLiteral('a');
    writer.FixedMatch3(1);
    writer.FixedEnd();
    EXPECT_EQ(Fault::BadMatch, MsZipFault(writer, 4));
}

TEST(MsZip, AFrameWithoutItsLettersIsRefused) {
    DeflateWriter writer;
    writer.StoredBlock(true, Text("abc"));
    for (const std::size_t place : {0U, 1U}) {
        Bytes frame = writer.Frame();
        frame[place] = 'X';
        EXPECT_EQ(Fault::BadStream, UnpackMsZip({{frame, 3}}).Result);
    }
    EXPECT_EQ(Fault::BadStream, UnpackMsZip({{Text("C"), 3}}).Result);
    EXPECT_EQ(Fault::BadStream, UnpackMsZip({{{}, 3}}).Result);
}

TEST(MsZip, AFrameWithoutALastBlockIsRefused) {
    DeflateWriter stored;
    stored.StoredBlock(false, Text("abc"));
    EXPECT_EQ(Fault::BadStream, MsZipFault(stored, 3));
    DeflateWriter fixed;
    fixed.BlockHeader(false, DeflateWriter::kFixed);
    fixed.FixedLiteral('a');
    fixed.FixedEnd();
    EXPECT_EQ(Fault::BadStream, MsZipFault(fixed, 1));
}

TEST(MsZip, AFrameWhosePackedBytesEndEarlyIsRefused) {
    DeflateWriter writer;
    writer.StoredBlock(true, Text("abc"));
    for (std::size_t size = 2; size < writer.Frame().size(); ++size) {
        Bytes frame = writer.Frame();
        frame.resize(size);
        EXPECT_EQ(Fault::BadStream, UnpackMsZip({{frame, 3}}).Result) << size;
    }
}

TEST(MsZip, PackedBytesThatAreLeftOverAreRefused) {
    DeflateWriter writer;
    writer.StoredBlock(true, Text("abc"));
    Bytes frame = writer.Frame();
    frame.push_back(0);
    EXPECT_EQ(Fault::BadStream, UnpackMsZip({{frame, 3}}).Result);
}

TEST(MsZip, AStoredBlockWithTwoSizesIsRefused) {
    DeflateWriter writer;
    writer.StoredBlock(true, Text("abc"));
    Bytes frame = writer.Frame();
    ++frame[5];
    EXPECT_EQ(Fault::BadStream, UnpackMsZip({{frame, 3}}).Result);
}

TEST(MsZip, TheFourthKindOfBlockIsRefused) {
    DeflateWriter writer;
    writer.BlockHeader(true, 3);
    EXPECT_EQ(Fault::BadStream, MsZipFault(writer, 1));
}

TEST(MsZip, SymbolsThatMeanNothingAreRefused) {
    DeflateWriter length;
    length.BlockHeader(true, DeflateWriter::kFixed);
    length.FixedLiteral('a');
    length.Code(0xC0 + 286 - 280, 8);
    length.Code(0, 5);
    length.FixedEnd();
    EXPECT_EQ(Fault::BadStream, MsZipFault(length, 4));
    DeflateWriter distance;
    distance.BlockHeader(true, DeflateWriter::kFixed);
    distance.FixedLiteral('a');
    distance.FixedMatch3(30);
    distance.FixedEnd();
    EXPECT_EQ(Fault::BadStream, MsZipFault(distance, 4));
}

TEST(MsZip, CodesThatCannotBeAreRefused) {
    // Two codes of one bit each and a third; and a code without an end of block.
    std::vector<unsigned> tooMany(257 + 1);
    tooMany['a'] = tooMany['b'] = tooMany[256] = 1;
    std::vector<unsigned> noEnd(257 + 1);
    noEnd['a'] = noEnd['b'] = 1;
    // One code of two bits, with half of the others missing.
    std::vector<unsigned> tooFew(257 + 1);
    tooFew[256] = 2;
    for (const auto& lengths : {tooMany, noEnd, tooFew}) {
        DeflateWriter writer;
        PutTinyCodes(writer, 257, lengths);
        writer.Code(0, 8);
        EXPECT_EQ(Fault::BadTree, MsZipFault(writer, 1));
    }
}

TEST(MsZip, ListsOfLengthsThatAreTooLongAreRefused) {
    for (const auto& [mainSymbols, distances] : {std::pair{287U, 1U}, std::pair{257U, 31U}}) {
        DeflateWriter writer;
        std::vector<unsigned> lengths(mainSymbols + distances);
        lengths['a'] = lengths[256] = 1;
        PutTinyCodes(writer, mainSymbols, lengths);
        writer.Code(0, 8);
        EXPECT_EQ(Fault::BadTree, MsZipFault(writer, 1));
    }
    // A run of zeros over the end of the list, and a repetition of nothing.
    for (const unsigned symbol : {18U, 16U}) {
        DeflateWriter writer;
        writer.BlockHeader(true, DeflateWriter::kDynamic);
        writer.Number(0, 10);
        writer.Number(0, 4);
        for (const unsigned listed : {16U, 17U, 18U, 0U})
            writer.Number(listed == symbol || listed == 0 ? 1 : 0, 3);
        for (int i = 0; i < 4; ++i) {
            writer.Code(1, 1);
            writer.Number(127, 7);
        }
        EXPECT_EQ(Fault::BadTree, MsZipFault(writer, 1));
    }
}

}  // namespace
}  // namespace realmode::unpack::testing
