#include <gtest/gtest.h>

#include "tests/realmode/DiskTest.h"
#include "tests/realmode/DosBox.h"
#include "tests/realmode/ProgramRun.h"

namespace realmode::testing {
namespace {

using tools::testing::Bytes;

class WhichDrv : public ::testing::Test {
 protected:
    ProgramOutcome Run(const std::map<char, DosDrive>& drives, const std::string& tail = " HD") const {
        return RunProgramOfDos(Files, {.Program = WHICHDRV, .Tail = tail, .Drives = drives});
    }

    void ExpectHardDisk(const std::map<char, DosDrive>& drives, int number) const {
        const ProgramOutcome outcome = Run(drives);
        EXPECT_EQ(number, outcome.ExitCode);
        EXPECT_EQ("", outcome.Output + outcome.Errors);
    }

    const tools::testing::TestFolder Files;
    const DosDrive Floppy{.CanNotBeRemoved = 0};
    const DosDrive Cd{.Attributes = 0x1002};
    const DosDrive VelRam{.Driver = "VELRAM "};
    const DosDrive RamDrive{.CanNotBeRemoved = 2, .Label = "MS-RAMDR.IVE"};
};

TEST_F(WhichDrv, TheHardDiskIsTheFirstThatCanBeRead) {
    ExpectHardDisk({{'A', Floppy}, {'C', {}}, {'D', {}}}, 3);
    DosDrive unready;
    unready.IsReady = false;
    ExpectHardDisk({{'C', unready}, {'D', {}}}, 4);
    ExpectHardDisk({{'C', unready}}, 0);
    ExpectHardDisk({{'Z', {}}}, 26);
}

TEST_F(WhichDrv, ARamDriveIsNoHardDisk) {
    ExpectHardDisk({{'C', VelRam}, {'D', RamDrive}}, 0);
    ExpectHardDisk({{'C', VelRam}, {'D', RamDrive}, {'E', {}}}, 5);
}

TEST_F(WhichDrv, NoFloppyAndNoDriveOfTheNetIsAHardDiskOrTouched) {
    DosDrive remote;
    remote.Attributes = 0x1000;
    const ProgramOutcome outcome = Run({{'A', Floppy}, {'C', Floppy}, {'D', remote}});
    EXPECT_EQ(0, outcome.ExitCode);
    EXPECT_EQ("", outcome.Touched);
}

TEST_F(WhichDrv, TheCdIsTheFirstThatCanBeRead) {
    DosDrive empty = Cd;
    empty.IsReady = false;
    const std::map<char, DosDrive> drives{{'C', {}}, {'M', empty}, {'R', Cd}, {'S', Cd}};
    EXPECT_EQ(18, Run(drives, " CD").ExitCode);
    EXPECT_EQ(13, Run(drives, " CDROM").ExitCode);
    EXPECT_EQ(0, Run({{'C', {}}, {'M', empty}}, " CD").ExitCode);
    EXPECT_EQ(13, Run({{'C', {}}, {'M', empty}}, " CDROM").ExitCode);
}

TEST_F(WhichDrv, WithoutMscdexThereIsNoCd) {
    EXPECT_EQ(0, Run({{'C', {}}}, " CD").ExitCode);
    EXPECT_EQ(0, Run({{'C', {}}}, " CDROM").ExitCode);
}

TEST_F(WhichDrv, ANamedDriveIsThatDriveIfItCanBeRead) {
    DosDrive unready;
    unready.IsReady = false;
    const std::map<char, DosDrive> drives{{'A', Floppy}, {'C', {}}, {'D', unready}, {'E', VelRam}};
    const std::map<std::string, int> wanted{{" A:", 1}, {" a: ", 1}, {" C:", 3},
                                            {" d:", 0}, {" e:", 5},  {" Z:", 0}};
    for (const auto& [tail, number] : wanted) {
        const ProgramOutcome outcome = Run(drives, tail);
        EXPECT_EQ(number, outcome.ExitCode) << tail;
        EXPECT_EQ("", outcome.Output + outcome.Errors) << tail;
    }
}

TEST_F(WhichDrv, ADriveIsWritableIfAFileFitsOntoIt) {
    DosDrive unready;
    unready.IsReady = false;
    const std::map<char, DosDrive> drives{{'A', Floppy},
                                          {'B', {.Writing = DosDrive::Protected, .CanNotBeRemoved = 0}},
                                          {'C', {.Writing = DosDrive::Full}},
                                          {'D', unready}};
    const std::map<std::string, int> wanted{{" A: WRITE", 1}, {" a:  write ", 1}, {" B: WRITE", 0},
                                            {" C: WRITE", 0}, {" D: WRITE", 0},   {" Z: WRITE", 0}};
    for (const auto& [tail, number] : wanted) {
        const ProgramOutcome outcome = Run(drives, tail);
        EXPECT_EQ(number, outcome.ExitCode) << tail;
        EXPECT_EQ("", outcome.Output + outcome.Errors) << tail;
        EXPECT_EQ(outcome.Created, outcome.Deleted) << tail;
    }
}

TEST_F(WhichDrv, NothingIsWrittenWithoutTheWord) {
    EXPECT_EQ("A", Run({{'A', Floppy}}, " A: WRITE").Created);
    for (const std::string tail : {" A:", " HD", " A: WRIT", " A: WRITES", " WRITE"})
        EXPECT_EQ("", Run({{'A', Floppy}, {'C', {}}}, tail).Created) << tail;
}

TEST_F(WhichDrv, OtherArgumentsAreALineAndNoDrive) {
    for (const std::string tail :
         {" /?", " HDD", " H", " C", " HD CD", " CDR", " C: D:", " CC:", " @:", " [:", " :", " C: WRITES"}) {
        const ProgramOutcome outcome = Run({{'C', {}}}, tail);
        EXPECT_EQ(0, outcome.ExitCode) << tail;
        EXPECT_EQ("WHICHDRV [CD | CDROM | HD | X: [WRITE]]: ends with the number of the drive\r\n",
                  outcome.Errors)
            << tail;
    }
    EXPECT_EQ(4, Run({{'D', {}}}, " \thd ").ExitCode);
}

/// Folders that DOSBox presents as drives.
class WhichDrvInDosBox : public ::testing::Test {
 protected:
    /// What the disk's LETTER.BAT prints for the program's answers, a line each.
    std::string Letters(const std::vector<std::string>& setUp,
                        const std::vector<std::string>& arguments) const {
        Files.Write("c/WHICHDRV.COM", FileAt(WHICHDRV));
        Files.Write("c/LETTER.BAT", FileAt(LETTER_BAT));
        std::string batch = "@ECHO OFF\r\n";
        for (const std::string& argument : arguments) {
            batch += "CALL C:\\LETTER.BAT X C:\\WHICHDRV " + argument + "\r\nECHO %X%. >>C:\\OUT.TXT\r\n";
        }
        Files.Write("c/TRY.BAT", batch);
        std::vector<std::string> commands = setUp;
        commands.emplace_back("call C:\\TRY.BAT");
        RunInDosBox(Files.Path(), commands);
        const Bytes out = Files.Read("c/OUT.TXT");
        return {out.begin(), out.end()};
    }

    std::string Mount(const std::string& letter, const std::string& options) const {
        Files.MakeFolder(letter);
        return "mount " + letter + " \"" + Files.Text(letter) + "\" " + options;
    }

    const tools::testing::TestFolder Files;
};

TEST_F(WhichDrvInDosBox, NamesTheCurrentDrive) {
    EXPECT_EQ("E:.\r\nE:.\r\n", Letters({Mount("e", ""), "e:"}, {"", ""}));
}

TEST_F(WhichDrvInDosBox, WithoutACdThereIsNone) {
    EXPECT_EQ(".\r\n.\r\nC:.\r\n", Letters({Mount("r", "")}, {"CD", "CDROM", "HD"}));
}

TEST_F(WhichDrvInDosBox, FindsTheCdWhateverItsLetter) {
    Files.Write("m/SETUP.EXE", "");
    EXPECT_EQ("M:.\r\nM:.\r\n", Letters({Mount("m", "-t cdrom")}, {"CD", "cdrom"}));
}

}  // namespace
}  // namespace realmode::testing
