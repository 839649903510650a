#include "tools/cabarc/CabinetWriter.h"

#include <gmock/gmock.h>

#include "tests/tools/cabarc/ParsedCabinet.h"
#include "tools/cabarc/Compressors.h"
#include "tools/cabarc/MsZipCompressor.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::ThrowsMessage;

CabinetMember Sized(const std::string& name, std::uint32_t size) {
    CabinetMember member;
    member.Name = name;
    member.Size = size;
    member.Attributes = 0x20;
    return member;
}

TEST(Checksum, WeighsTheTailFromItsFirstByte) {
    const Bytes payload = {1, 2, 3, 4, 5, 6, 7};
    EXPECT_EQ(0x04030201U ^ 0x00050607U ^ 0x80000007U, RecordChecksum(payload, 0x8000));
    EXPECT_EQ(9U ^ 0x00010001U, RecordChecksum(Bytes{9}, 1));
    EXPECT_EQ(0x0908U ^ 0x00020002U, RecordChecksum(Bytes{9, 8}, 2));
}

TEST(FolderPlan, PutsEverythingIntoOneFolder) {
    CabinetDirectory directory;
    directory.Members = {Sized("a", 5), Sized("b", 0), Sized("c", 7)};
    PlanFolders(directory, 1);
    ASSERT_EQ(1U, directory.Folders.size());
    EXPECT_EQ(1, directory.Folders[0].Type);
    EXPECT_EQ(5U, directory.Members[1].Offset);
    EXPECT_EQ(5U, directory.Members[2].Offset);
}

TEST(FolderPlan, BeginsAnotherFolderOnlyWhereOneIsFull) {
    CabinetDirectory directory;
    directory.Members = {Sized("a", kMaxFolderBytes - 1), Sized("b", 1), Sized("c", 0), Sized("d", 1),
                         Sized("e", kMaxFolderBytes)};
    PlanFolders(directory, 0);
    EXPECT_EQ(3U, directory.Folders.size());
    EXPECT_EQ(0, directory.Members[1].Folder);
    EXPECT_EQ(0, directory.Members[2].Folder);
    EXPECT_EQ(kMaxFolderBytes, directory.Members[2].Offset);
    EXPECT_EQ(1, directory.Members[3].Folder);
    EXPECT_EQ(0U, directory.Members[3].Offset);
    EXPECT_EQ(2, directory.Members[4].Folder);
}

TEST(FolderPlan, CountsMembersUpToTheLimit) {
    CabinetDirectory directory;
    directory.Members.assign(65535, Sized("a", 1));
    PlanFolders(directory, 0);
    EXPECT_EQ(1U, directory.Folders.size());
    directory.Members.push_back(Sized("a", 1));
    EXPECT_THAT([&] { PlanFolders(directory, 0); },
                ThrowsMessage<ToolError>("a cabinet holds at most 65535 files, not 65536"));
}

class CabinetWriterTest : public InTestFolder {};

TEST_F(CabinetWriterTest, WritesSeveralFoldersOfTheirOwnMethod) {
    const Bytes first = TextLike(70000);
    const Bytes second = RandomBytes(40000);
    CabinetDirectory directory;
    directory.Folders = {{0, 0, 0}, {0, 0, 1}};
    directory.Members = {Sized("a", 70000), Sized("sub\\b", 40000), Sized("empty", 0)};
    directory.Members[1].Folder = 1;
    directory.Members[2].Folder = 1;
    directory.Members[2].Offset = 40000;
    OutputFile output("two.cab");
    CabinetWriter writer(output, directory);
    StoredCompressor stored(writer.BeginFolder());
    stored.Write(first);
    stored.Finish();
    MsZipCompressor zipped(writer.BeginFolder());
    zipped.Write(second);
    zipped.Finish();
    writer.Finish();
    output.Commit();
    const ParsedCabinet cabinet = Parse(ReadBytes("two.cab"));
    EXPECT_EQ(0U, cabinet.Folders[0].Type);
    EXPECT_EQ(1U, cabinet.Folders[1].Type);
    EXPECT_EQ(first, cabinet.Members[0].Contents);
    EXPECT_EQ(second, cabinet.Members[1].Contents);
    EXPECT_EQ(0U, cabinet.Members[2].Size);
}

