#pragma once
// Runs one DOS program on the stand-in for a DOS in program/dos.asm, in an emulated PC, and reports what it
// did.

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/support/TestFolder.h"

namespace realmode::testing {

/// A drive as that DOS knows it.
struct DosDrive {
    /// Values as in program/dos.asm: a critical error when a file is created; a file that ends too early.
    enum WhenWritten : std::uint8_t { Good = 0, Protected = 2, Full = 3 };

    bool IsReady = true;  ///< false: a critical error when its medium is touched
    WhenWritten Writing = Good;
    /// 0: yes, 1: no, 2: the driver does not say
    unsigned CanNotBeRemoved = 1;
    unsigned Attributes = 0x0842;  ///< 1000h: remote, 8000h: of SUBST
    bool IsDescribed = true;       ///< whether DOS gives the description that names the driver
    std::string Driver = {};       ///< the name in its driver's header, seven characters at most
    std::string Label = {};        ///< as DOS finds it, "MS-RAMDR.IVE"
    unsigned Clusters = 2000;
    unsigned SectorsPerCluster = 4;
};

/// Bits: what that DOS has hooked of the firmware's interrupts, and how it can be asked about that.
enum Hooks : unsigned {
    kTakesInterrupts = 1,
    kHasTable = 2,      ///< at 0070:0100, with an INT 19h that gives back all
    kAnswersInt2F = 4,  ///< AH = 13h
    kRunsInVirtualMode = 8,
};

struct ProgramRun {
    std::string Program = {};  ///< the program's file
    std::string Tail = {};     ///< of the command line
    unsigned DosVersion = 7;
    std::map<char, DosDrive> Drives = {};            ///< by their letters
    std::optional<tools::testing::Bytes> File = {};  ///< the one file that can be opened, under any name
    unsigned ReadsFailAt = 0xFFFF;                   ///< from which position on it cannot be read
    unsigned Hooks = 0;
    std::vector<std::string> Machine = {};  ///< further words for QEMU
};

struct ProgramOutcome {
    int ExitCode = -1;    ///< -1 when the program did not end
    std::string Output;   ///< the standard output
    std::string Errors;   ///< the error output
    std::string Touched;  ///< letters of the drives whose media were touched, each as often as they were
    std::string WentTo;   ///< letters of the drives that became the current one
    std::string Opened;   ///< the names of the files that were opened
    std::string Created;  ///< letters of the drives on which a file was created
    std::string Deleted;  ///< letters of the drives on which that file was closed and deleted
    bool HasWrittenBack = false;  ///< the buffers of the disks
    std::string Faults;           ///< empty when the program kept the rules
};

/// Runs the program, and anything that it starts, until the machine ends; returns everything that was
/// reported.
tools::testing::Bytes ReportOfProgramOfDos(const tools::testing::TestFolder& files, const ProgramRun& run);

/// Runs the program to its end; the image and the report are left in `files`.
ProgramOutcome RunProgramOfDos(const tools::testing::TestFolder& files, const ProgramRun& run);

}  // namespace realmode::testing
