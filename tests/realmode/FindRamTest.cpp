#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/realmode/DiskTest.h"
#include "tests/realmode/DosBox.h"
#include "tests/realmode/ProgramRun.h"

namespace realmode::testing {
namespace {

using tools::testing::Bytes;

class FindRam : public ::testing::Test {
 protected:
    ProgramOutcome Run(const std::map<char, DosDrive>& drives, const std::string& tail = "",
                       unsigned dosVersion = 7) const {
        return RunProgramOfDos(
            Files, {.Program = FINDRAM, .Tail = tail, .DosVersion = dosVersion, .Drives = drives});
    }

    void ExpectFound(const ProgramOutcome& outcome, char letter) const {
        EXPECT_EQ(letter - 'A' + 1, outcome.ExitCode);
        EXPECT_EQ(std::string("SET RAMD=") + letter + ":\r\n", outcome.Output);
        EXPECT_EQ("", outcome.Errors);
    }

    void ExpectNone(const ProgramOutcome& outcome) const {
        EXPECT_EQ(0, outcome.ExitCode);
        EXPECT_EQ("", outcome.Output);
        EXPECT_EQ("", outcome.WentTo);
    }

    const tools::testing::TestFolder Files;
    const DosDrive Floppy{.CanNotBeRemoved = 0};
    const DosDrive HardDisk{.Label = "MS-RAMDR.IVE", .Clusters = 65000, .SectorsPerCluster = 32};
    const DosDrive OurDrive{.Driver = "VELRAM "};
    const DosDrive RamDrive{.CanNotBeRemoved = 2, .Label = "MS-RAMDR.IVE"};
};

TEST_F(FindRam, KnowsVelRamByItsDriverWhateverItsLabel) {
    ExpectFound(Run({{'A', Floppy}, {'C', HardDisk}, {'D', OurDrive}}), 'D');
    DosDrive named = OurDrive;
    named.Label = "GAMES";
    ExpectFound(Run({{'C', {}}, {'Z', named}}), 'Z');
}

TEST_F(FindRam, KnowsVelRamUnderDos3Too) {
    ExpectFound(Run({{'C', {}}, {'E', OurDrive}}, "", 3), 'E');
}

TEST_F(FindRam, KnowsTheUsersRamDriveByItsLabel) {
    ExpectFound(Run({{'C', HardDisk}, {'D', {}}, {'E', RamDrive}}), 'E');
    DosDrive undescribed = RamDrive;
    undescribed.IsDescribed = false;
    ExpectFound(Run({{'C', undescribed}}), 'C');
    DosDrive withoutPoint = RamDrive;
    withoutPoint.Label = "MS-RAMDRIVE";
    ExpectFound(Run({{'C', withoutPoint}}), 'C');
}

TEST_F(FindRam, PrefersVelRamAndElseTheFirst) {
    ExpectFound(Run({{'C', RamDrive}, {'D', RamDrive}, {'E', OurDrive}, {'F', OurDrive}}), 'E');
    ExpectFound(Run({{'C', {}}, {'D', RamDrive}, {'E', RamDrive}}), 'D');
}

TEST_F(FindRam, FindsNothingWhereNothingIs) {
    ExpectNone(Run({}));
    ExpectNone(Run({{'A', Floppy}, {'C', {}}}));
    DosDrive almost = RamDrive;
    for (const std::string label : {"MS-RAMDR.IV", "MS-RAMDR.IVES", "VELRAM", ""}) {
        almost.Label = label;
        ExpectNone(Run({{'C', almost}}));
    }
}

TEST_F(FindRam, AHardDiskWithThatLabelIsNone) {
    ExpectNone(Run({{'C', HardDisk}}));
    DosDrive justTooLarge = RamDrive;
    justTooLarge.Clusters = 0x4000;
    ExpectNone(Run({{'C', justTooLarge}}));
    justTooLarge.Clusters = 0x3FFF;
    ExpectFound(Run({{'C', justTooLarge}}), 'C');
}

TEST_F(FindRam, TouchesNoFloppyNoCdAndNoDriveOfTheNet) {
    DosDrive floppy = RamDrive;
    floppy.CanNotBeRemoved = 0;
    DosDrive remote = OurDrive;
    remote.Attributes = 0x1000;
    DosDrive substituted = OurDrive;
    substituted.Attributes = 0x8842;
    const ProgramOutcome outcome = Run({{'A', OurDrive},
                                        {'B', floppy},
                                        {'C', floppy},
                                        {'D', remote},
                                        {'E', substituted},
                                        {'F', {}},
                                        {'Z', remote}});
    ExpectNone(outcome);
    EXPECT_EQ("FF", outcome.Touched) << "its description and its label";
}

TEST_F(FindRam, PassesOverADriveThatCannotBeRead) {
    DosDrive unready = OurDrive;
    unready.IsReady = false;
    ExpectFound(Run({{'C', unready}, {'D', OurDrive}}), 'D');
    ExpectNone(Run({{'C', unready}}));
}

TEST_F(FindRam, GoesToTheDriveWhenAsked) {
    for (const std::string tail : {" /G", "/g", " \t/G  "}) {
        const ProgramOutcome outcome = Run({{'C', {}}, {'D', OurDrive}}, tail);
        ExpectFound(outcome, 'D');
        EXPECT_EQ("D", outcome.WentTo) << tail;
    }
    EXPECT_EQ("", Run({{'D', OurDrive}}).WentTo);
    ExpectNone(Run({{'C', {}}}, " /G"));
}

TEST_F(FindRam, OtherArgumentsAreALineAndNoDrive) {
    for (const std::string tail : {" /?", " D:", " /G /G", " /GO", "/"}) {
        const ProgramOutcome outcome = Run({{'D', OurDrive}}, tail);
        ExpectNone(outcome);
        EXPECT_EQ("FINDRAM [/G]: ends with the number of the RAM drive; /G goes there\r\n", outcome.Errors)
            << tail;
    }
}

TEST_F(FindRam, LooksForNothingUnderDos2) {
    ExpectNone(Run({{'C', OurDrive}}, "", 2));
}

/// Drives of DOSBox: folders that are presented as drives of some kind.
class FindRamInDosBox : public FindRam {
 protected:
    /// Returns the output of the batch file that finds the letter in the way that the documentation shows.
    std::string SetRamd(const std::vector<std::string>& mounts) const {
        Files.Write("c/FINDRAM.COM", FileAt(FINDRAM));
        Files.Write("c/TRY.BAT",
                    "@ECHO OFF\r\n"
                    "C:\\FINDRAM /G >NUL\r\n"
                    "IF ERRORLEVEL 6 ECHO above E >>C:\\OUT.TXT\r\n"
                    "IF NOT ERRORLEVEL 1 GOTO NONE\r\n"
                    "C:\\FINDRAM >RAMD.BAT\r\n"
                    "CALL RAMD.BAT\r\n"
                    "ECHO RAM drive %RAMD% >>C:\\OUT.TXT\r\n"
                    "GOTO END\r\n"
                    ":NONE\r\n"
                    "ECHO none >>C:\\OUT.TXT\r\n"
                    ":END\r\n");
        for (const char* folder : {"b", "d", "e", "f"}) Files.MakeFolder(folder);
        std::vector<std::string> commands = mounts;
        commands.emplace_back("call TRY.BAT");
        RunInDosBox(Files.Path(), commands);
        const Bytes out = Files.Read("c/OUT.TXT");
        return {out.begin(), out.end()};
    }

    std::string Mount(const std::string& letter, const std::string& options) const {
        return "mount " + letter + " \"" + Files.Text(letter) + "\" " + options;
    }
    const std::string kSmall = "-size 512,4,4000,3900";
};

TEST_F(FindRamInDosBox, ABatchFileGetsTheLetterThroughTheRamDrive) {
    EXPECT_EQ("RAM drive E:\r\n",
              SetRamd({Mount("d", "-label GAMES"), Mount("e", kSmall + " -label MS-RAMDRIVE")}));
    EXPECT_TRUE(Files.Exists("e/RAMD.BAT"));
}

TEST_F(FindRamInDosBox, FindsNoneAmongAHardDiskAFloppyAndACd) {
    EXPECT_EQ("none\r\n",
              SetRamd({Mount("d", "-label MS-RAMDRIVE"), Mount("b", "-t floppy -label MS-RAMDRIVE"),
                       Mount("f", "-t cdrom -label MS-RAMDRIVE")}));
}

}  // namespace
}  // namespace realmode::testing
