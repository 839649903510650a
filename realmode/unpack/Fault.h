#pragma once
// Everything that can keep a cabinet from being unpacked, with the exit code of the program and the end of
// its line. docs/unpack.md lists the codes. A function that returns a Fault returns None when it succeeds.

#include <stdint.h>

namespace realmode::unpack {

enum class Fault : uint8_t {
    None,
    CannotOpen,
    CannotRead,
    NotACabinet,
    PartOfASet,
    UnknownMethod,
    EndsEarly,
    BadDirectory,
    BadRecord,
    BadChecksum,
    BadTree,
    BadMatch,
    BadStream,
    LeavesTarget,
    NotADosName,
    IsADevice,
    NoMemory,
    NoXms,
    DiskFull,
    CannotMakeFolder,
    CannotCreate,
    CannotWrite,
    Stopped,
};

/// Returns the exit code, 0 to 10, that stands for a fault.
uint8_t ExitCodeOf(Fault fault);

/// Returns what is wrong, to follow the name of the file and a colon.
const char* TextOf(Fault fault);

}  // namespace realmode::unpack
