// The setup modules of a batch run, and where their data come from.

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/src/start/BatchModeTest.h"
#include "tests/support/LocalMachine.h"

namespace velbooter::testing {
namespace {

using Files = std::vector<std::string>;

class BatchSetup : public BatchModeTest {
 protected:
    BatchSetup() {
        MakeDisks({{"Setup", ""}, {"win", ""}, {"nt", ""}, {"none", ""}});
        Configure("Setup", "[Create_CABs]\r\nsetupwin=lib\r\nsetupnt=lib\r\n");
        Configure("win", "[Create_CABs]\r\nSetupWin=lib\r\n");
        Configure("nt", "[Create_CABs]\r\nSETUPNT=lib\r\n");
        for (const char* name : {"key", "win98", "winme", "win2k"}) {
            Folder.Write(std::string("files\\inf_files\\") + name + "_template.inf");
        }
        Folder.MakeFolder("files\\setupwin\\bin");
        Folder.MakeFolder("files\\setupnt\\bin");
        MakeArchiver({"setupwin", "setupnt"});
        const char* windows = "Software\\Microsoft\\Windows\\CurrentVersion";
        Machine.Set(windows, "RegisteredOwner", "Owner of the machine");
        Machine.Set(windows, "ProductName", "Edition of the machine");
    }

    void MakeArchiver(const Files& modules) {
        std::string instructions;
        for (const std::string& module : modules) instructions += "create|cabs\\lib\\" + module + ".cab\n";
        Folder.MakeTool("cabarc.exe", instructions);
    }

    /// Returns the owner in the answer file auto.inf, with its quotes.
    std::string OwnerInAnswers() { return LineAfter("files\\setupwin\\bin\\auto.inf", "\r\nName="); }

    std::string EditionInBatchFile() { return LineAfter("files\\setupwin\\bin\\os.bat", "OSVersion= "); }

    static Message PackingFailure(const std::string& name) {
        return {"The Cabinet " + name + ".cab could not be created \r\n\r\nThe Veltrane Can't Continue !",
                "Error While Copying", Buttons::Ok, Icon::Critical};
    }

    LocalMachine Machine;

