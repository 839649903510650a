// UNPACK CABINET [FOLDER]: unpacks a cabinet on DOS, for batch files as well as for people. docs/unpack.md
// says what it promises.

#include "realmode/unpack/Unpacker.h"
#include "realmode/unpack/dos/Calls.h"
#include "realmode/unpack/dos/DosFiles.h"
#include "realmode/unpack/dos/DosMemory.h"

namespace realmode::unpack {

namespace {

constexpr uint32_t kWrongCall = 1;

// The rest of the command line lies in the PSP, at the start of the segment: its length, then its characters.
constexpr uint32_t kTailAt = 0x80;
constexpr uint32_t kMaxTail = 127;

char commandLine[kMaxTail + 1];

/// Cuts the next word off the command line; "" at its end.
const char* NextWord(char*& rest) {
    while (*rest == ' ' || *rest == '\t') ++rest;
    const char* const word = rest;
    while (*rest != '\0' && *rest != ' ' && *rest != '\t') ++rest;
    if (*rest != '\0') *rest++ = '\0';
    return word;
}

char* CopyCommandLine() {
    const FarBytes prefix(OwnSegment());
    const uint32_t length = prefix.Get8(kTailAt) & kMaxTail;
    for (uint32_t i = 0; i < length; ++i) {
        commandLine[i] = static_cast<char>(prefix.Get8(kTailAt + 1 + i));
        if (commandLine[i] == '\r') commandLine[i] = '\0';
    }
    return commandLine;
}

void HandleInterrupt(uint8_t number, void (*handler)()) {
    Registers registers{.Ax = static_cast<uint16_t>(0x2500 | number),
                        .Dx = OffsetOf(reinterpret_cast<const void*>(handler))};
    CallDos(registers);
}

uint32_t Report(const char* name, Fault fault) {
    PrintError("UNPACK: ");
    // What steers a screen has no place in a line.
    for (; *name != '\0'; ++name) {
        const char letter[] = {static_cast<uint8_t>(*name) < ' ' ? '?' : *name, '\0'};
        PrintError(letter);
    }
    PrintError(" ");
    PrintError(TextOf(fault));
    PrintError("\r\n");
    return ExitCodeOf(fault);
}

}  // namespace

/// Returns the exit code.
extern "C" uint32_t Main() {
    HandleInterrupt(0x23, OnBreak);
    HandleInterrupt(0x24, OnDiskError);
    char* rest = CopyCommandLine();
    const char* const name = NextWord(rest);
    const char* const folder = NextWord(rest);
    if (*name == '\0' || *name == '/' || *NextWord(rest) != '\0') {
        PrintError("Usage: UNPACK CABINET [FOLDER]\r\n");
        return kWrongCall;
    }
    static DosCabinet cabinet;
    static DosTarget target(folder);
    static DosMemory memory;
    static Unpacker unpacker(cabinet, target, memory);
    if (!cabinet.Open(name)) return Report(name, Fault::CannotOpen);
    const Fault fault = unpacker.Run();
    target.Discard();
    memory.Free();
    if (fault == Fault::None) return 0;
    return Report(unpacker.Subject() != nullptr ? unpacker.Subject() : name, fault);
}

}  // namespace realmode::unpack
