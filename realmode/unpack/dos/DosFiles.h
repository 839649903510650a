#pragma once
// The cabinet and the target folder as files of DOS.

#include "realmode/unpack/Machine.h"
#include "realmode/unpack/dos/Calls.h"

namespace realmode::unpack {

/// Writes a text to the screen (or to where the user sends it), an error to the screen always.
void Print(const char* text);
void PrintError(const char* text);

class DosCabinet final : public CabinetFile {
 public:
    /// False when there is no such file or it cannot be opened.
    bool Open(const char* name);

    uint32_t Size() override;
    bool Read(uint32_t at, uint8_t* to, uint32_t count) override;
    bool Read(uint32_t at, FarBytes to, uint32_t count) override;

 private:
    bool Read(uint32_t at, uint16_t segment, uint16_t offset, uint32_t count);

    uint16_t handle_ = 0;
};

class DosTarget final : public TargetFolder {
 public:
    /// Chooses the target folder, at most 127 characters; "" is the current one. It is created with the first
    /// file or folder. `folder` stays with the caller and outlives the object.
    explicit DosTarget(const char* folder) : folder_(folder) {}
    /// Deletes the file that is not finished, if there is one.
    void Discard();

    Fault MakeFolder(const char* name) override;
    Fault Create(const char* name) override;
    Fault Write(FarBytes from, uint32_t at, uint32_t count) override;
    Fault Finish(const FileStamp& stamp) override;
    bool IsStopped() override;

 private:
    void MakeTarget();
    void SetPath(const char* name);
    Registers CallWithPath(uint16_t function, uint16_t cx = 0);
    Registers CallWithHandle(uint16_t function, uint16_t cx = 0, uint16_t dx = 0);
    bool Close();

    char path_[128 + 256];  // the folder with its separator, and a member's name
    const char* folder_;    // nullptr once it is created
    uint32_t folderLength_ = 0;
    uint16_t handle_ = 0;
    bool isOpen_ = false;
};

}  // namespace realmode::unpack
