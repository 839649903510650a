// The import of the DOS files from every source that they can have, up to the wizard that follows it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/DosFiles.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/FileDialogs.h"
#include "tests/e2e/support/HelpCalls.h"
#include "tests/e2e/support/Programs.h"
#include "tests/e2e/support/Screen.h"
#include "tests/e2e/support/ShownWizard.h"

namespace velbooter::e2e {
namespace {

namespace fs = std::filesystem;

// Renames a file while it lives, so that the program does not find it.
class HiddenFile {
 public:
    explicit HiddenFile(std::string path) : path_(std::move(path)) {
        // A killed test may have left the file renamed.
        if (fs::exists(path_)) fs::rename(path_, path_ + ".hidden");
    }
    ~HiddenFile() {
        if (fs::exists(path_ + ".hidden")) fs::rename(path_ + ".hidden", path_);
    }
    HiddenFile(const HiddenFile&) = delete;
    HiddenFile& operator=(const HiddenFile&) = delete;

 private:
    std::string path_;
};

// Files that are removed again, together with the folders that were created for them.
class PlacedFiles {
 public:
    ~PlacedFiles() {
        for (const std::string& path : paths_) {
            fs::remove(path);
            // A folder that is not empty cannot be removed, and stays.
            std::error_code notEmpty;
            fs::remove(fs::path(path).parent_path(), notEmpty);
        }
    }
    void Place(const std::string& path, const std::string& contents) {
        ASSERT_FALSE(fs::exists(path)) << path << " belongs to somebody else";
        paths_.push_back(path);
        WriteFileAt(path, contents);
    }

 private:
    std::vector<std::string> paths_;
};

std::string WindowsPath(const std::string& tail) {
    char windows[MAX_PATH] = "";
    ::GetWindowsDirectoryA(windows, MAX_PATH);
    return std::string(windows) + "\\" + tail;
}

// An application folder without DOS files; a set of them lies next to it.
class DosImport : public testing::Test {
 protected:
    void SetUp() override {
        ASSERT_FALSE(fs::exists(WindowsPath("Command")))
            << "with a Command folder in Windows the program imports without a question";
        fs::copy(folder_.Path("dos"), folder_.OutsidePath("files"), fs::copy_options::recursive);
        CopyTestProgram("e2e_unpacker.exe", File("EXTRACT.EXE"));
        folder_.Remove("dos");
    }

    // A file of the set that is to be imported.
    std::string File(const std::string& name) const { return folder_.OutsidePath("files\\" + name); }

    std::string Cd(const std::string& name) const { return folder_.OutsidePath("cd\\" + name); }

    // Creates a setup CD: two cabinets, of which the second has the latter half of the files, some plain
    // files, and the tool that unpacks.
    void MakeCd() const {
        fs::create_directories(Cd(""));
        fs::rename(File("IO.SYS"), File("WINBOOT.SYS"));
        std::vector<std::string> halves[2];
        for (const std::string& name : DosFileNames()) {
            const bool isPlain = name == "SCANDISK.EXE" || name == "FORMAT.COM" || name == "SMARTDRV.EXE";
            if (isPlain) {
                fs::copy_file(File(name), Cd(name));
            } else {
                halves[name < "F" ? 0 : 1].push_back(name == "IO.SYS" ? "WINBOOT.SYS" : name);
            }
        }
        Pack(Cd("BASE4.CAB"), halves[0]);
        Pack(Cd("BASE5.CAB"), halves[1]);
        fs::copy_file(File("EXTRACT.EXE"), Cd("EXTRACT.EXE"));
        fs::rename(File("WINBOOT.SYS"), File("IO.SYS"));
    }

    void Pack(const std::string& cabinet, const std::vector<std::string>& names) const {
        std::string line = folder_.Path("cabarc.exe") + " n " + cabinet;
        for (const std::string& name : names) line += " " + name;
        StartedTool cabarc(line, folder_.OutsidePath("files"));
        ASSERT_EQ(0u, cabarc.ExitCode());
    }

    // Starts the program and answers its questions until the folder of `file` is chosen.
    void StartFrom(const std::string& file) {
        program_ = std::make_unique<ProgramUnderTest>(folder_, "");
        EXPECT_EQ(ImportQuestion(), program_->Answer("OK"));
        ChooseFile(*program_, program_->FileDialog(), file);
    }

