// Names with spaces and with characters that a command line or a code page could take for something else.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "tests/e2e/faults/FaultExpectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/Programs.h"

namespace velbooter::e2e {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Key;

std::string StrangeName() {
    return Ansi(L"100% \u00E4\u00D6 & (x) %TEMP%");
}

std::string StrangeWord() {
    return Ansi(L"100%\u00E4&%temp%");
}

TEST(Names, ApplicationFolderMayHaveAnyName) {
    const DemoFolder folder(StrangeName());
    ProgramUnderTest program(folder, " -plugin stamp demo out\\demo.img");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("out\\demo.img"), kSmallImageBytes);
    for (const char* file : {"LIB\\DOS.CAB", "LIB\\KEYB.CAB", "STAMP.TXT"}) {
        EXPECT_THAT(image.Files(), Contains(Key(file)));
    }
    ExpectNoWorkingFiles(folder);
    EXPECT_THAT(folder.Names("out"), ElementsAre("demo.img"));
}

TEST(Names, SetupModulesAreMadeInAFolderOfAnyName) {
    const DemoFolder folder(StrangeName());
    ProgramUnderTest program(folder, " demoall out\\demo.img");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("out\\demo.img"), kSmallImageBytes);
    for (const char* file : {"LIB\\SETUPWIN.CAB", "LIB\\SETUPNT.CAB", "LIB\\NDIS\\RTL8029.CAB"}) {
        EXPECT_THAT(image.Files(), Contains(Key(file)));
    }
    EXPECT_THAT(image.Files().at("ETC\\_MSNET.NIC"), testing::HasSubstr("RTL8029"));
}

TEST(Names, TargetMayHaveAnyName) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    for (const std::string& target : {StrangeName() + ".img", StrangeName() + "\\" + StrangeName() + ".img",
                                      std::string("a;b,c=d'e!^.img")}) {
        SCOPED_TRACE(target);
        ProgramUnderTest program(folder, " custom out\\" + target);
        EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
        ExpectImage(folder, folder.Path("out\\" + target), kSmallImageBytes);
        ExpectNoWorkingFiles(folder);
    }
}

TEST(Names, DiskMayHaveAnyNameWithoutASpace) {
    const DemoFolder folder;
    const std::string name = StrangeWord();
    folder.Write("files\\disklist.ini",
                 "[Disks_List]\r\nCount=1\r\n[1]\r\nName=" + name + "\r\nfile=" + name + ".img\r\n");
    folder.SetCustomDisk(SmallDisk());
    std::filesystem::rename(folder.Path("files\\custom.ini"), folder.Path("files\\any.ini"));
    folder.Write("files\\" + name + ".ini", folder.Read("files\\any.ini"));
    ProgramUnderTest program(folder, " " + name);
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path(name + ".img"), kSmallImageBytes);
}

TEST(Names, PluginMayHaveAnyNameWithoutASpace) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    folder.Write("plugins\\" + StrangeWord() + "\\PLUGIN.TXT", "a file of the plugin");
    folder.Write("plugins\\" + StrangeWord() + ".exe", ReadFileAt(TestProgram("e2e_plugin.exe")));
    ProgramUnderTest program(folder, " -plugin " + StrangeWord() + " custom out\\disk.img");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path(kTarget), kSmallImageBytes);
    EXPECT_EQ("a file of the plugin", image.Files().at("PLUGIN.TXT"));
}

TEST(Names, FilesOfTheDiskMayHaveAnyName) {
    const DemoFolder folder;
    const std::string file = StrangeName() + ".txt";
    folder.SetCustomDisk(SmallDiskWith({file + "=BIN\\" + file, "[Create_CABs]", "keyb=LIB"}));
    folder.Write(file, "copied");
    folder.Write("files\\keyb\\" + file, "packed");
    ProgramUnderTest program(folder, kBuild);
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path(kTarget), kSmallImageBytes);
    std::vector<std::string> contents;
    for (const auto& [name, content] : image.Files()) contents.push_back(content);
    EXPECT_THAT(contents, Contains("copied"));
    folder.Write("keyb.cab", image.Files().at("LIB\\KEYB.CAB"));
    EXPECT_EQ(0u,
              StartedTool(folder.Path("cabarc.exe") + " x keyb.cab unpacked\\", folder.Path()).ExitCode());
    EXPECT_EQ("packed", folder.Read("unpacked\\" + file));
}

}  // namespace
}  // namespace velbooter::e2e
