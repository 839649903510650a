#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>

#include "tests/realmode/DiskTest.h"
#include "tests/realmode/DriverRun.h"
#include "tests/support/RunProgram.h"
#include "tests/support/TestFolder.h"
#include "tools/shared/ByteOrder.h"

namespace realmode::testing {
namespace {

using ::testing::HasSubstr;
using tools::GetU16;
using tools::GetU32;
using tools::testing::Bytes;

constexpr unsigned kBusy = 0x0200;
constexpr unsigned kUnknownUnit = 0x8101;
constexpr unsigned kNoSector = 0x8108;
constexpr unsigned kWriteFault = 0x810A;
constexpr unsigned kReadFault = 0x810B;

constexpr std::uint8_t kRead = 4;
constexpr std::uint8_t kWrite = 8;
constexpr std::uint8_t kWriteVerify = 9;

/// A transfer with a 16-bit sector number, as a DOS before version 4 requests it.
Bytes ShortTransfer(std::uint8_t command, unsigned start, unsigned count) {
    Bytes request = DriverRequest(command, 0x16);
    tools::PutU16(request.data() + 0x10, kBufferSegment);
    tools::PutU16(request.data() + 0x12, count);
    tools::PutU16(request.data() + 0x14, start);
    tools::PutU32(request.data() + 0x1A, 0x01010101);
    return request;
}

/// A transfer with a 32-bit sector number.
Bytes LongTransfer(std::uint8_t command, std::uint32_t start, unsigned count) {
    Bytes request = ShortTransfer(command, 0xFFFF, count);
    request[0] = 0x1E;
    tools::PutU32(request.data() + 0x1A, start);
    return request;
}

/// The pattern with which the stand-in fills its buffer.
Bytes Pattern(std::size_t count, unsigned first) {
    Bytes pattern(count);
    for (std::size_t at = 0; at < count; at += 2, first += 0x9E37)
        tools::PutU16(pattern.data() + at, first & 0xFFFF);
    return pattern;
}

class VelRam : public ::testing::Test {
 protected:
    VelRam() { Ask(InitRequest()); }

    void Ask(const Bytes& request) {
        script_.push_back(1);
        script_.insert(script_.end(), request.begin(), request.end());
    }
    void Fill(unsigned count, unsigned first) { Act(2, {count, first}); }
    void Dump(unsigned count) { Act(3, {count}); }
    void FailFrom(std::uint8_t function) { script_.insert(script_.end(), {4, function}); }

    /// Has the driver read sectors from the start of the drive on, and reports them.
    void DumpDrive(unsigned sectors) {
        constexpr unsigned kAtOnce = 100;
        for (unsigned at = 0; at < sectors; at += kAtOnce) {
            const unsigned count = std::min(kAtOnce, sectors - at);
            Ask(LongTransfer(kRead, at, count));
            Dump(count * static_cast<unsigned>(kSector));
        }
    }

    Outcome Loaded(const Surroundings& around) const {
        return RunDriver(Files, FileAt(VELRAM), around, script_);
    }

    /// Expects a driver that does not stay in memory and that gives the reason in one line.
    void ExpectRefusal(const Surroundings& around, const std::string& line) {
        const Outcome outcome = Loaded(around);
        EXPECT_EQ(line + ": no RAM drive\r\n", outcome.Printed);
        EXPECT_EQ(kDone, outcome.Status(0));
        EXPECT_EQ(0, outcome.Requests[0][0x0D]) << "units";
        EXPECT_EQ(0U, outcome.Word(0, 0x0E)) << "nothing stays";
        EXPECT_EQ(kDriverSegment, outcome.Word(0, 0x10));
    }

    /// Expects the whole drive as it must be after loading: everything after the root directory is empty.
    void ExpectSoundDrive(const Outcome& outcome, unsigned kilobytes, const std::string& type) {
        Bytes drive;
        for (const Bytes& dump : outcome.Dumps) drive.insert(drive.end(), dump.begin(), dump.end());
        drive.resize(std::size_t{kilobytes} * 1024);
        Files.Write("drive.img", drive);
        const auto check = tools::testing::RunProgram({"fsck.fat", "-n", "-v", Files.Text("drive.img")});
        EXPECT_EQ(0, check.ExitCode) << check.Output;
        EXPECT_THAT(check.Output, HasSubstr(type + " bit")) << check.Output;
        const auto label = tools::testing::RunProgram({"mlabel", "-s", "-i", Files.Text("drive.img")});
        EXPECT_THAT(label.Output, HasSubstr("VELRAM")) << label.Output;
    }

