#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/realmode/DiskTest.h"
#include "tests/realmode/ProgramRun.h"
#include "tools/shared/ByteOrder.h"

namespace realmode::testing {
namespace {

using tools::testing::Bytes;

constexpr std::size_t kHardDiskBytes = 1'048'576;
constexpr unsigned kFirmware = 0xC000;  ///< the lowest segment in which firmware lies

class BootHd : public ::testing::Test {
 protected:
    BootHd() { WriteHardDisk(FileAt(BOOTHD_DISK)); }

    void WriteHardDisk(Bytes content) const {
        content.resize(kHardDiskBytes);
        Files.Write("hard.img", content);
    }

    ProgramRun RunWith(unsigned hooks) const {
        return {.Program = BOOTHD,
                .Hooks = hooks,
                .Machine = {"-drive", "if=ide,index=0,format=raw,file=" + Files.Text("hard.img")}};
    }

    /// Returns what the hard disk reports when it is started; empty when it is not.
    std::map<std::string, unsigned> Started(unsigned hooks) const {
        const Bytes report = ReportOfProgramOfDos(Files, RunWith(hooks));
        // The program's only other report: DOS has written its buffers to disk.
        const std::string flushed = "F\x01";
        const std::string all(report.begin(), report.end());
        EXPECT_EQ(all.substr(0, flushed.size()), flushed);
        Files.Write("report", all.size() < flushed.size() ? "" : all.substr(flushed.size()));
        return ReportedValues(Files.Text("report"));
    }

    void ExpectStart(std::map<std::string, unsigned> values) const {
        EXPECT_EQ(0U, values["CS"]);
        EXPECT_EQ(0U, values["DISPLACEMENT"]) << "runs at 7C00h";
        EXPECT_EQ(0U, values["SS"]);
        EXPECT_EQ(0x7C00U, values["SP"]);
        EXPECT_EQ(0U, values["DS"]);
        EXPECT_EQ(0U, values["ES"]);
        EXPECT_EQ(0x80U, values["DX"]) << "the drive";
        EXPECT_EQ(0x200U, values["FLAGS"] & 0x200) << "interrupts are on";
        for (const char* interrupt : {"INT08", "INT13", "INT15", "INT19", "INT1C", "INT70"})
            EXPECT_GE(values[interrupt], kFirmware) << interrupt;
        EXPECT_EQ(0xE6F2U, values["INT19OFFSET"]);
        EXPECT_EQ(0x4D52U, values["MARKER"]) << "time and disk work without DOS";
    }

    void ExpectComplaint(const ProgramRun& run, int code, const std::string& line) const {
        const ProgramOutcome outcome = RunProgramOfDos(Files, run);
        EXPECT_EQ(code, outcome.ExitCode);
        EXPECT_EQ("", outcome.Output);
        EXPECT_EQ(line + "\r\n", outcome.Errors);
        EXPECT_FALSE(outcome.HasWrittenBack);
    }

    const tools::testing::TestFolder Files;
};

TEST_F(BootHd, StartsTheHardDiskFromADosThatTookNothing) {
    ExpectStart(Started(0));
}

TEST_F(BootHd, HasADosWithTheTableGiveBackAllThatItTook) {
    std::map<std::string, unsigned> values = Started(kTakesInterrupts | kHasTable);
    ExpectStart(values);
    EXPECT_GE(values["INT76"], kFirmware) << "which only that DOS can give back";
}

TEST_F(BootHd, AsksADosWithoutTheTableForTheDiskFunctions) {
    ExpectStart(Started(kTakesInterrupts | kAnswersInt2F));
}

TEST_F(BootHd, StaysInADosThatDoesNotSayWhereTheDiskFunctionsAre) {
    ExpectComplaint(RunWith(kTakesInterrupts), 4,
                    "BOOTHD: not under this DOS: take the disk out and restart");
}

TEST_F(BootHd, StaysInVirtualMode) {
    ExpectComplaint(RunWith(kRunsInVirtualMode), 3,
                    "BOOTHD: not with EMM386 or the like in memory: take the disk out and restart");
}

TEST_F(BootHd, SaysThatThereIsNoHardDisk) {
    ExpectComplaint({.Program = BOOTHD}, 1, "BOOTHD: no hard disk can be read");
}

TEST_F(BootHd, SaysThatTheHardDiskStartsNothing) {
    Bytes disk = FileAt(BOOTHD_DISK);
    disk[511] = 0x55;
    WriteHardDisk(disk);
    ExpectComplaint(RunWith(0), 2, "BOOTHD: nothing can be started from the hard disk");
    WriteHardDisk({});
    ExpectComplaint(RunWith(0), 2, "BOOTHD: nothing can be started from the hard disk");
    disk.assign(kSector, 0);
    tools::PutU16(disk.data() + 510, 0xAA55);
    WriteHardDisk(disk);
    ExpectComplaint(RunWith(0), 2, "BOOTHD: nothing can be started from the hard disk");
}

}  // namespace
}  // namespace realmode::testing
