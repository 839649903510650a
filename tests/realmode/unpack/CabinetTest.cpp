// Cabinets apart from their streams: what is restored, what is rejected, and with which message.

#include <gmock/gmock.h>

#include <functional>
#include <memory>

#include "realmode/unpack/Unpacker.h"
#include "tests/realmode/unpack/CabinetBuilder.h"
#include "tests/realmode/unpack/FlatMachine.h"
#include "tools/shared/ByteOrder.h"

namespace realmode::unpack::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

BuiltCabinet Stored(const std::string& text) {
    return OneFile(kStored, {{Text(text), static_cast<unsigned>(text.size())}});
}

BuiltRecord StoredFrame(char letter, unsigned size = kFrameBytes) {
    return {Bytes(size, static_cast<std::uint8_t>(letter)), size};
}

Fault CabinetFault(const Bytes& cabinet) {
    const Outcome outcome = Unpack(cabinet);
    EXPECT_EQ("", outcome.Subject) << "the cabinet itself is at fault";
    return outcome.Result;
}

TEST(UnpackedCabinet, FilesHaveTheirDatesTimesAndAttributes) {
    BuiltCabinet cabinet = Stored("ab");
    cabinet.Members = {{"A", 1, 0, 0, 0x20, 0x24AB, 0xA021}, {"B", 1, 1, 0, 0x27, 0x1234, 0x4321}};
    const Outcome outcome = Unpack(cabinet.Build());
    ASSERT_EQ(Fault::None, outcome.Result);
    const UnpackedFile& a = outcome.Target.Files.at("A");
    const UnpackedFile& b = outcome.Target.Files.at("B");
    EXPECT_EQ(Text("a"), a.Contents);
    EXPECT_EQ(Text("b"), b.Contents);
    EXPECT_TRUE(a.IsFinished && b.IsFinished);
    EXPECT_EQ(0x24AB, a.Stamp.Date);
    EXPECT_EQ(0xA021, a.Stamp.Time);
    EXPECT_EQ(0x20, a.Stamp.Attributes);
    EXPECT_EQ(0x1234, b.Stamp.Date);
    EXPECT_EQ(0x4321, b.Stamp.Time);
    EXPECT_EQ(0x27, b.Stamp.Attributes);
}

TEST(UnpackedCabinet, FoldersAreMadeFromTheTop) {
    BuiltCabinet cabinet = Stored("abcd");
    cabinet.Members = {{"A\\B\\C", 1, 0},  {"A\\B\\D", 1, 1}, {"AB\\E", 1, 2},
                       {"A\\BB\\F", 1, 3}, {"A", 0, 4},       {"A\\X\\Y", 0, 4}};
    const Outcome outcome = Unpack(cabinet.Build());
    EXPECT_EQ(Fault::None, outcome.Result);
    EXPECT_THAT(outcome.Target.Folders, ElementsAre("A", "AB", "A\\B", "A\\BB", "A\\X"));
    EXPECT_EQ(Text("d"), outcome.Target.Files.at("A\\BB\\F").Contents);
}

TEST(UnpackedCabinet, AMemberMayBeAFolder) {
    BuiltCabinet cabinet = Stored("a");
    cabinet.Members.push_back({"SUB\\EMPTY", 0, 1, 0, 0x10});
    const Outcome outcome = Unpack(cabinet.Build());
    EXPECT_EQ(Fault::None, outcome.Result);
    EXPECT_THAT(outcome.Target.Folders, ElementsAre("SUB", "SUB\\EMPTY"));
    EXPECT_THAT(outcome.Target.Created, ElementsAre("F"));
}

TEST(UnpackedCabinet, EmptyFilesNeedNoData) {
    BuiltCabinet cabinet;
    cabinet.Folders.push_back({Lzx(21), {}});
    cabinet.Members = {{"A", 0}, {"B", 0, 77}};
    const Outcome outcome = Unpack(cabinet.Build());
    EXPECT_EQ(Fault::None, outcome.Result);
    EXPECT_THAT(outcome.Target.Created, ElementsAre("A", "B"));
    EXPECT_TRUE(outcome.Target.Files.at("B").IsFinished);
}

