// Each file of the application folder that a build reads is missing in turn. The disk of these tests reads a
// file of each kind.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "tests/e2e/faults/FaultExpectations.h"
#include "tests/e2e/support/DosFiles.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/ShownWizard.h"

namespace velbooter::e2e {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> kDiskThatReadsAll = {"[DefaultDrivers]",
                                                    "ASPI\\ASPI8DOS",
                                                    "NDIS\\RTL8029",
                                                    "[Copy_CABs]",
                                                    "modules\\hello.cab=LIB\\hello.cab",
                                                    "[Copy_Files]",
                                                    "io.sys=IO.SYS",
                                                    "command.com=COMMAND.COM",
                                                    "files\\config\\NETWORK.CFG=CONFIG.SYS",
                                                    "files\\demo\\*.*=DEMO",
                                                    "[Create_CABs]",
                                                    "dos=LIB",
                                                    "keyb=LIB",
                                                    "setupwin=LIB",
                                                    "setupnt=LIB"};

struct Question {
    ShownMessage Shown;
    const char* Answer;
};

struct Missing {
    std::string File;  ///< or a folder, which is then missing with all that is in it
    ExitCode Code = ExitCode::Built;
    std::vector<Question> Questions;
    std::string Arguments = kBuild;
};

void PrintTo(const Missing& missing, std::ostream* out) {
    *out << missing.File << missing.Arguments;
}

// Stands for the application folder in an expected text.
const char* const kFolder = "<folder>";

ShownMessage NoFile(const std::string& tail) {
    return FileError(53, "File not found", std::string(kFolder) + "\\" + tail);
}

ShownMessage NoPath(const std::string& tail) {
    return FileError(76, "Path Not found", std::string(kFolder) + "\\" + tail);
}

Question Acknowledged(const ShownMessage& message) {
    return {message, "OK"};
}

const ShownMessage kNoDisk = {
    "The disk \"minimal\" doesn't exist", "Critical error", {"OK"}, Picture::Critical};

const char* const kNetworkCabinet = "drivers\\ndis\\rtl8029.cab";
const char* const kConfiguration = "files\\config\\NETWORK.CFG";

const std::vector<Missing> kTable = {
    // The companions.
    {"bfi.exe", ExitCode::NoImage, {}},
    {"cabarc.exe", ExitCode::Canceled, {Acknowledged(NoCabinet("dos"))}},
    // The catalogue: without it there is only the custom disk, and no driver is offered.
    {"files\\disklist.ini", ExitCode::UnknownDisk, {Acknowledged(kNoDisk)}, " minimal"},
    {"files\\disklist.ini", ExitCode::Built, {}},
    {"files\\custom.ini", ExitCode::InternalError, {Acknowledged(NoFile("files\\custom.ini"))}},
    {"files\\minimal.ini", ExitCode::InternalError, {Acknowledged(NoFile("files\\minimal.ini"))}, " minimal"},
    {"files\\bootsect.bin", ExitCode::NoImage, {}},
    // The base files: only MSDOS.SYS must exist.
    {"files\\base_files\\MSDOS.SYS", ExitCode::Canceled, {Acknowledged(UnreadableSource("MSDOS.SYS"))}},
    {"files\\base_files\\AUTOEXEC.BAT", ExitCode::Built, {}},
    {"files\\base_files\\CONFIG.SYS", ExitCode::Built, {}},
    {"files\\base_files\\bin\\HELP.BAT", ExitCode::Built, {}},
    {"files\\base_files\\bin", ExitCode::Built, {}},
    {"files\\base_files", ExitCode::Canceled, {Acknowledged(UnreadableSource("MSDOS.SYS"))}},
    // Files that the configuration copies.
    {kConfiguration, ExitCode::Canceled, {{CopyQuestion(kConfiguration), "Abort"}}},
    {kConfiguration, ExitCode::Built, {{CopyQuestion(kConfiguration), "Ignore"}}},
    {"modules\\hello.cab", ExitCode::Built, {}},
    {"files\\demo", ExitCode::Built, {{CopyQuestion("files\\demo\\*.*"), "Ignore"}}},
    // Modules.
    {"files\\dos_files", ExitCode::Canceled, {Acknowledged(NoCabinet("dos"))}},
    {"files\\dos_files\\bin\\NEWDISK.BAT", ExitCode::Built, {}},
    {"files\\keyb", ExitCode::Canceled, {Acknowledged(NoCabinet("keyb"))}},
    {"files\\keyb\\KEYB.BAT", ExitCode::Built, {}},
    {"files\\keyb\\bin", ExitCode::Built, {}},
    // The setup modules and their templates. Every edition gets the template of the later one.
    {"files\\inf_files\\key_template.inf",
     ExitCode::InternalError,
     {Acknowledged(NoFile("files\\inf_files\\key_template.inf"))}},
    {"files\\inf_files\\winme_template.inf",
     ExitCode::InternalError,
     {Acknowledged(NoFile("files\\inf_files\\winme_template.inf"))}},
    {"files\\inf_files\\win2k_template.inf",
     ExitCode::InternalError,
     {Acknowledged(NoFile("files\\inf_files\\win2k_template.inf"))}},
    {"files\\inf_files\\win98_template.inf", ExitCode::Built, {}},
    {"files\\setupwin", ExitCode::InternalError, {Acknowledged(NoPath("files\\setupwin\\bin\\key.inf"))}},
    {"files\\setupnt", ExitCode::InternalError, {Acknowledged(NoPath("files\\setupnt\\bin\\unattend.txt"))}},
    {"keyfile.txt", ExitCode::Built, {}},
    // Drivers: a group without a folder is not offered, a driver that is chosen must exist.
    {"drivers", ExitCode::Built, {}},
    {"drivers\\aspi", ExitCode::Built, {}},
    {kNetworkCabinet, ExitCode::Canceled, {{CopyQuestion(kNetworkCabinet), "Abort"}}},
    {kNetworkCabinet,
     ExitCode::Canceled,
     {{CopyQuestion(kNetworkCabinet), "Ignore"}, Acknowledged(UnreadableSource("lib\\ndis\\rtl8029.cab"))}},
    // A plugin's program.
    {"plugins\\stamp.bat", ExitCode::Built, {}, " -plugin stamp" + kBuild},
    {"corvane_help.chm", ExitCode::Built, {}},
};

class MissingFile : public testing::TestWithParam<Missing> {};

std::string WithPlaceholder(std::string text, const DemoFolder& folder) {
    const size_t begin = text.find(folder.Path());
    return begin == std::string::npos ? text : text.replace(begin, folder.Path().size(), kFolder);
}

TEST_P(MissingFile, HasTheDocumentedOutcome) {
    const DemoFolder folder;
    folder.SetCustomDisk(kDiskThatReadsAll);
    PutOldImage(folder);
    folder.Remove(GetParam().File);
    ProgramUnderTest program(folder, GetParam().Arguments);
    for (const Question& question : GetParam().Questions) {
        ShownMessage shown = program.Message();
        shown.Text = WithPlaceholder(shown.Text, folder);
        EXPECT_EQ(shown, question.Shown);
        program.Press(question.Answer);
    }
    EXPECT_EQ(Number(GetParam().Code), program.ExitCode());
    if (GetParam().Code == ExitCode::Built) {
        ExpectImage(folder, folder.Path(kTarget), kSmallImageBytes);
    } else {
        ExpectOldImage(folder);
    }
    if (GetParam().Code != ExitCode::UnknownDisk) ExpectNoWorkingFiles(folder);
}

std::string NameOfMissing(const testing::TestParamInfo<Missing>& info) {
    std::string name = std::to_string(info.index + 1) + "_" + info.param.File;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return std::isalnum(static_cast<unsigned char>(c)) == 0; },
        '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Each, MissingFile, testing::ValuesIn(kTable), NameOfMissing);

bool IsOrLiesBelow(const std::string& file, const std::string& folder) {
    return file == folder || file.rfind(folder + "\\", 0) == 0;
}

// A file that is added to the application folder must be added here, too.
TEST(MissingFiles, TableKnowsEveryFileOfTheApplicationFolder) {
    // The program checks these when it starts.
    std::vector<std::string> known = {"dos"};
    for (const Missing& missing : kTable) known.push_back(missing.File);
    // Not read by a build, or only by another disk, in the way in which this one reads custom.ini, keyb and
    // RTL8029.
    for (const char* other :
         {"velbooter.exe", "velbooter.com", "CHANGELOG.txt", "LICENSE.txt", "user-guide.html",
          "keyfile.sample.txt", "more-dos.bat", "buildall.bat", "plugins\\stamp", "drivers"}) {
        known.emplace_back(other);
    }
    for (const char* other :
         {"cdrom.ini", "network.ini", "setup.ini",   "tools.ini",   "nwlan.ini",   "flash.ini", "freedos.ini",
          "demo.ini",  "demonet.ini", "demoset.ini", "demoodi.ini", "demoall.ini", "config",    "cdrom",
          "flash",     "msnet",       "nwlan",       "scsi",        "tcpip",       "realmode",  "freedos"}) {
        known.push_back(std::string("files\\") + other);
    }
    const DemoFolder folder;
    for (const auto& entry : fs::recursive_directory_iterator(folder.Path())) {
        if (entry.is_directory()) continue;
        const std::string file = entry.path().string().substr(folder.Path().size() + 1);
        EXPECT_TRUE(std::any_of(known.begin(), known.end(), [&](const std::string& place) {
            return IsOrLiesBelow(file, place);
        })) << file;
    }
}

TEST(MissingFiles, EachDosFileIsAskedFor) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    PutOldImage(folder);
    for (const std::string& name : DosFileNames()) {
        SCOPED_TRACE(name);
        const std::string file = "dos\\" + name;
        const std::string contents = folder.Read(file);
        folder.Remove(file);
        ProgramUnderTest program(folder, kBuild);
        EXPECT_EQ(ImportQuestion(), program.Answer("Cancel"));
        EXPECT_EQ(Number(ExitCode::DosFilesMissing), program.ExitCode());
        ExpectOldImage(folder);
        folder.Write(file, contents);
    }
    ExpectRunWorks(folder);
}

TEST(MissingFiles, WizardWorksWithoutItsHelp) {
    const DemoFolder folder;
    folder.Remove("corvane_help.chm");
    ProgramUnderTest program(folder, "");
    const ShownWizard wizard(program);
    wizard.Click(IDC_HELP_BUTTON);
    wizard.Next(kDiskPage);
    wizard.Close();
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
}

class MissingCompanion : public testing::TestWithParam<const char*> {};

TEST_P(MissingCompanion, DisturbsNoLaterRun) {
    const DemoFolder folder;
    folder.SetCustomDisk(DiskWithAModule());
    const std::string contents = folder.Read(GetParam());
    folder.Remove(GetParam());
    {
        ProgramUnderTest program(folder, kBuild);
        if (GetParam() == std::string("cabarc.exe")) program.Answer("OK");
        EXPECT_NE(program.ExitCode(), Number(ExitCode::Built));
    }
    folder.Write(GetParam(), contents);
    ExpectRunWorks(folder);
}

INSTANTIATE_TEST_SUITE_P(Each, MissingCompanion, testing::Values("bfi.exe", "cabarc.exe"),
                         [](const auto& info) { return std::string(info.param).substr(0, 3); });

}  // namespace
}  // namespace velbooter::e2e
