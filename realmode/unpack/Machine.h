#pragma once
// What unpacking needs of the machine that it runs on. DOS and the tests each have their own.

#include <stdint.h>

#include "realmode/unpack/FarBytes.h"
#include "realmode/unpack/Fault.h"

namespace realmode::unpack {

/// Bytes of a folder that are packed at a time, in every method.
constexpr uint32_t kFrameBytes = 32768;

/// The most bytes that they can be packed to.
constexpr uint32_t kMaxPackedBytes = kFrameBytes + 6144;

/// The longest match, in every method.
constexpr uint32_t kMaxMatchBytes = 258;

/// The open cabinet.
class CabinetFile {
 public:
    /// Its length in bytes.
    virtual uint32_t Size() = 0;
    /// Reads `count` bytes from the place `at`; false when they cannot all be read.
    virtual bool Read(uint32_t at, uint8_t* to, uint32_t count) = 0;
    virtual bool Read(uint32_t at, FarBytes to, uint32_t count) = 0;

 protected:
    ~CabinetFile() = default;
};

/// A file's date, time and attributes as DOS and cabinets store them.
struct FileStamp {
    uint16_t Date = 0;
    uint16_t Time = 0;
    uint16_t Attributes = 0;
};

/// The folder that receives the files. Names are relative to it, checked, and have backslashes.
class TargetFolder {
 public:
    /// Creates a folder, whose parent exists; no fault when it is there already.
    virtual Fault MakeFolder(const char* name) = 0;
    /// Creates a file, in the place of an existing one, and says so to the user.
    virtual Fault Create(const char* name) = 0;
    /// Appends the bytes [at, at + count) of `from` to the file that was created last.
    virtual Fault Write(FarBytes from, uint32_t at, uint32_t count) = 0;
    /// Completes that file.
    virtual Fault Finish(const FileStamp& stamp) = 0;
    /// Whether the user wants to stop.
    virtual bool IsStopped() = 0;

 protected:
    ~TargetFolder() = default;
};

/// Gives memory, which is returned when the program ends.
class Memory {
 public:
    /// False when there are not as many bytes, at most 64 KB, in one piece.
    virtual bool Allocate(uint32_t bytes, FarBytes& memory) = 0;
    /// Gives a store of that many frames, numbered from 0, outside the memory that a program reaches; false
    /// when there is none.
    virtual bool AllocateStore(uint32_t frames) = 0;
    /// Copies a whole frame to the store; false when the store fails.
    virtual bool PutInStore(uint32_t frame, FarBytes from) = 0;
    /// Brings `count` bytes of a frame, at most kMaxMatchBytes, from its place `at` on, out of the store.
    /// Returns where they are until the next call; nullptr when the store fails.
    virtual const uint8_t* GetFromStore(uint32_t frame, uint32_t at, uint32_t count) = 0;

 protected:
    ~Memory() = default;
};

}  // namespace realmode::unpack
