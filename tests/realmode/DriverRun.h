#pragma once
// Loads one DOS driver on the stand-in for a DOS in velram/dos.asm, in an emulated PC, sends it requests and
// reports what it did.

#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/TestFolder.h"
#include "tools/shared/ByteOrder.h"

namespace realmode::testing {

/// Segments (16-byte paragraphs) in that DOS.
inline constexpr unsigned kBufferSegment = 0x4000;
inline constexpr unsigned kDriverSegment = 0x2000;

/// Status words with which a driver answers.
inline constexpr unsigned kDone = 0x0100;
inline constexpr unsigned kUnknownCommand = 0x8103;

/// The PC and the DOS when the driver is loaded.
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

/// Returns a request of 32 bytes, of which `length` count: the command and otherwise zeros.
tools::testing::Bytes DriverRequest(std::uint8_t command, std::uint8_t length);

/// Returns the request by which a DOS initialises a driver: D: is the first free letter, the command line is
/// that of the surroundings.
tools::testing::Bytes InitRequest();

/// Loads the driver, which has no program header, and runs the script of velram/dos.asm. The image and the
/// report are left in `files`. The test fails when the driver breaks a rule or the PC does not end.
Outcome RunDriver(const tools::testing::TestFolder& files, const tools::testing::Bytes& driver,
                  const Surroundings& around, const tools::testing::Bytes& script);

}  // namespace realmode::testing
