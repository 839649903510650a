#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

#include "tests/realmode/DiskTest.h"
#include "tests/realmode/Machine.h"
#include "tests/tools/bfi/FatReader.h"
#include "tools/shared/ByteOrder.h"

namespace realmode::testing {
namespace {

using floppy::Geometry;
using ::testing::HasSubstr;
using tools::bfi::testing::ReadFatImage;
using tools::testing::Bytes;

constexpr char kMissing[] = "No IO.SYS on this disk";
constexpr char kWrong[] = "Not an MS-DOS 7 IO.SYS";
constexpr char kUnreadable[] = "Disk cannot be read";
Bytes Probe() {
    return FileAt(BOOT_PROBE);
}

class Boot : public DiskTest {};

TEST_P(Boot, HandsOverToIoSysAsMsDos7NeedsIt) {
    Files.Write("tree/io.sys", Probe());
    BuildDisk();
    std::map<std::string, unsigned> values = Started();
    EXPECT_EQ(0x70U, values["CS"]);
    EXPECT_EQ(0U, values["SS"]);
    EXPECT_EQ(0x7C00U, values["BP"]);
    EXPECT_EQ(0x7C00U - 0x0C, values["SP"]);
    EXPECT_EQ(2U, values["DI"]) << "the first cluster";
    EXPECT_EQ(0U, values["DX"] & 0xFF) << "the drive";
    EXPECT_EQ(0U, values["DRIVE"] & 0xFF);
    EXPECT_EQ(0U, values["BP-2"]);
    EXPECT_EQ(Format().DataSector(), values["BP-4"]) << "the first data sector";
    EXPECT_GE(values["BP-6"], 0xC000U) << "the firmware's own disk table";
    EXPECT_EQ(0U, values["BP-A"]);
    EXPECT_EQ(0x78U, values["BP-C"]);
    EXPECT_EQ(0x522U, values["TABLE"]);
    EXPECT_EQ(0U, values["TABLESEGMENT"]);
    EXPECT_EQ(Format().SectorsPerTrack, values["TRACK"] & 0xFF);
    EXPECT_EQ(0x0FU, values["SETTLE"] & 0xFF);
    EXPECT_EQ(0xBEEFU, values["MARKER"]) << "in the fourth sector";
    EXPECT_EQ(0xAA55U, values["SIGNATURE"]);
    EXPECT_EQ(tools::GetU16(FileAt(BOOT_SECTOR).data() + 0x1EE), values["TEXTS"]);
}

TEST_P(Boot, FindsIoSysFurtherDownInTheRootAndInPieces) {
    Files.Write("tree/io.sys", Probe());
    for (int i = 0; i < 30; ++i) Files.Write("tree/file" + std::to_string(i), "");
    BuildDisk();
    Bytes image = Files.Read("disk.img");
    SwapRootEntries(image, 0, 25);
    // Entry 341 extends over two sectors of the FAT, and so does 1365; the last one is on the last track.
    std::vector<std::uint32_t> places{341, Format().DataClusters() + 1};
    if (Format().SectorsPerCluster == 1) places.insert(places.end(), {12, 1365});
    Scatter(image, Format(), 2, places);
    tools::PutU16(image.data() + RootStart() + 25 * kEntry + 26, places.front());
    EXPECT_EQ(Probe(), ReadFatImage(image).At("IO.SYS").Content) << "still the same file";
    Files.Write("disk.img", image);
    std::map<std::string, unsigned> values = Started();
    EXPECT_EQ(341U, values["DI"]);
    EXPECT_EQ(0xBEEFU, values["MARKER"]);
}

TEST_P(Boot, PassesOverALabelThatReadsLikeIoSys) {
    Files.Write("tree/io.sys", Probe());
    BuildDisk("IO      SYS");
    Bytes image = Files.Read("disk.img");
    SwapRootEntries(image, 0, 1);
    Files.Write("disk.img", image);
    EXPECT_EQ(2U, Started()["DI"]);
}

TEST_P(Boot, SaysThatIoSysIsMissingAndStartsAgainOnAKey) {
    Files.Write("tree/command.com", "x");
    BuildDisk();
    Machine machine(Image(), Report());
    ASSERT_TRUE(machine.WaitFor(kPrompt)) << machine.Text();
    EXPECT_THAT(machine.Text(), HasSubstr(kMissing));
    machine.Press(' ');
    EXPECT_TRUE(machine.WaitFor(kMissing, 2)) << machine.Text();
}

TEST_P(Boot, SaysThatIoSysIsMissingInAFullRootToo) {
    for (std::uint32_t i = 1; i < Format().RootEntries; ++i) Files.Write("tree/f" + std::to_string(i), "");
    BuildDisk();
    ExpectLine(kMissing);
}

TEST_P(Boot, SaysThatIoSysIsNotOfMsDos7) {
    Bytes probe = Probe();
    probe[0x201] = 'K';
    Files.Write("tree/io.sys", probe);
    BuildDisk();
    ExpectLine(kWrong);
}

TEST_P(Boot, AShortIoSysIsNotOfMsDos7) {
    Bytes probe = Probe();
    probe.resize(1024);
    Files.Write("tree/io.sys", probe);
    Files.Write("tree/zzz", Probe());
    BuildDisk();
    ExpectLine(kWrong);
}

TEST_P(Boot, SaysThatTheDiskCannotBeRead) {
    Files.Write("tree/io.sys", Probe());
    BuildDisk();
    // Now the description places the root directory in a sector that no track of the drive has.
    Bytes image = Files.Read("disk.img");
    tools::PutU16(image.data() + 0x0E, 30);
    tools::PutU16(image.data() + 0x18, 60);
    Files.Write("disk.img", image);
    ExpectLine(kUnreadable);
}

TEST_P(Boot, TheStandInForIoSysSaysOnCom1WhoStartedIt) {
    const std::string folder = STANDIN_FOLDER;
    Files.Write("tree/IO.SYS", FileAt((folder + "/IO.SYS").c_str()));
    BuildDisk();
    Machine machine(Image(), Report(), Machine::Display::Apart);
    EXPECT_TRUE(machine.WaitFor("IO.SYS stand-in: started by the boot sector\r\n")) << machine.Text();
}

VELBOOTER_EVERY_FORMAT(Boot);

TEST(BootSectorFile, GivesIoSysItsMessagesInTheFormThatItReads) {
    const Bytes sector = FileAt(BOOT_SECTOR);
    ASSERT_EQ(kSector, sector.size());
    const std::size_t table = tools::GetU16(sector.data() + 0x1EE) - 0x7C00U;
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < 4; ++i) {
        const std::size_t displacement = sector.at(table + i);
        EXPECT_GE(displacement, 1U);
        EXPECT_LE(displacement, 0x7FU);
        std::string text;
        std::size_t at = table + i + 1 + displacement;
        for (; sector.at(at) != 0 && sector.at(at) != 0xFF; ++at) text += static_cast<char>(sector.at(at));
        EXPECT_EQ(i < 3 ? 0xFF : 0x00, sector.at(at));
        texts.push_back(text);
    }
    EXPECT_EQ(std::string("\r\n") + kWrong, texts[0]);
    EXPECT_EQ(std::string("\r\n") + kUnreadable, texts[1]);
    EXPECT_EQ(texts[2], texts[0]);
    EXPECT_EQ(std::string("\r\n") + kPrompt, texts[3]);
}

TEST(StandIns, EveryOneSaysWhichFileItStandsFor) {
    const std::string folder = STANDIN_FOLDER;
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        const Bytes content = FileAt(entry.path().c_str());
        EXPECT_THAT(std::string(content.begin(), content.end()), HasSubstr(name)) << name;
        EXPECT_THAT(std::string(content.begin(), content.end()), HasSubstr("stand-in")) << name;
        ++count;
    }
    EXPECT_EQ(25, count);
}

TEST(StandIns, TheDriverBeginsWithADeviceHeader) {
    const Bytes driver = FileAt(STANDIN_FOLDER "/HIMEM.SYS");
    ASSERT_GT(driver.size(), 18U);
    EXPECT_EQ(0xFFFFFFFFU, tools::GetU32(driver.data()));
    EXPECT_EQ(0x8000U, tools::GetU16(driver.data() + 4));
    EXPECT_LT(tools::GetU16(driver.data() + 6), driver.size());
    EXPECT_LT(tools::GetU16(driver.data() + 8), driver.size());
    EXPECT_EQ("STANDIN$", std::string(driver.begin() + 10, driver.begin() + 18));
}

}  // namespace
}  // namespace realmode::testing
