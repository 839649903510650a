#include "tests/realmode/DriverRun.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/realmode/DiskTest.h"
#include "tests/realmode/Machine.h"

namespace realmode::testing {

using tools::GetU16;
using tools::testing::Bytes;

namespace {

// velram/dos.asm
constexpr std::size_t kGiven = 0x1000;
constexpr std::size_t kArguments = 6;
constexpr std::size_t kDriver = 0x40;
constexpr std::size_t kScript = 0x2040;
constexpr std::size_t kLoaded = 120 * kSector;
constexpr unsigned kArgumentsSegment = 0x800 + (kGiven + kArguments) / 16;
constexpr unsigned kArgumentsOffset = (kGiven + kArguments) % 16;

Outcome ParsedReport(const Bytes& report) {
    Outcome outcome;
    const auto piece = [&report](std::size_t at, std::size_t count) {
        const auto begin = report.begin() + static_cast<std::ptrdiff_t>(at);
        return Bytes(begin, begin + static_cast<std::ptrdiff_t>(count));
    };
    for (std::size_t at = 0; at < report.size();) {
        const char kind = static_cast<char>(report[at++]);
        if (kind == 'R') {
            outcome.Requests.push_back(piece(at, 32));
            at += 32;
        } else if (kind == 'D') {
            const std::size_t count = GetU16(report.data() + at);
            outcome.Dumps.push_back(piece(at + 2, count));
            at += 2 + count;
        } else if (kind == 'T') {
            outcome.Printed += static_cast<char>(report.at(at++));
        } else if (kind == 'F') {
            outcome.GaveMemoryBack = true;
        } else if (kind == 'E') {
            outcome.IsComplete = true;
        } else {
            outcome.Faults += kind;
        }
    }
    return outcome;
}

}  // namespace

Bytes DriverRequest(std::uint8_t command, std::uint8_t length) {
    Bytes request(32);
    request[0] = length;
    request[2] = command;
    return request;
}

Bytes InitRequest() {
    Bytes request = DriverRequest(0, 0x19);
    tools::PutU16(request.data() + 0x12, kArgumentsOffset);
    tools::PutU16(request.data() + 0x14, kArgumentsSegment);
    request[0x16] = 3;  // the letter D
    return request;
}

Outcome RunDriver(const tools::testing::TestFolder& files, const Bytes& driver, const Surroundings& around,
                  const Bytes& script) {
    Bytes image = FileAt(DRIVER_DOS);
    EXPECT_EQ(kGiven, image.size());
    image.resize(1'474'560);
    std::uint8_t* const given = image.data() + kGiven;
    tools::PutU16(given, around.HasXms ? 1 : 0);
    tools::PutU16(given + 2, around.FreeKb);
    given[4] = static_cast<std::uint8_t>(around.FailingFunction);
    given[5] = static_cast<std::uint8_t>(around.DosVersion);
    std::copy(around.Line.begin(), around.Line.end(), given + kArguments);
    std::copy(driver.begin(), driver.end(), given + kDriver);
    EXPECT_LE(kGiven + kScript + script.size() + 1, kLoaded);
    std::copy(script.begin(), script.end(), given + kScript);
    files.Write("disk.img", image);
    Machine machine(files.Text("disk.img"), files.Text("report"), Machine::Display::Mirrored, {"-m", "96"});
    EXPECT_EQ(99, machine.WaitForEnd()) << machine.Text();
    const Outcome outcome = ParsedReport(files.Read("report"));
    EXPECT_TRUE(outcome.IsComplete);
    EXPECT_EQ("", outcome.Faults);
    return outcome;
}

}  // namespace realmode::testing
