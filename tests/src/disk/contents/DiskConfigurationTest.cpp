#include "src/disk/contents/DiskConfiguration.h"

#include <gtest/gtest.h>

#include "src/common/RuntimeError.h"
#include "tests/support/ApplicationFolder.h"

namespace velbooter::testing {
namespace {

using std::string_literals::operator""s;
using Files = std::vector<std::string>;

Message CabinetFailure(const std::string& name) {
    return {"The Cabinet " + name + ".cab could not be created \r\n\r\nThe Veltrane Can't Continue !",
            "Error While Copying", Buttons::Ok, Icon::Critical};
}

/// A line that succeeds, so that the lines after it decide the result.
constexpr const char* kSuccess = "[Copy_CABs]\r\nmissing=\r\n";

class InitLists : public ApplicationTest {
 protected:
    /// Runs the configuration; returns whether the build continues.
    bool Run(const std::string& configuration) {
        Folder.Write("files\\disk.ini", configuration);
        return Init_Lists(App.Paths, App.Screen, App.Wizard, "disk.ini");
    }

    int NumberOfRun(const std::string& diskFile) {
        try {
            static_cast<void>(Init_Lists(App.Paths, App.Screen, App.Wizard, diskFile));
        } catch (const RuntimeError& error) {
            return error.Number;
        }
        return 0;
    }
};

TEST_F(InitLists, CopyCabsCopiesUnderCabsQuietly) {
    Folder.Write("modules\\net.cab", "net");
    EXPECT_TRUE(Run("[Copy_CABs]\r\nmissing.cab = bin\\missing.cab\r\nmodules\\net.cab = bin\\net.cab\r\n"));
    EXPECT_EQ((Files{"bin\\net.cab"}), Folder.Tree("cabs"));
}

TEST_F(InitLists, CopyFilesReportsAFailureAndAbortEndsTheBuild) {
    Folder.Write("Drivers.ini");
    Folder.Write("cabs\\x");
    Folder.Write("late.txt");
    Screen.Expect(CopyFailure("missing.sys"), Answer::Abort);
    EXPECT_FALSE(Run("[Copy_Files]\r\nmissing.sys=a.sys\r\nlate.txt=late.txt\r\n"));
    EXPECT_FALSE(Folder.HasFile("cabs\\late.txt")) << "nothing is done after";
}

TEST_F(InitLists, CopyFilesGoesOnAfterIgnore) {
    Folder.Write("late.txt", "late");
    Screen.Expect(CopyFailure("missing.sys"), Answer::Ignore);
    EXPECT_TRUE(Run("[Copy_Files]\r\nmissing.sys=a.sys\r\nlate.txt=late.txt\r\n"));
    EXPECT_EQ("late", Folder.Read("cabs\\late.txt"));
}

TEST_F(InitLists, CopyFilesForCabsCopiesUnderFilesAndReports) {
    Folder.Write("dos\\MEM.EXE", "mem");
    Screen.Expect(CopyFailure("missing.sys"), Answer::Ignore);
    EXPECT_TRUE(Run("[Copy_Files_for_CABs]\r\nMEM.EXE=net\\bin\\MEM.EXE\r\nmissing.sys=net\\x\r\n"));
    EXPECT_EQ("mem", Folder.Read("files\\net\\bin\\MEM.EXE"));
    EXPECT_FALSE(Folder.HasFolder("cabs"));
}

TEST_F(InitLists, CreateCabsPacksTheFolderUnderItsName) {
    Folder.MakeTool("cabarc.exe", "create|cabs\\lib\\Net.cab\n");
    Folder.Write("files\\Net\\a.txt");
    EXPECT_TRUE(Run("[Create_CABs]\r\n Net = lib \r\n"));
    const std::vector<ToolCall> calls = Folder.Calls("cabarc.exe");
    ASSERT_EQ(1u, calls.size());
    EXPECT_EQ(Folder.At("cabarc.exe -m LZX:21 -p -r -P files\\Net\\ n cabs\\lib\\Net.cab files\\Net\\*.*"),
              calls[0].CommandLine);
}

TEST_F(InitLists, ACabinetThatIsNotMadeEndsTheBuild) {
    Folder.MakeTool("cabarc.exe");
    Folder.Write("after.txt");
    Screen.Expect(CabinetFailure("net"));
    EXPECT_FALSE(Run("[Create_CABs]\r\nnet=lib\r\n[Copy_Files]\r\nafter.txt=after.txt\r\n"));
    EXPECT_FALSE(Folder.HasFile("cabs\\after.txt")) << "nothing is done after";
}

TEST_F(InitLists, SetupModulesOnlySetTheirFlagsInAnyCase) {
    EXPECT_TRUE(Run(kSuccess + "[Create_CABs]\r\nSetupWin=lib\r\n"s));
    EXPECT_TRUE(App.Wizard.SetupWinIncluded);
    EXPECT_FALSE(App.Wizard.SetupNTIncluded);
    EXPECT_TRUE(Run(kSuccess + "[Create_CABs]\r\nSETUPNT=lib\r\n"s));
    EXPECT_FALSE(App.Wizard.SetupWinIncluded) << "cleared at the start";
    EXPECT_TRUE(App.Wizard.SetupNTIncluded);
    EXPECT_TRUE(Run(kSuccess));
    EXPECT_FALSE(App.Wizard.SetupNTIncluded);
}

TEST_F(InitLists, ASetupModuleNameInAnotherSectionIsAnOrdinaryFile) {
    EXPECT_TRUE(Run("[Copy_CABs]\r\nsetupwin=lib\r\n"));
    EXPECT_FALSE(App.Wizard.SetupWinIncluded);
}

TEST_F(InitLists, SetupLineBeforeAnyCopyEndsTheBuild) {
    EXPECT_FALSE(Run("[Create_CABs]\r\nsetupwin=x\r\n"));
    EXPECT_TRUE(App.Wizard.SetupWinIncluded) << "the line itself is carried out";
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(InitLists, ALineInNoSectionBeforeAnyCopyEndsTheBuild) {
    Folder.Write("a.txt");
    EXPECT_FALSE(Run("a.txt=b.txt\r\n[Copy_Files]\r\na.txt=a.txt\r\n"));
    EXPECT_FALSE(Folder.HasFolder("cabs"));
}

TEST_F(InitLists, ALineInNoSectionAfterASuccessDoesNothing) {
    Folder.Write("a.txt");
    EXPECT_TRUE(Run(kSuccess + "[Other]\r\na.txt=b.txt\r\n[DefaultDrivers]\r\nASPI=1\r\n"s));
    EXPECT_EQ((Files{}), Folder.Tree("cabs"));
}

TEST_F(InitLists, AnIgnoredFailureCountsAsSuccess) {
    Screen.Expect(CopyFailure("missing"), Answer::Ignore);
    EXPECT_TRUE(Run("[Copy_Files]\r\nmissing=x\r\n[Create_CABs]\r\nsetupwin=x\r\n"));
}

TEST_F(InitLists, AHeaderWithATrailingSpaceIsNotRecognised) {
    Folder.Write("a.txt");
    EXPECT_FALSE(Run("[Copy_Files] \r\na.txt=a.txt\r\n"));
    EXPECT_FALSE(Folder.HasFolder("cabs"));
    App.RunEnded = false;
    EXPECT_TRUE(Run(kSuccess + "[Copy_Files]\r\na.txt=a.txt\r\n[Copy_Files] \r\na.txt=b.txt\r\n"s));
    EXPECT_EQ((Files{"a.txt"}), Folder.Tree("cabs"));
}

TEST_F(InitLists, HeadersAreExactToTheCharacter) {
    for (const char* header :
         {" [Copy_Files]", "[copy_files]", "[Copy_Files];", "[Copy_Files", "[]", "[Copy_CABS]"}) {
        Folder.Write("a.txt");
        App.RunEnded = false;
        EXPECT_FALSE(Run(std::string(header) + "\r\na.txt=a.txt\r\n")) << header;
        EXPECT_FALSE(Folder.HasFolder("cabs")) << header;
    }
}

TEST_F(InitLists, AnUnknownHeaderWithAnEqualsSignIsADataLineToo) {
    EXPECT_FALSE(Run("[x=y\r\n")) << "a line in no section before any success";
    App.RunEnded = false;
    EXPECT_TRUE(Run(kSuccess + "[x=y\r\n"s));
}

TEST_F(InitLists, CommentsAndEmptyLinesAndLinesWithoutAnEqualsSignAreSkipped) {
    Folder.Write("a.txt", "a");
    EXPECT_TRUE(
        Run("; c=d\r\n\r\nno equals sign\r\n   \r\n;[Copy_CABs]\r\n[Copy_Files]\r\n;b=c\r\nplain\r\n"
            "a.txt=a.txt\r\n"));
    EXPECT_EQ((Files{"a.txt"}), Folder.Tree("cabs"));
}

TEST_F(InitLists, ACommentBeginsAtTheFirstCharacterOnly) {
    Screen.Expect(CopyFailure("; a.txt"), Answer::Ignore);
    EXPECT_TRUE(Run("[Copy_Files]\r\n ; a.txt=a.txt\r\n"));
}

TEST_F(InitLists, ThePartAfterASecondEqualsSignIsIgnored) {
    Folder.Write("a", "a");
    EXPECT_TRUE(Run("[Copy_Files]\r\na=b=c\r\n"));
    EXPECT_EQ((Files{"b"}), Folder.Tree("cabs"));
}

TEST_F(InitLists, BothSidesAreTrimmedOfSpaces) {
    Folder.Write("a b.txt", "a");
    EXPECT_TRUE(Run("[Copy_Files]\r\n   a b.txt   =   bin\\c d.txt   \r\n"));
    EXPECT_EQ((Files{"bin\\c d.txt"}), Folder.Tree("cabs"));
}

TEST_F(InitLists, FoldersAreCopiedByPattern) {
    Folder.Write("files\\more\\a.txt");
    Folder.Write("files\\more\\b.txt");
    EXPECT_TRUE(Run("[Copy_Files]\r\nfiles\\more\\*.*=bin\\*.*\r\nfiles\\more\\*.*=\r\n"));
    EXPECT_EQ((Files{"a.txt", "b.txt", "bin\\a.txt", "bin\\b.txt"}), Folder.Tree("cabs"));
}

TEST_F(InitLists, EachHeaderIsAnnouncedAndPainted) {
    EXPECT_TRUE(Run("[Copy_CABs]\r\n[Copy_Files]\r\n[Copy_Files_for_CABs]\r\n[Create_CABs]\r\n[Other]\r\n"));
    EXPECT_EQ(
        (Files{"Please Wait ... Copying found ModBoot modules", "Please Wait ... Copying files from sources",
               "Please Wait ... Preparing files for CABs creation", "Please Wait ... Creating CAB files"}),
        Screen.WizardStatuses());
    EXPECT_GE(Screen.Repaints(), 4);
}

TEST_F(InitLists, LfLineEndsMeanTheSame) {
    Folder.Write("a.txt", "a");
    EXPECT_TRUE(Run("; comment\n\n[Copy_Files]\na.txt=a.txt\n[Create_CABs]\nsetupwin=x"));
    EXPECT_EQ((Files{"a.txt"}), Folder.Tree("cabs"));
    EXPECT_TRUE(App.Wizard.SetupWinIncluded);
}

TEST_F(InitLists, AnEmptyFileIsNoFailure) {
    EXPECT_TRUE(Run(""));
    EXPECT_TRUE(Screen.Views.empty());
}

TEST_F(InitLists, AMissingFileIsError53) {
    App.Wizard.SetupWinIncluded = true;
    Folder.MakeFolder("files");
    EXPECT_EQ(kFileNotFound, NumberOfRun("missing.ini"));
    EXPECT_FALSE(App.RunEnded) << "the error reaches the caller";
    EXPECT_FALSE(App.Wizard.SetupWinIncluded);
}

TEST_F(InitLists, AFolderInPlaceOfTheFileIsAnError) {
    Folder.MakeFolder("files\\disk.ini");
    EXPECT_NE(0, NumberOfRun("disk.ini"));
}

TEST_F(InitLists, DamagedLinesDoNoHarm) {
    Folder.Write("a.txt", "a");
    const std::string huge(10'000'000, 'x');
    EXPECT_TRUE(Run("[Copy_CABs]\r\n" + huge + "\r\n" + huge + "=" + huge + "\r\n=\r\n\0=\0\r\n"s +
                    "a\0=b\r\n"s + "<|>?=::\r\n[Copy_Files]\r\na.txt=a.txt\r\n"));
    EXPECT_TRUE(Folder.HasFile("cabs\\a.txt"));
}

TEST_F(InitLists, TheFileIsClosedWhenTheBuildEnds) {
    EXPECT_FALSE(Run("x=y\r\n"));
    LockedFile nobodyHasItOpen(Folder.At("files\\disk.ini"));
}

}  // namespace
}  // namespace velbooter::testing