TEST(UnpackedCabinet, FilesOverFramesAndFoldersOfAnyMethod) {
    BuiltCabinet cabinet;
    cabinet.Folders = {{kStored, {StoredFrame('a'), StoredFrame('b'), StoredFrame('c', 5)}},
                       {kStored, {StoredFrame('d', 4)}}};
    cabinet.Members = {{"SKIPPED", 1, 0}, {"MIDDLE", 32770, 32767}, {"END", 2, 65539}, {"D", 4, 0, 1}};
    const Outcome outcome = Unpack(cabinet.Build());
    ASSERT_EQ(Fault::None, outcome.Result);
    Bytes middle(32770, 'b');
    middle.front() = 'a';
    middle.back() = 'c';
    EXPECT_EQ(middle, outcome.Target.Files.at("MIDDLE").Contents);
    EXPECT_EQ(Text("cc"), outcome.Target.Files.at("END").Contents);
    EXPECT_EQ(Text("dddd"), outcome.Target.Files.at("D").Contents);
}

TEST(UnpackedCabinet, ReservesArePassedOver) {
    for (const bool isSummed : {false, true}) {
        BuiltCabinet cabinet = Stored("abc");
        cabinet.Flags = 4;
        cabinet.HeaderReserve = 1000;
        cabinet.FolderReserve = 5;
        cabinet.DataReserve = 7;
        cabinet.Folders[0].Records[0].ChecksumHasReserve = isSummed;
        const Outcome outcome = Unpack(cabinet.Build());
        ASSERT_EQ(Fault::None, outcome.Result) << isSummed;
        EXPECT_EQ(Text("abc"), outcome.Target.Files.at("F").Contents);
    }
}

TEST(UnpackedCabinet, ARecordWithoutAChecksumIsTaken) {
    BuiltCabinet cabinet = Stored("abc");
    cabinet.Folders[0].Records[0].HasNoChecksum = true;
    EXPECT_EQ(Fault::None, CabinetFault(cabinet.Build()));
}

TEST(UnpackedCabinet, WhatFollowsTheCabinetIsPassedOver) {
    Bytes cabinet = Stored("abc").Build();
    cabinet.insert(cabinet.end(), 100, 'x');
    EXPECT_EQ(Fault::None, CabinetFault(cabinet));
}

TEST(RefusedCabinet, AnotherFileIsNoCabinet) {
    EXPECT_EQ(Fault::NotACabinet, CabinetFault({}));
    EXPECT_EQ(Fault::NotACabinet, CabinetFault(Text("MS")));
    EXPECT_EQ(Fault::NotACabinet, CabinetFault(Text("MSCE and more of it, which is text")));
}

TEST(RefusedCabinet, EveryLossOfItsEndIsNoticed) {
    const Bytes whole = Stored("abcdefgh").Build();
    for (std::size_t size = 4; size < whole.size(); ++size) {
        const Outcome outcome = Unpack({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)});
        EXPECT_EQ(Fault::EndsEarly, outcome.Result) << size;
        EXPECT_THAT(outcome.Target.Created, IsEmpty()) << size;
    }
}

TEST(RefusedCabinet, EveryChangeOfARecordIsNoticed) {
    const Bytes whole = Stored("abcdefghi").Build();
    const std::size_t record = whole.size() - 8 - 9;
    for (std::size_t i = record; i < whole.size(); ++i) {
        Bytes changed = whole;
        changed[i] ^= 0x40;
        EXPECT_NE(CabinetFault(changed), Fault::None) << i;
    }
    BuiltCabinet cabinet = Stored("abc");
    cabinet.Folders[0].Records[0].HasWrongChecksum = true;
    EXPECT_EQ(Fault::BadChecksum, CabinetFault(cabinet.Build()));
}