TEST_F(CabinetWriterTest, NoticesAFolderThatGotOtherBytesThanItsMembersNeed) {
    CabinetDirectory directory;
    directory.Members = {Sized("a", 3)};
    PlanFolders(directory, 0);
    OutputFile output("wrong.cab");
    CabinetWriter writer(output, directory);
    writer.BeginFolder().PutRecord(BytesOf("ab"), 2);
    EXPECT_THROW(writer.Finish(), std::logic_error);
}

TEST_F(CabinetWriterTest, FillsAFolderToItsLastRecordAndNotBeyond) {
    CabinetDirectory directory;
    directory.Members = {Sized("a", kMaxFolderBytes)};
    PlanFolders(directory, 1);
    OutputFile output("full.cab");
    CabinetWriter writer(output, directory);
    RecordSink& sink = writer.BeginFolder();
    for (int i = 0; i < 65535; ++i) sink.PutRecord(BytesOf("p"), 32768);
    writer.Finish();
    EXPECT_THAT([&] { sink.PutRecord(BytesOf("p"), 32768); },
                ThrowsMessage<ToolError>(HasSubstr("too big for one cabinet")));
}

/// Keeps the records that a compressor delivers.
class Records : public RecordSink {
 public:
    std::vector<ParsedRecord> All;

    void PutRecord(std::span<const std::uint8_t> payload, std::uint16_t uncompressedSize) override {
        All.push_back({{payload.begin(), payload.end()}, uncompressedSize});
    }
};

std::size_t SizeOf(const Records& records) {
    std::size_t size = 0;
    for (const ParsedRecord& record : records.All) size += record.Payload.size();
    return size;
}

TEST(MsZipCompressor, DeliversTheSameRecordsForCallsOfAnySize) {
    const Bytes data = TextLike(200000);
    Records whole;
    MsZipCompressor atOnce(whole);
    atOnce.Write(data);
    atOnce.Finish();
    Records parts;
    MsZipCompressor inParts(parts);
    for (std::size_t at = 0, size = 0; at < data.size(); at += size, size = (size * 7 + 1) % 50021) {
        size = std::min(size, data.size() - at);
        inParts.Write(std::span(data).subspan(at, size));
    }
    inParts.Finish();
    ASSERT_EQ(7U, whole.All.size());
    ASSERT_EQ(whole.All.size(), parts.All.size());
    for (std::size_t i = 0; i < whole.All.size(); ++i)
        EXPECT_EQ(whole.All[i].Payload, parts.All[i].Payload) << i;
}

TEST(MsZipCompressor, RemembersTheFrameBefore) {
    Bytes data = RandomBytes(32768);
    const Bytes half(data.begin() + 16384, data.end());
    data.insert(data.end(), half.begin(), half.end());
    Records records;
    MsZipCompressor compressor(records);
    compressor.Write(data);
    compressor.Finish();
    ASSERT_EQ(2U, records.All.size());
    EXPECT_LT(records.All[1].Payload.size(), 1000U);
}

TEST(MsZipCompressor, NeverExceedsOneStoredBlock) {
    for (const std::size_t size : {1U, 2U, 100U, 32767U, 32768U}) {
        Records records;
        MsZipCompressor compressor(records);
        compressor.Write(RandomBytes(size));
        compressor.Finish();
        ASSERT_EQ(1U, records.All.size());
        EXPECT_LE(records.All[0].Payload.size(), size + 7) << size;
    }
}

TEST(MsZipCompressor, StaysFarBelowTheInputOnText) {
    Records records;
    MsZipCompressor compressor(records);
    compressor.Write(TextLike(300000));
    compressor.Finish();
    EXPECT_LT(SizeOf(records), 150000U);
}

TEST(FrameCompressor, AFolderWithoutAByteHasNoRecord) {
    Records records;
    StoredCompressor stored(records);
    stored.Write({});
    stored.Finish();
    MsZipCompressor zipped(records);
    zipped.Finish();
    EXPECT_TRUE(records.All.empty());
}

TEST(FrameCompressor, CutsAtFullFramesOnly) {
    for (const std::size_t size : {32767U, 32768U, 32769U, 65536U}) {
        Records records;
        StoredCompressor stored(records);
        stored.Write(Bytes(size));
        stored.Finish();
        EXPECT_EQ((size + 32767) / 32768, records.All.size()) << size;
        EXPECT_EQ((size - 1) % 32768 + 1, records.All.back().Uncompressed) << size;
    }
}

}  // namespace
}  // namespace tools::cabarc::testing
