// Plugins: which program runs, how, and what is added to the disk.

#include <gtest/gtest.h>

#include <filesystem>

#include "tests/e2e/support/DemoFolder.h"
#include "tests/e2e/support/Expectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"
#include "tests/e2e/support/Programs.h"

namespace velbooter::e2e {
namespace {

FloppyImage BuildWithPlugin(const DemoFolder& folder, const std::string& name) {
    folder.SetCustomDisk(SmallDisk());
    ProgramUnderTest program(folder, " -plugin " + name + " custom");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    ExpectNoWorkingFiles(folder);
    return ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
}

void AddProgram(const DemoFolder& folder, const std::string& tail) {
    std::filesystem::create_directories(folder.Path("plugins"));
    std::filesystem::copy_file(TestProgram("e2e_plugin.exe"), folder.Path(tail));
}

const char* const kBatch = "@echo off\r\necho batch >plugins\\both\\BATCH.TXT\r\n";

TEST(Plugin, ProgramRunsInPlaceOfTheBatchFileOfTheSameName) {
    const DemoFolder folder;
    folder.Write("plugins\\both.bat", kBatch);
    AddProgram(folder, "plugins\\both.exe");
    folder.Write("plugins\\both\\BIN\\TOOL.TXT", "a file of the plugin");
    const FloppyImage image = BuildWithPlugin(folder, "both");
    EXPECT_EQ(0u, image.Files().count("BATCH.TXT"));
    EXPECT_EQ("a file of the plugin", image.Files().at("BIN\\TOOL.TXT"));
    // The program is started without quotes or arguments, in a window, in the application folder.
    EXPECT_EQ(folder.Path("plugins\\both.exe") + "\r\n" + folder.Path() + "\r\nshown\r\n",
              image.Files().at("RAN.TXT"));
}

TEST(Plugin, BatchFileRunsAloneAndItsFilesComeAlong) {
    const DemoFolder folder;
    folder.Write("plugins\\both.bat", kBatch);
    folder.Write("plugins\\both\\TOOL.TXT", "a file of the plugin");
    const FloppyImage image = BuildWithPlugin(folder, "both");
    EXPECT_EQ("batch \r\n", image.Files().at("BATCH.TXT"));
    EXPECT_EQ("a file of the plugin", image.Files().at("TOOL.TXT"));
}

TEST(Plugin, FileReplacesTheDisksOwn) {
    const DemoFolder folder;
    folder.Write("plugins\\mine\\AUTOEXEC.BAT", "@echo the plugin's\r\n");
    const FloppyImage image = BuildWithPlugin(folder, "mine");
    EXPECT_EQ("@echo the plugin's\r\n", image.Files().at("AUTOEXEC.BAT"));
}

TEST(Plugin, ShippedOneStampsTheDisk) {
    const DemoFolder folder;
    const FloppyImage image = BuildWithPlugin(folder, "stamp");
    ASSERT_EQ(1u, image.Files().count("STAMP.TXT"));
    EXPECT_NE(image.Files().at("STAMP.TXT").find("This disk was built on"), std::string::npos);
    EXPECT_EQ(folder.Read("plugins\\stamp\\bin\\STAMP.BAT"), image.Files().at("BIN\\STAMP.BAT"));
}

TEST(Plugin, WithoutTheOptionNoneIsAdded) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    ProgramUnderTest program(folder, " custom");
    EXPECT_EQ(Number(ExitCode::Built), program.ExitCode());
    const FloppyImage image = ExpectImage(folder, folder.Path("BootDisk.img"), kSmallImageBytes);
    EXPECT_EQ(0u, image.Files().count("STAMP.TXT"));
    EXPECT_EQ(0u, image.Files().count("BIN\\STAMP.BAT"));
}

}  // namespace
}  // namespace velbooter::e2e