 private:
    std::string LineAfter(const std::string& tail, const std::string& mark) {
        const std::string content = Folder.Read(tail);
        const size_t at = content.find(mark);
        if (at == std::string::npos) return "nowhere in " + content;
        const size_t from = at + mark.size();
        return content.substr(from, content.find("\r\n", from) - from);
    }
};

TEST_F(BatchSetup, BothModulesAreMadeInTheirOrderBeforeTheFilesAreListed) {
    EXPECT_EQ(ExitCode::Built, Run(Values("Setup")));
    EXPECT_EQ(
        (Files{"Please wait ...", "Getting a list of Disks Configuration ...",
               "Getting Disk Configuration INI file ...", "Processing setup.ini file ...",
               "Getting Drivers Settings ...", "Creating the SetupWin module ...",
               "Creating the SetupNT module ...", "Getting files list to be copied to the floppy image ...",
               "Creating the floppy image file ...", "Preparing selected Drivers ...",
               "Preparing pre-built drivers cache ...", "Preparing new floppy image ...",
               "Copying files to floppy image ..."}),
        Screen.WaitStatuses());
    const auto calls = Folder.Calls("cabarc.exe");
    ASSERT_EQ(2u, calls.size());
    EXPECT_EQ(Folder.Path() +
                  "\\cabarc.exe -m LZX:21 -p -r -P files\\setupwin\\ n cabs\\lib\\setupwin.cab "
                  "files\\setupwin\\*.*",
              calls[0].CommandLine);
    EXPECT_EQ(Folder.Path() +
                  "\\cabarc.exe -m LZX:21 -p -r -P files\\setupnt\\ n cabs\\lib\\setupnt.cab "
                  "files\\setupnt\\*.*",
              calls[1].CommandLine);
    EXPECT_TRUE(IsOnDisk("lib\\setupwin.cab"));
    EXPECT_TRUE(IsOnDisk("lib\\setupnt.cab"));
    ExpectCleanFolder();
}

TEST_F(BatchSetup, OnlyTheModulesThatTheDiskNamesAreMade) {
    struct Case {
        const char* Disk;
        bool HasWin, HasNt;
    };
    Folder.Write("keyfile.txt", "[Win2KInfo]\r\nOwnerName=Jane\r\n");
    for (const Case& c : {Case{"win", true, false}, Case{"nt", false, true}, Case{"none", false, false}}) {
        for (const char* file : {"files\\setupwin\\bin\\key.inf", "files\\setupnt\\bin\\unattend.txt"}) {
            Folder.Remove(file);
        }
        MakeArchiver(c.HasWin ? Files{"setupwin"} : Files{"setupnt"});
        Screen.Views.clear();
        EXPECT_EQ(ExitCode::Built, Run(Values(c.Disk))) << c.Disk;
        const Files statuses = Screen.WaitStatuses();
        const auto told = [&](const char* status) {
            return std::find(statuses.begin(), statuses.end(), status) != statuses.end();
        };
        EXPECT_EQ(c.HasWin, told("Creating the SetupWin module ...")) << c.Disk;
        EXPECT_EQ(c.HasNt, told("Creating the SetupNT module ...")) << c.Disk;
        EXPECT_EQ(c.HasWin, Folder.HasFile("files\\setupwin\\bin\\key.inf")) << c.Disk;
        EXPECT_EQ(c.HasNt, Folder.HasFile("files\\setupnt\\bin\\unattend.txt")) << c.Disk;
        EXPECT_EQ(IsOnDisk("lib\\setupwin.cab"), c.HasWin) << c.Disk;
        EXPECT_EQ(IsOnDisk("lib\\setupnt.cab"), c.HasNt) << c.Disk;
    }
}

TEST_F(BatchSetup, WithoutAKeyFileTheDataComeFromTheRegistry) {
    EXPECT_EQ(ExitCode::Built, Run(Values("win")));
    EXPECT_EQ("\"Owner of the machine\"", OwnerInAnswers());
    EXPECT_EQ("Edition of the machine", EditionInBatchFile());
}

TEST_F(BatchSetup, AKeyFileIsTakenEvenWithoutTheOption) {
    Folder.Write("keyfile.txt", "[Win9xInfo]\r\nOwnerName=Jane\r\nOptimizedFor=Windows ME\r\n");
    for (const bool option : {false, true}) {
        CommandLineValues values = Values("win");
        values.UseKeyFile = option;
        EXPECT_EQ(ExitCode::Built, Run(values));
        EXPECT_EQ("\"Jane\"", OwnerInAnswers()) << option;
        EXPECT_EQ("Windows ME", EditionInBatchFile()) << option;
    }
}

TEST_F(BatchSetup, AKeyFileWithoutTheSectionKeepsTheRegistryOutAllTheSame) {
    Folder.Write("keyfile.txt", "[Win2KInfo]\r\nOwnerName=Jane\r\n");
    EXPECT_EQ(ExitCode::Built, Run(Values("win")));
    EXPECT_EQ("\"\"", OwnerInAnswers());
    EXPECT_EQ("", EditionInBatchFile());
}

TEST_F(BatchSetup, TheOptionWithoutTheFileLeavesThePagesDefaults) {
    CommandLineValues values = Values("win");
    values.UseKeyFile = true;
    EXPECT_EQ(ExitCode::Built, Run(values));
    EXPECT_EQ("\"VelUser\"", OwnerInAnswers());
    EXPECT_EQ("Microsoft Windows 98", EditionInBatchFile());
    EXPECT_TRUE(Screen.Messages.empty());
}

TEST_F(BatchSetup, WithoutAKeyFileTheAnswersOfAnEarlierRunAreOnTheDisk) {
    Folder.Write("files\\setupnt\\bin\\unattend.txt", "; old");
    Folder.Remove("files\\inf_files");
    EXPECT_EQ(ExitCode::Built, Run(Values("nt")));
    EXPECT_EQ("; old", Folder.Read("files\\setupnt\\bin\\unattend.txt"));
    EXPECT_TRUE(IsOnDisk("lib\\setupnt.cab"));
}

TEST_F(BatchSetup, AMissingTemplateIsShownOnceAndCleanedUp) {
    const std::pair<const char*, const char*> cases[] = {{"win", "files\\inf_files\\key_template.inf"},
                                                         {"win", "files\\inf_files\\winme_template.inf"},
                                                         {"nt", "files\\inf_files\\win2k_template.inf"}};
    Folder.Write("keyfile.txt");
    size_t shown = 0;
    for (const auto& [disk, file] : cases) {
        Folder.Remove(file);
        App.RunEnded = false;
        Screen.ExpectMessageWith({"53", "File not found", Folder.At(file)});
        EXPECT_EQ(6, static_cast<int>(Run(Values(disk)))) << file;
        EXPECT_EQ(++shown, Screen.Messages.size());
        EXPECT_EQ(Icon::Critical, Screen.Messages.back().Picture);
        EXPECT_TRUE(App.RunEnded);
        EXPECT_FALSE(App.Wait.Visible);
        ExpectCleanFolder();
        Folder.Write(file);
    }
    EXPECT_TRUE(Folder.Calls("bfi.exe").empty());
}

TEST_F(BatchSetup, AFailedPackingIsToldAndTheRunGoesOn) {
    MakeArchiver({});
    Screen.Expect(PackingFailure("setupwin"));
    Screen.Expect(PackingFailure("setupnt"));
    EXPECT_EQ(ExitCode::Built, Run(Values("Setup")));
    EXPECT_FALSE(IsOnDisk("lib\\setupwin.cab"));
    EXPECT_FALSE(IsOnDisk("lib\\setupnt.cab"));
    EXPECT_TRUE(IsOnDisk("mark\\setup"));
    ExpectCleanFolder();
}

}  // namespace
}  // namespace velbooter::testing
