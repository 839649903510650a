#pragma once
// Loads one DOS driver on the stand-in for a DOS in velram/dos.asm, in an emulated PC, gives it requests and
// says what it did.

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/TestFolder.h"
#include "tools/shared/ByteOrder.h"

namespace realmode::testing {

/// Segments in that DOS.
inline constexpr unsigned kBufferSegment = 0x4000;
inline constexpr unsigned kDriverSegment = 0x2000;

/// Answers of a driver.
inline constexpr unsigned kDone = 0x0100;
inline constexpr unsigned kUnknownCommand = 0x8103;

/// What is there when the driver is loaded.
struct Surroundings {
    bool HasXms = true;
    unsigned FreeKb = 4096;
    unsigned FailingFunction = 0;
    unsigned DosVersion = 7;
    std::string Line = "A:\\VELRAM.SYS\r\n";  ///< of CONFIG.SYS, after "DEVICE="
};

/// What the driver did with the requests of one run.
struct Outcome {
    std::string Printed;
    std::vector<tools::testing::Bytes> Requests;  ///< as they are afterwards
    std::vector<tools::testing::Bytes> Dumps;
    bool GaveMemoryBack = false;
    std::string Faults;  ///< empty when the driver kept the rules
    bool IsComplete = false;

    unsigned Status(std::size_t request) const { return tools::GetU16(Requests.at(request).data() + 3); }
    unsigned Word(std::size_t request, std::size_t at) const {
        return tools::GetU16(Requests.at(request).data() + at);
    }
};

/// A request of 32 bytes, of which `length` count, with a command and zeros.
tools::testing::Bytes DriverRequest(std::uint8_t command, std::uint8_t length);

/// The request by which a DOS loads a driver: the letter D is free, the line is that of the surroundings.
tools::testing::Bytes InitRequest();

/// Loads the driver, without the header of a program, and carries out the script of velram/dos.asm. The image
/// and the report are left in `files`. A driver that breaks a rule, or a PC that does not end, is a failure
/// of the test.
Outcome RunDriver(const tools::testing::TestFolder& files, const tools::testing::Bytes& driver,
                  const Surroundings& around, const tools::testing::Bytes& script);

}  // namespace realmode::testing