    void ExpectImport() const {
        for (const std::string& name : DosFileNames()) {
            ASSERT_TRUE(folder_.Exists("dos\\" + name)) << name;
            EXPECT_TRUE(folder_.Read("dos\\" + name) == ReadFileAt(File(name))) << name << " is another file";
        }
    }

    // Expects the wizard, and the texts of the wait window before it.
    void ExpectWizardAfterImport() {
        const ShownWizard wizard(*program_);
        EXPECT_EQ(nullptr, program_->WaitWindow());
        std::vector<std::string> texts = program_->StatusTexts();
        // Left out: the window's own first text, and those about the listing of drivers after the import.
        const auto first = std::find(texts.begin(), texts.end(), ImportStatuses().front());
        texts.erase(texts.begin(), first);
        EXPECT_EQ(ImportStatuses(), texts);
        ExpectImport();
        wizard.Close();
        EXPECT_EQ(Number(ExitCode::Built), program_->ExitCode());
    }

    ProgramUnderTest& Program() { return *program_; }

    const DemoFolder folder_;
    std::unique_ptr<ProgramUnderTest> program_;
};

TEST_F(DosImport, CabinetsAreUnpackedWithExtractOfTheCd) {
    const HiddenFile expand(WindowsPath("system32\\expand.exe"));
    MakeCd();
    StartFrom(Cd("BASE5.CAB"));
    ExpectWizardAfterImport();
}

// All steps: the question with its help, a wrong folder, the right one.
TEST_F(DosImport, CabinetsAreUnpackedWithExpandOfWindows) {
    ASSERT_TRUE(fs::exists(WindowsPath("system32\\expand.exe")));
    // The program's own folder is searched first.
    CopyTestProgram("e2e_unpacker.exe", folder_.Path("expand.exe"));
    MakeCd();
    const HelpCalls help(folder_);
    program_ = std::make_unique<ProgramUnderTest>(folder_, "");
    EXPECT_EQ(ImportQuestion(), Program().Message());
    // Wine calls the help only for the F1 key; its Help button does nothing but leave the box open.
    Program().PressAndKeep("Help");
    ASSERT_TRUE(TypeKeys(Program().ProcessId(), "F1"));
    Program().HelpWindow();
    EXPECT_THAT(help.Lines(), testing::ElementsAre("owner 0 file " + folder_.Path("corvane_help.chm") +
                                                   ">Down command 15 data 1420"));
    EXPECT_EQ(ImportQuestion(), Program().Answer("OK"));
    const HWND first = Program().FileDialog();
    EXPECT_EQ("", FileNameIn(first));
    ChooseFile(Program(), first, folder_.Path("files\\disklist.ini"));
    const HWND again = Program().FileDialog();
    EXPECT_EQ("BASE5.CAB", FileNameIn(again));
    // Any file in the folder of the cabinets will do.
    ChooseFile(Program(), again, Cd("SMARTDRV.EXE"));
    ExpectWizardAfterImport();
}

TEST_F(DosImport, FolderWithWinComHoldsTheFilesThemselves) {
    fs::copy(folder_.OutsidePath("files"), folder_.OutsidePath("cd"), fs::copy_options::recursive);
    WriteFileAt(Cd("WIN.COM"), "stand-in");
    StartFrom(Cd("WIN.COM"));
    ExpectWizardAfterImport();
}

// The tools lie in the folder Command of Windows, the system files in the root of its drive.
TEST_F(DosImport, WindowsOfItsOwnIsAskedNothing) {
    PlacedFiles windows;
    for (const std::string& name : DosFileNames()) {
        const bool isSystem = name == "IO.SYS" || name == "COMMAND.COM";
        const std::string folder = isSystem ? "C:" : WindowsPath("Command");
        ASSERT_NO_FATAL_FAILURE(windows.Place(folder + "\\" + name, ReadFileAt(File(name))));
    }
    program_ = std::make_unique<ProgramUnderTest>(folder_, "");
    const ShownWizard wizard(Program());
    ExpectImport();
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), Program().ExitCode());
}

}  // namespace
}  // namespace velbooter::e2e
