// Text files of the application folder with random contents.

#include <gtest/gtest.h>

#include <windows.h>
// psapi.h needs windows.h before it.
#include <psapi.h>

#include <functional>
#include <random>

#include "tests/e2e/faults/FaultExpectations.h"
#include "tests/e2e/support/ProgramUnderTest.h"

namespace velbooter::e2e {
namespace {

constexpr size_t kLarge = 10 * 1024 * 1024;

std::string RandomBytes(size_t size, unsigned seed) {
    std::mt19937 generator(seed);
    std::string bytes(size, '\0');
    for (char& byte : bytes) byte = static_cast<char>(generator());
    return bytes;
}

// A line without "=" does nothing, so a configuration without that character leaves the disk empty.
std::string WithoutEquals(std::string text) {
    std::erase(text, '=');
    return text;
}

// The bytes are generated when their case runs; otherwise every start of this program would generate those
// of all cases.
struct Garbage {
    const char* Name;
    std::function<std::string()> Contents;
};

Garbage Text(const char* name, const std::string& text) {
    return {name, [text] { return text; }};
}

Garbage Repeated(const char* name, size_t size, char byte) {
    return {name, [=] { return std::string(size, byte); }};
}

Garbage Random(const char* name, size_t size, unsigned seed) {
    return {name, [=] { return RandomBytes(size, seed); }};
}

void PrintTo(const Garbage& garbage, std::ostream* out) {
    *out << garbage.Name;
}

std::string NameOfCase(const testing::TestParamInfo<Garbage>& info) {
    return info.param.Name;
}

class GarbageTest : public testing::TestWithParam<Garbage> {
 protected:
    void SetUp() override {
        folder_.SetCustomDisk(SmallDisk());
        PutOldImage(folder_);
    }

    const DemoFolder folder_;
};

// A configuration cancels the build when a line with "=" that does nothing comes before the first operation.
class GarbledConfiguration : public GarbageTest {};

TEST_P(GarbledConfiguration, CancelsTheBuild) {
    folder_.Write("files\\custom.ini", GetParam().Contents());
    ProgramUnderTest program(folder_, kBuild);
    EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
    ExpectOldImage(folder_);
    ExpectNoWorkingFiles(folder_);
}

INSTANTIATE_TEST_SUITE_P(Each, GarbledConfiguration,
                         testing::Values(Random("Random1", 65536, 1), Random("Random2", 65536, 2),
                                         Random("Random3", 65536, 3), Random("RandomAndLarge", kLarge, 4),
                                         Repeated("EqualsSigns", kLarge, '=')),
                         NameOfCase);

// The memory that the program uses, in bytes.
size_t MemoryOf(const ProgramUnderTest& program) {
    const HANDLE process =
        ::OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, program.ProcessId());
    PROCESS_MEMORY_COUNTERS counters{};
    ::GetProcessMemoryInfo(process, &counters, sizeof counters);
    ::CloseHandle(process);
    return counters.PeakWorkingSetSize;
}

// A configuration without any operation leaves a disk without its first system file.
class EmptyConfiguration : public GarbageTest {};

TEST_P(EmptyConfiguration, NamesTheMissingSystemFile) {
    constexpr size_t kMostMemory = 20 * kLarge;
    folder_.Write("files\\custom.ini", GetParam().Contents());
    ProgramUnderTest program(folder_, kBuild);
    EXPECT_EQ(UnreadableSource("IO.SYS"), program.Message());
    EXPECT_GT(MemoryOf(program), 0u);
    EXPECT_LT(MemoryOf(program), kMostMemory);
    program.Press("OK");
    EXPECT_EQ(Number(ExitCode::Canceled), program.ExitCode());
    ExpectOldImage(folder_);
    ExpectNoWorkingFiles(folder_);
}

INSTANTIATE_TEST_SUITE_P(
    Each, EmptyConfiguration,
    testing::Values(Text("NoBytes", ""), Repeated("Nuls", 65536, '\0'),
                    Repeated("NulsAndLarge", kLarge, '\0'), Repeated("OneLongLine", kLarge, 'x'),
                    Repeated("LineEnds", kLarge, '\n'),
                    Garbage{"RandomAndLarge", [] { return WithoutEquals(RandomBytes(kLarge, 5)); }}),
    NameOfCase);

// A catalogue that names no disk leaves only the custom disk.
class GarbledCatalogue : public GarbageTest {};

TEST_P(GarbledCatalogue, HasTheCustomDiskAlone) {
    folder_.Write("files\\disklist.ini", GetParam().Contents());
    {
        ProgramUnderTest program(folder_, " minimal");
        EXPECT_EQ("The disk \"minimal\" doesn't exist", program.Answer("OK").Text);
        EXPECT_EQ(Number(ExitCode::UnknownDisk), program.ExitCode());
    }
    ExpectOldImage(folder_);
    ExpectRunWorks(folder_);
}

INSTANTIATE_TEST_SUITE_P(
    Each, GarbledCatalogue,
    testing::Values(
        Random("Random1", 65536, 11), Random("Random2", 65536, 12), Random("RandomAndLarge", kLarge, 13),
        Garbage{"RandomAfterACount", [] { return "[Disks_List]\r\nCount=9\r\n" + RandomBytes(65536, 14); }},
        Text("MoreDisksThanThereAre", "[Disks_List]\r\nCount=2000\r\n"), Repeated("Nuls", 65536, '\0'),
        Repeated("NulsAndLarge", kLarge, '\0'), Repeated("OneLongLine", kLarge, '[')),
    NameOfCase);

TEST(Catalogue, CountThatIsNoWholeNumberOfDisksIsAnError) {
    const DemoFolder folder;
    folder.SetCustomDisk(SmallDisk());
    folder.Write("files\\disklist.ini", "[Disks_List]\r\nCount=99999999999\r\n");
    ProgramUnderTest program(folder, kBuild);
    EXPECT_EQ(FileError(6, "Overflow", folder.Path("files\\disklist.ini")), program.Answer("OK"));
    EXPECT_EQ(Number(ExitCode::InternalError), program.ExitCode());
    EXPECT_FALSE(folder.Exists("out"));
    ExpectNoWorkingFiles(folder);
}

class GarbledBootSector : public GarbageTest {};

TEST_P(GarbledBootSector, MakesNoImage) {
    folder_.Write("files\\bootsect.bin", GetParam().Contents());
    ExpectRunWithoutImage(folder_);
    ExpectOldImage(folder_);
}

INSTANTIATE_TEST_SUITE_P(Each, GarbledBootSector,
                         testing::Values(Text("NoBytes", ""), Repeated("Nuls", 512, '\0'),
                                         Random("Large", kLarge, 21)),
                         NameOfCase);

}  // namespace
}  // namespace velbooter::e2e