TEST(RefusedCabinet, ASetOfCabinetsIsRefused) {
    for (const unsigned flags : {1U, 2U, 3U}) {
        BuiltCabinet cabinet = Stored("abc");
        cabinet.Flags = flags;
        EXPECT_EQ(Fault::PartOfASet, CabinetFault(cabinet.Build()));
    }
    for (const unsigned folder : {0xFFFDU, 0xFFFEU, 0xFFFFU}) {
        BuiltCabinet cabinet = Stored("abc");
        cabinet.Members[0].Folder = folder;
        EXPECT_EQ(Fault::PartOfASet, CabinetFault(cabinet.Build()));
    }
}

TEST(RefusedCabinet, AnUnknownMethodIsRefused) {
    for (const unsigned method : {2U, 4U, 15U, Lzx(0), Lzx(14), Lzx(22), Lzx(31)}) {
        BuiltCabinet cabinet = Stored("abc");
        cabinet.Folders[0].Method = method;
        EXPECT_EQ(Fault::UnknownMethod, CabinetFault(cabinet.Build())) << method;
    }
}

TEST(RefusedCabinet, AMemberOutsideItsFolderIsRefused) {
    const std::vector<std::function<void(BuiltMember&)>> changes = {
        [](BuiltMember& member) { member.Folder = 1; },
        [](BuiltMember& member) { member.Size = kFrameBytes + 1; },
        [](BuiltMember& member) { member.Offset = kFrameBytes - 2; },
        [](BuiltMember& member) { member.Offset = 0xFFFFFFFF; },
        [](BuiltMember& member) { member.Size = 0xFFFFFFFF; },
    };
    for (const auto& change : changes) {
        BuiltCabinet cabinet = Stored("abc");
        change(cabinet.Members[0]);
        const Outcome outcome = Unpack(cabinet.Build());
        EXPECT_EQ(Fault::BadDirectory, outcome.Result);
        EXPECT_THAT(outcome.Target.Created, IsEmpty());
    }
}

TEST(RefusedCabinet, AMemberThatIsLongerThanTheDataIsRefused) {
    BuiltCabinet cabinet = Stored("abc");
    cabinet.Members[0].Size = 4;
    EXPECT_EQ(Fault::BadDirectory, CabinetFault(cabinet.Build()));
}

TEST(RefusedCabinet, MembersInAnotherOrderThanTheirDataAreRefused) {
    BuiltCabinet cabinet;
    cabinet.Folders = {{kStored, {StoredFrame('a'), StoredFrame('b')}}};
    cabinet.Members = {{"B", 1, kFrameBytes}, {"A", 1, 0}};
    EXPECT_EQ(Fault::BadDirectory, CabinetFault(cabinet.Build()));
}

TEST(RefusedCabinet, AListOfFilesThatEndsEarlyIsRefused) {
    const Bytes whole = Stored("abc").Build();
    for (const std::uint32_t count : {3U, 65535U}) {
        Bytes cabinet = whole;
        tools::PutU16(&cabinet[28], count);
        EXPECT_NE(Unpack(cabinet).Result, Fault::None) << count;
    }
    for (const std::uint32_t place : {0x7FFFFFFFU, 0xFFFFFFFFU, static_cast<std::uint32_t>(whole.size())}) {
        Bytes cabinet = whole;
        tools::PutU32(&cabinet[16], place);
        EXPECT_THAT(CabinetFault(cabinet), ::testing::AnyOf(Fault::BadDirectory, Fault::EndsEarly)) << place;
    }
}

TEST(RefusedCabinet, ANameWithoutAnEndIsRefused) {
    BuiltCabinet cabinet = Stored("abc");
    cabinet.Members[0].Name = std::string(256, 'A');
    EXPECT_EQ(Fault::BadDirectory, CabinetFault(cabinet.Build()));
    Bytes cut = Stored("").Build();
    const std::size_t end = cut.size() - 8 - 1;  // of the name, without its NUL
    cut.resize(end);
    tools::PutU32(&cut[8], static_cast<std::uint32_t>(end));
    EXPECT_EQ(Fault::BadDirectory, CabinetFault(cut));
}

