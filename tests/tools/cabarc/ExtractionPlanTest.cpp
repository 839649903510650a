#include "tools/cabarc/ExtractionPlan.h"

#include <gmock/gmock.h>

#include "tests/tools/cabarc/InTestFolder.h"
#include "tools/cabarc/Extractor.h"
#include "tools/shared/HostFiles.h"
#include "tools/shared/ToolError.h"

namespace tools::cabarc::testing {
namespace {

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;
using ::testing::ThrowsMessage;
using Names = std::vector<std::string>;

CabinetDirectory DirectoryOf(const Names& names) {
    CabinetDirectory directory;
    directory.Folders.resize(1);
    for (const std::string& name : names) {
        CabinetMember member;
        member.Name = name;
        member.Attributes = kNameIsUtf8 | kArchive;
        member.Modified = PackDosTime(1998, 7, 6, 5, 4, 2);
        directory.Members.push_back(member);
    }
    return directory;
}

Names Targets(const std::vector<PlannedMember>& plan) {
    Names targets;
    for (const PlannedMember& member : plan) targets.push_back(member.Target.generic_string());
    return targets;
}

class ExtractionPlan : public InTestFolder {};

TEST_F(ExtractionPlan, TakesTheMembersThatMatch) {
    const CabinetDirectory directory = DirectoryOf({"NDIS.TXT", "sub\\ndis.dos", "sub/other.bin", "readme"});
    EXPECT_THAT(Targets(PlanExtraction(directory, "c.cab", Names{"ndis.*"}, "", false)),
                ElementsAre("NDIS.TXT", "sub/ndis.dos"));
    EXPECT_THAT(Targets(PlanExtraction(directory, "c.cab", {}, "out\\", false)),
                ElementsAre("out/NDIS.TXT", "out/sub/ndis.dos", "out/sub/other.bin", "out/readme"));
    const auto plan = PlanExtraction(directory, "c.cab", Names{"sub\\o*", "readme"}, "", false);
    EXPECT_EQ(2U, plan.front().Index);
    EXPECT_EQ(3U, plan.back().Index);
}

TEST_F(ExtractionPlan, EveryPatternMustFindSomething) {
    const CabinetDirectory directory = DirectoryOf({"a.txt"});
    EXPECT_THAT(
        [&] {
            PlanExtraction(directory, "c.cab", Names{"a.*", "scsi.txt"}, "", false);
        },
        ThrowsMessage<ToolError>("c.cab: no member matches scsi.txt"));
}

TEST_F(ExtractionPlan, RefusesUnsafeNamesBeforeAnythingIsWritten) {
    for (const char* name : {"..\\x", "sub\\..\\..\\x", "C:\\x", "\\x", "nul", "a:b"}) {
        const CabinetDirectory directory = DirectoryOf({"good", name});
        EXPECT_THAT(
            [&] { PlanExtraction(directory, "c.cab", {}, "", true); },
            ThrowsMessage<ToolError>(HasSubstr(std::string("c.cab: the member ") + name + " is refused: ")));
        EXPECT_EQ(1U, PlanExtraction(directory, "c.cab", Names{"good"}, "", true).size());
    }
}

TEST_F(ExtractionPlan, RefusesExistingFilesUnlessOverwritten) {
    WriteBytes("sub/b", BytesOf("mine"));
    const CabinetDirectory directory = DirectoryOf({"a", "sub\\b"});
    EXPECT_THAT([&] { PlanExtraction(directory, "c.cab", {}, "", false); },
                ThrowsMessage<ToolError>(HasSubstr("exists already; -o overwrites it")));
    EXPECT_EQ(2U, PlanExtraction(directory, "c.cab", {}, "", true).size());
    EXPECT_EQ(1U, PlanExtraction(directory, "c.cab", Names{"a"}, "", false).size());
}

TEST_F(ExtractionPlan, RefusesMembersThatWouldBeOneFile) {
    for (const bool overwrite : {false, true}) {
        for (const Names& names : {Names{"a", "a"}, Names{"A.TXT", "b", "a.txt"}, Names{"d\\x", "D/X"},
                                   Names{"\xC3\xA4.txt", "\xC3\x84.TXT"}}) {
            EXPECT_THAT(
                [&] { PlanExtraction(DirectoryOf(names), "c.cab", {}, "", overwrite); },
                ThrowsMessage<ToolError>(AllOf(StartsWith("c.cab: the members " + names.front() + " and "),
                                               EndsWith(" would be one file"))));
        }
    }
    EXPECT_EQ(1U,
              PlanExtraction(DirectoryOf({"A.TXT", "b", "a.txt"}), "c.cab", Names{"b"}, "", false).size());
}

TEST_F(ExtractionPlan, RefusesAMemberThatWouldBeTheFolderOfAnother) {
    for (const Names& names : {Names{"x", "X\\y"}, Names{"X/y/z", "x"}, Names{"d\\x\\y\\z", "a", "D/X"}}) {
        EXPECT_THAT([&] { PlanExtraction(DirectoryOf(names), "c.cab", {}, "", true); },
                    ThrowsMessage<ToolError>(HasSubstr(" would be the folder of ")));
    }
    EXPECT_EQ(4U, PlanExtraction(DirectoryOf({"x\\a", "x\\b", "xy", "y\\x"}), "c.cab", {}, "", true).size());
}

TEST_F(ExtractionPlan, RefusesSets) {
    CabinetDirectory directory = DirectoryOf({"a"});
    directory.Flags = kHasNextCabinet;
    EXPECT_THAT([&] { PlanExtraction(directory, "c.cab", {}, "", true); },
                ThrowsMessage<ToolError>("c.cab: this cabinet is part of a set; sets cannot be extracted"));
}

TEST_F(ExtractionPlan, NeedsSpaceForEveryFileAndGetsBackThatOfOlderOnes) {
    CabinetDirectory directory = DirectoryOf({"a", "b", "c"});
    for (CabinetMember& member : directory.Members) member.Size = 0x7FFF8000;
    WriteBytes("a", Bytes(1000));
    WriteBytes("b", Bytes(500));
    const auto plan = PlanExtraction(directory, "c.cab", {}, "", true);
    EXPECT_THAT([&] { RequireSpace(directory, "c.cab", plan, 6442351139U); },
                ThrowsMessage<ToolError>("c.cab: its files need 6442351140 bytes, and the target's drive has "
                                         "6442351139 left"));
    EXPECT_NO_THROW(RequireSpace(directory, "c.cab", plan, 6442351140U));
    directory.Members[2].Size = 0;
    directory.Members[1].Size = 1200;
    // The older file of the first member has been removed when the second is written.
    EXPECT_NO_THROW(RequireSpace(directory, "c.cab", plan, 0x7FFF8000U + 200));
    EXPECT_THROW(RequireSpace(directory, "c.cab", plan, 0x7FFF8000U + 199), ToolError);
}

class MemberFilesTest : public InTestFolder {};

TEST_F(MemberFilesTest, WritePlannedMembersWithTheirTime) {
    const CabinetDirectory directory = DirectoryOf({"a", "sub\\b", "c"});
    const auto plan = PlanExtraction(directory, "c.cab", Names{"a", "b"}, "", false);
    MemberFiles files(directory, plan, false);
    EXPECT_TRUE(files.Begin(0));
    files.Write(BytesOf("one"));
    files.Write(BytesOf("two"));
    EXPECT_FALSE(std::filesystem::exists("a"));
    files.End();
    EXPECT_EQ(BytesOf("onetwo"), ReadBytes("a"));
    EXPECT_TRUE(files.Begin(1));
    files.End();
    EXPECT_FALSE(files.Begin(2));
    EXPECT_EQ(Bytes(), ReadBytes("sub/b"));
    EXPECT_EQ(PackDosTime(1998, 7, 6, 5, 4, 2), ListFolder(".")[0].Modified);
}

TEST_F(MemberFilesTest, ATimeThatThereIsNotBecomesTheNearestOne) {
    CabinetDirectory directory = DirectoryOf({"a", "b", "c"});
    directory.Members[0].Modified = {0, 0};
    directory.Members[1].Modified = {0xFFFF, 0xFFFF};
    directory.Members[2].Modified = {(19 << 9) | (2 << 5) | 31, 31};
    const auto plan = PlanExtraction(directory, "c.cab", {}, "", false);
    MemberFiles files(directory, plan, false);
    for (std::size_t i = 0; i < 3; ++i) {
        ASSERT_TRUE(files.Begin(i));
        files.End();
    }
    EXPECT_EQ(PackDosTime(1980, 1, 1, 0, 0, 0), ListFolder(".").at(0).Modified);
    EXPECT_EQ(PackDosTime(2107, 12, 31, 23, 59, 58), ListFolder(".").at(1).Modified);
    EXPECT_EQ(PackDosTime(1999, 2, 28, 0, 0, 58), ListFolder(".").at(2).Modified);
}

TEST_F(MemberFilesTest, UnfinishedMemberLeavesTheOldFileAsItWas) {
    WriteBytes("a", BytesOf("old"));
    ASSERT_TRUE(SetTimeAndAttributes("a", PackDosTime(2000, 1, 1, 0, 0, 0), kReadOnly));
    const CabinetDirectory directory = DirectoryOf({"a"});
    const auto plan = PlanExtraction(directory, "c.cab", {}, "", true);
    {
        MemberFiles files(directory, plan, true);
        EXPECT_TRUE(files.Begin(0));
        files.Write(BytesOf("half"));
    }
    EXPECT_EQ(BytesOf("old"), ReadBytes("a"));
    EXPECT_EQ(FileKind::ReadOnly, KindOf("a"));
    EXPECT_EQ(1U, TreeOf(".").size());
    MemberFiles files(directory, plan, true);
    EXPECT_TRUE(files.Begin(0));
    files.Write(BytesOf("new"));
    files.End();
    EXPECT_EQ(BytesOf("new"), ReadBytes("a"));
    EXPECT_EQ(FileKind::Writable, KindOf("a"));
}

TEST_F(MemberFilesTest, AFileThatAppearsMeanwhileIsNotReplaced) {
    const CabinetDirectory directory = DirectoryOf({"a"});
    const auto plan = PlanExtraction(directory, "c.cab", {}, "", false);
    WriteBytes("a", BytesOf("mine"));
    MemberFiles files(directory, plan, false);
    EXPECT_THROW(files.Begin(0), ToolError);
    EXPECT_EQ(BytesOf("mine"), ReadBytes("a"));
}

}  // namespace
}  // namespace tools::cabarc::testing
