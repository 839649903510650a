// Whole builds: what is on the screen while they run, what they create and what they leave.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"

namespace velbooter::e2e {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Key;

TEST(Build, DemonstrationDiskIsBuiltWithoutAQuestion) {
    const DemoFolder folder;
    ProgramUnderTest program(folder, " -t 144 demo out\\demo.img");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    EXPECT_TRUE(program.SawWaitWindow());
    const FloppyImage image = ExpectImage(folder, folder.Path("out\\demo.img"), kSmallImageBytes);
    for (const char* file : {"HIMEM.SYS", "CONFIG.SYS", "AUTOEXEC.BAT", "BIN\\CHOICE.COM", "BIN\\MENU.BAT",
                             "LIB\\DOS.CAB", "LIB\\KEYB.CAB", "LIB\\HELLO.CAB"}) {
        EXPECT_THAT(image.Files(), Contains(Key(file)));
    }
    EXPECT_EQ(folder.Read("modules\\hello.cab"), image.Files().at("LIB\\HELLO.CAB"));
    EXPECT_EQ("MSCF", image.Files().at("LIB\\DOS.CAB").substr(0, 4));
    ExpectNoWorkingFiles(folder);
    EXPECT_THAT(folder.Names("out"), ElementsAre("demo.img"));
}

TEST(Build, DemonstrationDiskIsBuiltAsTheLargeImage) {
    const DemoFolder folder;
    ProgramUnderTest program(folder, " -t 288 demo out\\two.img");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path("out\\two.img"), kLargeImageBytes);
    ExpectNoWorkingFiles(folder);
}

TEST(Build, WaitWindowShowsThePhasesInOrder) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    // The message comes before the wait window, so that the window's first text is seen, too.
    ProgramUnderTest program(folder, " custom -os");
    program.Answer("OK");
    program.Answer("OK");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    std::vector<std::string> texts = program.StatusTexts();
    ASSERT_FALSE(texts.empty());
    if (texts.front() == "Please wait ...") texts.erase(texts.begin());  // the window's own first text
    EXPECT_THAT(texts, ElementsAre("Getting a list of Disks Configuration ...",
                                   "Getting Disk Configuration INI file ...",
                                   "Processing custom.ini file ...", "Getting Drivers Settings ...",
                                   "Getting files list to be copied to the floppy image ...",
                                   "Creating the floppy image file ...", "Preparing selected Drivers ...",
                                   "Preparing pre-built drivers cache ...", "Preparing new floppy image ...",
                                   "Copying files to floppy image ..."));
}

TEST(Build, RunsInAFolderWithASpace) {
    const DemoFolder folder("my boot disks");
    ProgramUnderTest program(folder, " demo out\\demo.img");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("out\\demo.img"), kSmallImageBytes);
    EXPECT_THAT(image.Files(), Contains(Key("LIB\\DOS.CAB")));
    ExpectNoWorkingFiles(folder);
}

TEST(Build, WithoutATargetTheDiskIsTheDefaultImage) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
}

TEST(Build, ReplacesAnOlderImage) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    folder.Write("out\\old.img", "an old image");
    ProgramUnderTest program(folder, " custom out\\old.img");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectImage(folder, folder.Path("out\\old.img"), kSmallImageBytes);
    EXPECT_THAT(folder.Names("out"), ElementsAre("old.img"));
}

TEST(Build, StartsFreshAfterARunThatLeftItsWorkingFiles) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    folder.Write("Drivers.ini", "[ASPI]\r\nOLD=1\r\n");
    folder.Write("cabs\\old\\OLD.TXT", "from an earlier run");
    folder.Write("Temp\\Velbooter1\\OLD.TXT", "from an earlier run");
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
    EXPECT_EQ(0u, image.Files().count("OLD\\OLD.TXT"));
    EXPECT_EQ(0u, image.Files().count("OLD.TXT"));
    ExpectNoWorkingFiles(folder);
}

TEST(Build, MissingConfigurationFileIsNamedInOneMessage) {
    const DemoFolder folder;
    folder.Remove("files\\custom.ini");
    ProgramUnderTest program(folder, " custom");
    const ShownMessage message = program.Answer("OK");
    EXPECT_EQ(std::vector<std::string>{"OK"}, message.Buttons);
    EXPECT_EQ(Picture::Critical, message.Icon);
    EXPECT_NE(message.Text.find("53"), std::string::npos) << message.Text;
    EXPECT_NE(message.Text.find("custom.ini"), std::string::npos) << message.Text;
    EXPECT_NE(program.ExitCode(), Number(ExitCode::Built));
    EXPECT_FALSE(folder.Exists("BootDisk.img"));
    ExpectNoWorkingFiles(folder);
}

}  // namespace
}  // namespace velbooter::e2e
