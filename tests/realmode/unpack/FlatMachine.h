#pragma once
// A machine for the unpacker that exists only in memory: a cabinet of bytes, a target that collects files,
// and as much conventional memory and XMS as a test wants.

#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "realmode/unpack/Machine.h"
#include "tests/support/TestData.h"

namespace realmode::unpack::testing {

using tools::testing::Bytes;

class FlatCabinet final : public CabinetFile {
 public:
    /// `bytes` belong to the caller and must outlive the object.
    explicit FlatCabinet(const Bytes& bytes) : bytes_(bytes) {}

    uint32_t Size() override { return static_cast<uint32_t>(bytes_.size()); }
    bool Read(uint32_t at, uint8_t* to, uint32_t count) override;
    bool Read(uint32_t at, FarBytes to, uint32_t count) override { return Read(at, to.Pointer(), count); }

 private:
    const Bytes& bytes_;
};

struct UnpackedFile {
    Bytes Contents;
    FileStamp Stamp;
    bool IsFinished = false;
};

class FlatTarget final : public TargetFolder {
 public:
    /// Create accepts a name only in a folder that was created by this.
    Fault MakeFolder(const char* name) override;
    Fault Create(const char* name) override;
    Fault Write(FarBytes from, uint32_t at, uint32_t count) override;
    Fault Finish(const FileStamp& stamp) override;
    bool IsStopped() override { return StopsAfter == 0 || StopsAfter-- == 0; }

    std::map<std::string, UnpackedFile> Files;
    std::set<std::string> Folders;
    std::vector<std::string> Created;       ///< in their order
    std::uint64_t Capacity = UINT64_MAX;    ///< bytes that the disk has space for
    std::uint64_t StopsAfter = UINT64_MAX;  ///< how often it is asked before the user stops it

 private:
    UnpackedFile* file_ = nullptr;
};

class FlatMemory final : public Memory {
 public:
    /// `pieces` is how often memory can be allocated; the store has at most `storeFrames`.
    explicit FlatMemory(unsigned pieces = UINT32_MAX, std::uint32_t storeFrames = 0)
        : pieces_(pieces), storeFrames_(storeFrames) {}

    bool Allocate(uint32_t bytes, FarBytes& memory) override;
    bool AllocateStore(uint32_t frames) override;
    bool PutInStore(uint32_t frame, FarBytes from) override;
    const uint8_t* GetFromStore(uint32_t frame, uint32_t at, uint32_t count) override;

    std::size_t PieceCount() const { return allocated_.size(); }
    std::size_t StoreBytes() const { return store_.size(); }

 private:
    unsigned pieces_;
    std::uint32_t storeFrames_;
    std::vector<std::unique_ptr<std::uint8_t[]>> allocated_;
    Bytes store_;
    Bytes match_;
};

/// The result of unpacking a cabinet.
struct Outcome {
    Fault Result = Fault::None;
    std::string Subject;  ///< the member that the fault is about, "" for the cabinet
    FlatTarget Target;

    /// The files with their names as paths with "/".
    std::map<std::string, Bytes> Tree() const;
};

/// Unpacks a cabinet, with enough conventional memory for everything when `memory` is not given.
Outcome Unpack(const Bytes& cabinet);
Outcome Unpack(const Bytes& cabinet, FlatMemory& memory);

}  // namespace realmode::unpack::testing
