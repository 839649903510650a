#include "tools/cabarc/CabinetReader.h"

#include <gmock/gmock.h>

#include <random>
#include <sstream>

#include "tests/tools/cabarc/ParsedCabinet.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc::testing {
namespace {

using ::testing::HasSubstr;

CabinetDirectory ReadFrom(const Bytes& bytes) {
    std::istringstream stream(std::string(bytes.begin(), bytes.end()), std::ios::binary);
    return ReadCabinetDirectory(stream, "some.cab");
}

/// Returns the message with which the bytes are rejected, or "accepted".
std::string Refusal(const Bytes& bytes) {
    try {
        ReadFrom(bytes);
        return "accepted";
    } catch (const ToolError& error) {
        EXPECT_EQ(ExitCode::Failed, error.Code);
        EXPECT_EQ(std::string::npos, std::string(error.what()).find('\n'));
        EXPECT_EQ(0U, std::string(error.what()).rfind("some.cab: ", 0)) << error.what();
        return error.what();
    }
}

/// Returns the cabinet with the bytes from `offset` on replaced by `replacement`.
Bytes With(Bytes bytes, std::size_t offset, const Bytes& replacement) {
    std::copy(replacement.begin(), replacement.end(), bytes.begin() + static_cast<std::ptrdiff_t>(offset));
    return bytes;
}

Bytes Sample() {
    return HandMade({{"a.txt", BytesOf("alpha"), 0x21, 0},
                     {"sub\\b.bin", RandomBytes(40000), 0x20, 0},
                     {"caf\xC3\xA9", BytesOf("x"), 0xA0, 1}});
}

constexpr std::size_t kFolderRecords = 36;
constexpr std::size_t kMemberRecords = 36 + 2 * 8;

TEST(CabinetReader, ReadsEveryField) {
    const CabinetDirectory directory = ReadFrom(Sample());
    EXPECT_EQ(Sample().size(), directory.CabinetSize);
    ASSERT_EQ(2U, directory.Folders.size());
    EXPECT_EQ(2, directory.Folders[0].Records);
    EXPECT_EQ(0, directory.Folders[0].Type);
    ASSERT_EQ(3U, directory.Members.size());
    const CabinetMember& second = directory.Members[1];
    EXPECT_EQ("sub\\b.bin", second.Name);
    EXPECT_EQ(40000U, second.Size);
    EXPECT_EQ(5U, second.Offset);
    EXPECT_EQ(0, second.Folder);
    EXPECT_EQ(PackDosTime(2003, 4, 5, 6, 7, 8), second.Modified);
    EXPECT_EQ(0x20, second.Attributes);
    EXPECT_EQ(1, directory.Members[2].Folder);
    EXPECT_EQ(0xA0, directory.Members[2].Attributes);
}

TEST(CabinetReader, SkipsReservesAndNeighboursNames) {
    Bytes cabinet = HandMade({{"a.txt", BytesOf("alpha")}, {"b.txt", BytesOf("beta"), 0x20, 1}});
    const std::uint32_t secondFolder = ReadFrom(cabinet).Folders.at(1).DataOffset;
    cabinet[30] = 7;
    // Header reserve of 3 bytes, folder reserve of 2, data reserve of 5 (data records are not read), then two
    // names for each neighbour.
    const Bytes inserted = {3, 0, 2, 5, 9, 9, 9, 'p', 0, 'd', 0, 'n', 0, 'e', 0};
    cabinet.insert(cabinet.begin() + 36, inserted.begin(), inserted.end());
    const Bytes folderReserve = {8, 8};
    for (const int end : {36 + 15 + 8, 36 + 15 + 8 + 2 + 8})
        cabinet.insert(cabinet.begin() + end, folderReserve.begin(), folderReserve.end());
    cabinet[16] = static_cast<std::uint8_t>(36 + 15 + 2 * (8 + 2));
    const CabinetDirectory directory = ReadFrom(cabinet);
    EXPECT_EQ(7, directory.Flags);
    ASSERT_EQ(2U, directory.Folders.size());
    EXPECT_EQ(secondFolder, directory.Folders[1].DataOffset);
    ASSERT_EQ(2U, directory.Members.size());
    EXPECT_EQ("a.txt", directory.Members[0].Name);
    EXPECT_EQ("b.txt", directory.Members[1].Name);
}

TEST(CabinetReader, AcceptsBytesAfterTheCabinet) {
    Bytes cabinet = Sample();
    cabinet.resize(cabinet.size() + 100);
    EXPECT_EQ("accepted", Refusal(cabinet));
}

TEST(CabinetReader, SaysWhatIsNoCabinet) {
    EXPECT_EQ("some.cab: this is not a cabinet", Refusal({}));
    EXPECT_EQ("some.cab: this is not a cabinet", Refusal(BytesOf("MSC")));
    EXPECT_EQ("some.cab: this is not a cabinet", Refusal(With(Sample(), 0, {'m'})));
    EXPECT_EQ("some.cab: this is not a cabinet", Refusal(Bytes(100000)));
}

TEST(CabinetReader, RefusesEveryCutOffCabinet) {
    const Bytes cabinet = Sample();
    for (std::size_t size = 4; size < cabinet.size(); size += size < 200 ? 1 : 997) {
        EXPECT_NE(Refusal({cabinet.begin(), cabinet.begin() + static_cast<std::ptrdiff_t>(size)}), "accepted")
            << size;
    }
    EXPECT_THAT(Refusal({cabinet.begin(), cabinet.end() - 1}),
                HasSubstr("this cabinet is cut off: it should have"));
}

TEST(CabinetReader, RefusesRecordsThatContradictTheFormat) {
    const Bytes sample = Sample();
    EXPECT_THAT(Refusal(With(sample, 25, {2})), HasSubstr("version"));
    EXPECT_THAT(Refusal(With(sample, 26, {0, 0})), HasSubstr("holds nothing"));
    EXPECT_THAT(Refusal(With(sample, 28, {0, 0})), HasSubstr("holds nothing"));
    EXPECT_THAT(Refusal(With(sample, 26, {0xFF, 0xFF})), HasSubstr("damaged"));
    EXPECT_THAT(Refusal(With(sample, 28, {0xFF, 0xFF})), HasSubstr("damaged"));
    EXPECT_THAT(Refusal(With(sample, 30, {8})), HasSubstr("unknown flags"));
    EXPECT_THAT(Refusal(With(sample, 8, {0xFF, 0xFF, 0xFF, 0xFF})), HasSubstr("cut off"));
    EXPECT_THAT(Refusal(With(sample, 16, {0xFF, 0xFF, 0xFF, 0x7F})), HasSubstr("damaged"));
    EXPECT_THAT(Refusal(With(sample, kFolderRecords, {0xFF, 0xFF, 0xFF, 0x7F})), HasSubstr("beyond its end"));
    EXPECT_THAT(Refusal(With(sample, kMemberRecords + 8, {2, 0})), HasSubstr("a folder that does not exist"));
    EXPECT_THAT(Refusal(With(sample, kMemberRecords + 8, {0xFE, 0xFF})),
                HasSubstr("a folder that does not exist"));
    EXPECT_THAT(Refusal(With(sample, kMemberRecords, {0, 0, 2, 0})), HasSubstr("beyond its folder's end"));
    EXPECT_THAT(Refusal(With(sample, kMemberRecords + 4, {0xFF, 0xFF, 0xFF, 0xFF})),
                HasSubstr("beyond its folder's end"));
    EXPECT_THAT(Refusal(With(sample, kMemberRecords + 16, {0})), HasSubstr("has no name"));
}

TEST(CabinetReader, RefusesNamesThatAreTooLong) {
    EXPECT_EQ("accepted", Refusal(HandMade({{std::string(255, 'n'), BytesOf("x")}})));
    EXPECT_THAT(Refusal(HandMade({{std::string(256, 'n'), BytesOf("x")}})), HasSubstr("too long"));
}

TEST(CabinetReader, MembersOfASetMayBelongToAnotherCabinet) {
    Bytes cabinet = With(HandMade({{"a.txt", BytesOf("alpha")}}), 36 + 8 + 8, {0xFE, 0xFF});
    EXPECT_THAT(Refusal(cabinet), HasSubstr("does not exist"));
    cabinet[30] = 2;
    const Bytes next = {'n', 0, 'd', 0};
    cabinet.insert(cabinet.begin() + 36, next.begin(), next.end());
    cabinet[16] = static_cast<std::uint8_t>(cabinet[16] + next.size());
    EXPECT_EQ("accepted", Refusal(cabinet));
}

// Any bytes are read or rejected; the sanitizers notice everything else.
TEST(CabinetReader, SurvivesRandomDamage) {
    const Bytes sample = Sample();
    std::mt19937 random(20);
    int refused = 0;
    for (int round = 0; round < 20000; ++round) {
        Bytes cabinet = sample;
        for (int i = 0; i < 4; ++i) cabinet[random() % 120] = static_cast<std::uint8_t>(random() >> 11);
        cabinet.resize(cabinet.size() - (round % 3 == 0 ? random() % cabinet.size() : 0));
        if (Refusal(cabinet) != "accepted") ++refused;
    }
    EXPECT_GT(refused, 10000);
}

class ReadCabinetFileTest : public InTestFolder {};

TEST_F(ReadCabinetFileTest, NamesWhatCannotBeRead) {
    std::filesystem::create_directory("folder");
    EXPECT_THAT([] { ReadCabinetFile("missing.cab"); },
                ::testing::ThrowsMessage<ToolError>("missing.cab: there is no such file"));
    EXPECT_THAT([] { ReadCabinetFile("folder"); },
                ::testing::ThrowsMessage<ToolError>("folder: this is not a file"));
    WriteBytes("sub/a.cab", Sample());
    EXPECT_EQ(3U, ReadCabinetFile("sub\\a.cab").Members.size());
}

}  // namespace
}  // namespace tools::cabarc::testing
