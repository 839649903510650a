#include "tests/realmode/ProgramRun.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/realmode/DiskTest.h"
#include "tests/realmode/Machine.h"
#include "tools/shared/ByteOrder.h"

namespace realmode::testing {

using tools::testing::Bytes;

namespace {

// program/dos.asm
constexpr std::size_t kGivenAt = 0x1000;
constexpr std::size_t kHooksAt = 6;
constexpr std::size_t kTailAt = 7;
constexpr std::size_t kTailBytes = 57;
constexpr std::size_t kDisksAt = 64;
constexpr std::size_t kDiskBytes = 32;
constexpr std::size_t kProgramAt = 0x400;
constexpr std::size_t kFileAt = 0x2400;
constexpr std::size_t kLoadedBytes = 120 * kSector - kGivenAt;
constexpr std::size_t kImageBytes = 1'474'560;

void PutDrive(const DosDrive& drive, std::uint8_t* disk) {
    disk[0] = 1;
    disk[1] = drive.IsReady ? drive.Writing : 1;
    disk[2] = static_cast<std::uint8_t>(drive.CanNotBeRemoved);
    disk[3] = drive.IsDescribed ? 1 : 0;
    tools::PutU16(disk + 4, drive.Attributes);
    tools::PutU16(disk + 6, drive.Clusters);
    tools::PutU16(disk + 8, drive.SectorsPerCluster);
    std::copy(drive.Driver.begin(), drive.Driver.end(), disk + 10);
    std::copy(drive.Label.begin(), drive.Label.end(), disk + 17);
}

Bytes ImageOf(const ProgramRun& run) {
    Bytes image = FileAt(PROGRAM_DOS);
    EXPECT_EQ(kGivenAt, image.size());
    image.resize(kImageBytes);
    std::uint8_t* const given = image.data() + kGivenAt;
    given[0] = static_cast<std::uint8_t>(run.DosVersion);
    given[1] = run.File ? 1 : 0;
    tools::PutU16(given + 2, run.ReadsFailAt);
    given[kHooksAt] = static_cast<std::uint8_t>(run.Hooks);
    const std::string tail = run.Tail + "\r";
    EXPECT_LE(tail.size(), kTailBytes);
    std::copy(tail.begin(), tail.end(), given + kTailAt);
    for (const auto& [letter, drive] : run.Drives)
        PutDrive(drive, given + kDisksAt + static_cast<std::size_t>(letter - 'A') * kDiskBytes);
    const Bytes program = FileAt(run.Program);
    EXPECT_LE(program.size(), kFileAt - kProgramAt);
    std::copy(program.begin(), program.end(), given + kProgramAt);
    if (run.File) {
        EXPECT_LE(run.File->size(), kLoadedBytes - kFileAt);
        tools::PutU16(given + 4, static_cast<std::uint32_t>(run.File->size()));
        std::copy(run.File->begin(), run.File->end(), given + kFileAt);
    }
    return image;
}

ProgramOutcome OutcomeOf(const Bytes& report) {
    ProgramOutcome outcome;
    for (std::size_t at = 0; at + 1 < report.size(); at += 2) {
        const char letter = static_cast<char>(report[at + 1]);
        const char drive = static_cast<char>('A' + report[at + 1]);
        switch (report[at]) {
            case 'O':
                outcome.Output += letter;
                break;
            case 'S':
                outcome.Errors += letter;
                break;
            case 'D':
                outcome.Touched += drive;
                break;
            case 'G':
                outcome.WentTo += drive;
                break;
            case 'N':
                outcome.Opened += letter;
                break;
            case 'C':
                outcome.Created += drive;
                break;
            case 'E':
                outcome.Deleted += drive;
                break;
            case 'F':
                outcome.HasWrittenBack = true;
                break;
            case 'Q':
                outcome.ExitCode = report[at + 1];
                break;
            default:
                outcome.Faults +=
                    std::string(1, static_cast<char>(report[at])) + std::to_string(report[at + 1]) + " ";
        }
    }
    return outcome;
}

}  // namespace

Bytes ReportOfProgramOfDos(const tools::testing::TestFolder& files, const ProgramRun& run) {
    files.Write("disk.img", ImageOf(run));
    Machine machine(files.Text("disk.img"), files.Text("report"), Machine::Display::Mirrored, run.Machine);
    EXPECT_EQ(99, machine.WaitForEnd()) << machine.Text();
    return files.Read("report");
}

ProgramOutcome RunProgramOfDos(const tools::testing::TestFolder& files, const ProgramRun& run) {
    const ProgramOutcome outcome = OutcomeOf(ReportOfProgramOfDos(files, run));
    EXPECT_EQ("", outcome.Faults);
    return outcome;
}

}  // namespace realmode::testing