    const tools::testing::TestFolder Files;

 private:
    void Act(std::uint8_t action, const std::vector<unsigned>& words) {
        script_.push_back(action);
        for (const unsigned word : words) {
            script_.push_back(static_cast<std::uint8_t>(word & 0xFF));
            script_.push_back(static_cast<std::uint8_t>(word >> 8));
        }
    }

    Bytes script_;
};

TEST_F(VelRam, TakesHalfOfWhatIsFreeAndSaysSo) {
    const Outcome outcome = Loaded({.FreeKb = 3000});
    EXPECT_EQ("VELRAM: RAM drive D:, 1500 KB\r\n", outcome.Printed);
    EXPECT_EQ(kDone, outcome.Status(0));
    EXPECT_EQ(1, outcome.Requests[0][0x0D]) << "units";
    EXPECT_GT(outcome.Word(0, 0x0E), 0U);
    EXPECT_LT(outcome.Word(0, 0x0E), 0x300U) << "the start's code does not stay";
    EXPECT_EQ(kDriverSegment, outcome.Word(0, 0x10));
    EXPECT_FALSE(outcome.GaveMemoryBack);
}

TEST_F(VelRam, TakesANumberOrHalfByTheLineOfConfigSys) {
    const std::string numbers[] = {"VELRAM.SYS 2000\r\n", "A:\\BIN\\VELRAM.SYS  \t 2000  \r",
                                   "velram.sys 2000\n", std::string("\\VELRAM.SYS 2000\0X", 18)};
    for (const std::string& line : numbers)
        EXPECT_EQ("VELRAM: RAM drive D:, 2000 KB\r\n", Loaded({.Line = line}).Printed) << line;
    for (const std::string line : {"VELRAM.SYS /H\r\n", "VELRAM.SYS/h\r\n", "VELRAM.SYS   \r\n"})
        EXPECT_EQ("VELRAM: RAM drive D:, 2048 KB\r\n", Loaded({.Line = line}).Printed) << line;
}

TEST_F(VelRam, RefusesALineThatItDoesNotUnderstand) {
    for (const std::string line :
         {"VELRAM.SYS 63\r\n", "VELRAM.SYS 65536\r\n", "VELRAM.SYS 4294967400\r\n", "VELRAM.SYS 2000K\r\n",
          "VELRAM.SYS 2000 1\r\n", "VELRAM.SYS /E\r\n", "VELRAM.SYS /HH\r\n"})
        ExpectRefusal({.Line = line}, "VELRAM: DEVICE=VELRAM.SYS [KB | /H], 64 to 65535 KB");
}

TEST_F(VelRam, StaysOutWithoutAnXmsManager) {
    ExpectRefusal({.HasXms = false}, "VELRAM: no XMS manager, such as HIMEM.SYS, is loaded");
}

TEST_F(VelRam, StaysOutWithoutEnoughMemory) {
    const std::string line = "VELRAM: not enough extended memory is free";
    ExpectRefusal({.FreeKb = 0}, line);
    ExpectRefusal({.FreeKb = 127}, line);
    ExpectRefusal({.FreeKb = 4095, .Line = "VELRAM.SYS 4096\r\n"}, line);
    ExpectRefusal({.FailingFunction = 8}, line);
    ExpectRefusal({.FailingFunction = 9}, line);
}

TEST_F(VelRam, GivesMemoryBackThatCannotBeWritten) {
    ExpectRefusal({.FailingFunction = 0x0B}, "VELRAM: the XMS manager cannot write to its memory");
    EXPECT_THAT(Files.Read("report"), ::testing::Contains('F'));
}

struct Size {
    unsigned Kilobytes;
    const char* Type;
    unsigned SectorsPerCluster;
};

class VelRamSize : public VelRam, public ::testing::WithParamInterface<Size> {};

TEST_P(VelRamSize, MakesADriveInWhichCheckersFindNothing) {
    const auto [kilobytes, type, sectorsPerCluster] = GetParam();
    Ask(DriverRequest(2, 0x16));
    DumpDrive(1 + 256 + 8);
    const Outcome outcome =
        Loaded({.FreeKb = 65535, .Line = "VELRAM.SYS " + std::to_string(kilobytes) + "\r\n"});
    EXPECT_EQ(kDone, outcome.Status(1));
    EXPECT_EQ(kDriverSegment, outcome.Word(1, 0x14)) << "the description is in the driver";
    EXPECT_LT(outcome.Word(1, 0x12), outcome.Word(0, 0x0E)) << "and stays";
    const Bytes& first = outcome.Dumps.at(0);
    EXPECT_EQ(sectorsPerCluster, first.at(0x0D));
    EXPECT_EQ(0xF8, first.at(0x15));
    const unsigned sectors = kilobytes * 2;
    EXPECT_EQ(sectors < 0x10000 ? sectors : 0, GetU16(first.data() + 0x13));
    EXPECT_EQ(sectors < 0x10000 ? 0 : sectors, GetU32(first.data() + 0x20));
    ExpectSoundDrive(outcome, kilobytes, type);
}

INSTANTIATE_TEST_SUITE_P(Kilobytes, VelRamSize,
                         ::testing::Values(Size{64, "12", 1}, Size{2040, "12", 1}, Size{2041, "12", 2},
                                           Size{4080, "12", 2}, Size{4081, "12", 4}, Size{8160, "12", 4},
                                           Size{8161, "16", 2}, Size{32767, "16", 2}, Size{32768, "16", 2},
                                           Size{65535, "16", 2}),
                         [](const auto& info) { return std::to_string(info.param.Kilobytes); });

TEST_F(VelRam, BelowDos4HasNoMoreThanSixteenBitsCanCount) {
    EXPECT_EQ("VELRAM: RAM drive D:, 32767 KB\r\n",
              Loaded({.FreeKb = 65535, .DosVersion = 3, .Line = "VELRAM.SYS 40000\r\n"}).Printed);
}

TEST_F(VelRam, ReadsWhatWasWrittenByEitherKindOfRequest) {
    Fill(60000, 0x1111);
    Ask(ShortTransfer(kWrite, 100, 117));
    Fill(60000, 0x2222);
    Ask(LongTransfer(kWriteVerify, 217, 3));
    Fill(60000, 0x3333);
    Ask(LongTransfer(kRead, 100, 117));
    Dump(117 * kSector);
    Ask(ShortTransfer(kRead, 217, 3));
    Dump(3 * kSector);
    const Outcome outcome = Loaded({});
    for (std::size_t i = 1; i < outcome.Requests.size(); ++i) EXPECT_EQ(kDone, outcome.Status(i)) << i;
    EXPECT_EQ(117U, outcome.Word(1, 0x12)) << "sectors that were transferred";
    EXPECT_EQ(Pattern(117 * kSector, 0x1111), outcome.Dumps.at(0));
    EXPECT_EQ(Pattern(3 * kSector, 0x2222), outcome.Dumps.at(1));
}

TEST_F(VelRam, ReachesTheLastSectorOfTheLargestDrive) {
    constexpr std::uint32_t kSectors = 131'070;
    Fill(1024, 0x4444);
    Ask(LongTransfer(kWrite, kSectors - 2, 2));
    Fill(1024, 0x5555);
    Ask(LongTransfer(kWrite, 0xFFFE, 2));
    Ask(LongTransfer(kRead, kSectors - 2, 2));
    Dump(1024);
    Ask(LongTransfer(kRead, 0xFFFF, 1));
    Dump(512);
    Ask(LongTransfer(kRead, kSectors - 1, 2));
    Ask(LongTransfer(kRead, kSectors, 1));
    Ask(LongTransfer(kRead, 0xFFFFFFFF, 2));
    const Outcome outcome = Loaded({.FreeKb = 65535, .Line = "VELRAM.SYS 65535\r\n"});
    EXPECT_EQ(Pattern(1024, 0x4444), outcome.Dumps.at(0));
    const Bytes second = Pattern(1024, 0x5555);
    EXPECT_EQ(Bytes(second.begin() + 512, second.end()), outcome.Dumps.at(1));
    for (std::size_t request : {5, 6, 7}) {
        EXPECT_EQ(kNoSector, outcome.Status(request)) << request;
        EXPECT_EQ(0U, outcome.Word(request, 0x12)) << "nothing was transferred";
    }
}

TEST_F(VelRam, RefusesSectorsBeyondTheEnd) {
    Ask(ShortTransfer(kRead, 4095, 1));
    Ask(ShortTransfer(kRead, 4095, 2));
    Ask(ShortTransfer(kWrite, 4096, 1));
    Ask(ShortTransfer(kRead, 0xFFFF, 1));
    Ask(LongTransfer(kRead, 0x10000, 1));
    const Outcome outcome = Loaded({});
    EXPECT_EQ(kDone, outcome.Status(1));
    for (std::size_t request : {2, 3, 4, 5}) EXPECT_EQ(kNoSector, outcome.Status(request)) << request;
}

TEST_F(VelRam, SaysWhichTransferTheXmsManagerRefused) {
    FailFrom(0x0B);
    Ask(ShortTransfer(kRead, 100, 1));
    Ask(ShortTransfer(kWrite, 100, 1));
    const Outcome outcome = Loaded({});
    EXPECT_EQ(kReadFault, outcome.Status(1));
    EXPECT_EQ(0U, outcome.Word(1, 0x12));
    EXPECT_EQ(kWriteFault, outcome.Status(2));
}

TEST_F(VelRam, IsAFixedDiskWithOneLetterThatNeverChanges) {
    Ask(DriverRequest(1, 0x13));
    Ask(DriverRequest(13, 0x0D));
    Ask(DriverRequest(14, 0x0D));
    Ask(DriverRequest(15, 0x0D));
    Ask(DriverRequest(23, 0x0D));
    Ask(DriverRequest(24, 0x0D));
    const Outcome outcome = Loaded({});
    EXPECT_EQ(kDone, outcome.Status(1));
    EXPECT_EQ(1, outcome.Requests[1][0x0E]) << "not changed";
    EXPECT_EQ(kDone, outcome.Status(2));
    EXPECT_EQ(kDone, outcome.Status(3));
    EXPECT_EQ(kDone | kBusy, outcome.Status(4)) << "not removable";
    for (std::size_t request : {5, 6}) {
        EXPECT_EQ(kDone, outcome.Status(request));
        EXPECT_EQ(0, outcome.Requests[request][1]) << "the only letter";
    }
}

TEST_F(VelRam, RefusesCommandsAndUnitsThatItDoesNotKnow) {
    const std::uint8_t unknown[] = {3, 5, 10, 12, 16, 22, 26, 255};
    for (const std::uint8_t command : unknown) Ask(DriverRequest(command, 0x16));
    Bytes second = ShortTransfer(kRead, 0, 1);
    second[1] = 1;
    Ask(second);
    const Outcome outcome = Loaded({});
    for (std::size_t request = 1; request <= 8; ++request)
        EXPECT_EQ(kUnknownCommand, outcome.Status(request)) << request;
    EXPECT_EQ(kUnknownUnit, outcome.Status(9));
}

Bytes ControlRequest(std::uint8_t command, std::uint8_t function) {
    Bytes request = DriverRequest(command, 0x17);
    request[0x0D] = 8;
    request[0x0E] = function;
    tools::PutU16(request.data() + 0x15, kBufferSegment);
    return request;
}

TEST_F(VelRam, AnswersWhatDosAsksAboutADisk) {
    Fill(64, 0);
    Ask(ControlRequest(19, 0x60));
    Dump(64);
    Ask(ControlRequest(19, 0x66));
    Dump(64);
    Ask(ControlRequest(19, 0x40));
    Ask(ControlRequest(25, 0x60));
    Ask(ControlRequest(25, 0x66));
    Ask(ControlRequest(25, 0x40));
    Ask(LongTransfer(kRead, 0, 1));
    Dump(kSector);
    const Outcome outcome = Loaded({.Line = "VELRAM.SYS 1000\r\n"});
    for (std::size_t request : {1, 2, 4, 5}) EXPECT_EQ(kDone, outcome.Status(request)) << request;
    for (std::size_t request : {3, 6}) EXPECT_EQ(kUnknownCommand, outcome.Status(request)) << request;
    const Bytes& parameters = outcome.Dumps.at(0);
    const Bytes& identity = outcome.Dumps.at(1);
    const Bytes& first = outcome.Dumps.at(2);
    EXPECT_EQ(0, parameters[0]) << "this byte is the caller's";
    EXPECT_EQ(5, parameters[1]) << "a fixed disk";
    EXPECT_EQ(1U, GetU16(parameters.data() + 2)) << "not removable";
    EXPECT_EQ(1000U, GetU16(parameters.data() + 4)) << "cylinders";
    EXPECT_TRUE(std::equal(parameters.begin() + 7, parameters.begin() + 32, first.begin() + 0x0B));
    EXPECT_TRUE(std::equal(identity.begin() + 2, identity.begin() + 2 + 23, first.begin() + 0x27));
}

TEST(VelRamFile, HasTheHeaderOfABlockDeviceAndItsName) {
    const Bytes driver = FileAt(VELRAM);
    ASSERT_GT(driver.size(), 18U);
    EXPECT_EQ(0xFFFFFFFFU, GetU32(driver.data()));
    EXPECT_EQ(0x0842U, GetU16(driver.data() + 4));
    EXPECT_EQ("\x01VELRAM ", std::string(driver.begin() + 10, driver.begin() + 18));
}

}  // namespace
}  // namespace realmode::testing