TEST(RefusedCabinet, RecordsOfWrongSizesAreRefused) {
    const std::vector<std::vector<BuiltRecord>> folders = {
        {StoredFrame('a', 10), StoredFrame('b', 10)},  // a short one that is not the last
        {{Text("abc"), 0}},                            // continues in another cabinet
        {{Text("abc"), 32769}},
        {{Text("abc"), 2}},
        {{Text("abc"), 4}},
        {{Bytes(38913), 100}},
    };
    for (const auto& records : folders) {
        BuiltCabinet cabinet = OneFile(kStored, records);
        cabinet.Members[0].Size = 3;
        EXPECT_EQ(Fault::BadRecord, CabinetFault(cabinet.Build())) << records[0].Unpacked;
    }
}

TEST(RefusedCabinet, DataOutsideTheCabinetAreRefused) {
    for (const std::uint32_t place : {0x7FFFFFFFU, 0xFFFFFFFFU, 0xFFFFFFF8U}) {
        Bytes cabinet = Stored("abc").Build();
        tools::PutU32(&cabinet[36], place);
        EXPECT_EQ(Fault::EndsEarly, CabinetFault(cabinet)) << place;
    }
}

TEST(RefusedCabinet, NothingIsWrittenWhenAPathIsRefused) {
    for (const auto& [name, fault] : {std::pair{"..\\OUT", Fault::LeavesTarget},
                                      {"C:\\OUT", Fault::LeavesTarget},
                                      {"A\\..\\..\\OUT", Fault::LeavesTarget},
                                      {"TOOLONGANAME", Fault::NotADosName}}) {
        BuiltCabinet cabinet = Stored("abc");
        cabinet.Members.push_back({name, 0, 3});
        const Outcome outcome = Unpack(cabinet.Build());
        EXPECT_EQ(fault, outcome.Result);
        EXPECT_EQ(name, outcome.Subject);
        EXPECT_THAT(outcome.Target.Created, IsEmpty());
    }
}

TEST(RefusedCabinet, AFullDiskIsSaidOfTheFileThatDoesNotFit) {
    BuiltCabinet cabinet = Stored("abcd");
    cabinet.Members = {{"A", 2, 0}, {"B", 2, 2}};
    const Bytes bytes = cabinet.Build();
    FlatCabinet file(bytes);
    FlatMemory memory;
    FlatTarget target;
    target.Capacity = 3;
    const auto unpacker = std::make_unique<Unpacker>(file, target, memory);
    EXPECT_EQ(Fault::DiskFull, unpacker->Run());
    EXPECT_STREQ(unpacker->Subject(), "B");
    EXPECT_TRUE(target.Files.at("A").IsFinished);
    EXPECT_FALSE(target.Files.at("B").IsFinished);
}

TEST(RefusedCabinet, TheUserMayStopItBetweenTwoFrames) {
    BuiltCabinet cabinet = OneFile(kStored, {StoredFrame('a'), StoredFrame('b')});
    const Bytes bytes = cabinet.Build();
    FlatCabinet file(bytes);
    FlatMemory memory;
    FlatTarget target;
    target.StopsAfter = 2;
    const auto unpacker = std::make_unique<Unpacker>(file, target, memory);
    EXPECT_EQ(Fault::Stopped, unpacker->Run());
    EXPECT_EQ(Bytes(kFrameBytes, 'a'), target.Files.at("F").Contents);
    EXPECT_FALSE(target.Files.at("F").IsFinished);
}

TEST(Faults, EachHasATextAndACode) {
    for (unsigned i = 1; i <= static_cast<unsigned>(Fault::Stopped); ++i) {
        const auto fault = static_cast<Fault>(i);
        EXPECT_GE(ExitCodeOf(fault), 2U);
        EXPECT_LE(ExitCodeOf(fault), 10U);
        EXPECT_STRNE(TextOf(fault), "");
    }
    EXPECT_EQ(0U, ExitCodeOf(Fault::None));
    EXPECT_EQ(3U, ExitCodeOf(Fault::NotACabinet));
    EXPECT_EQ(5U, ExitCodeOf(Fault::BadStream));
    EXPECT_EQ(8U, ExitCodeOf(Fault::DiskFull));
}

}  // namespace
}  // namespace realmode::unpack::testing
