#pragma once
// Unpacks a cabinet to a folder. Its whole list of files is looked at first, so that nothing is written of a
// cabinet that is refused.

#include <stdint.h>

#include "realmode/unpack/CabinetReader.h"
#include "realmode/unpack/FolderReader.h"
#include "realmode/unpack/Machine.h"

namespace realmode::unpack {

class Unpacker {
 public:
    Unpacker(CabinetFile& cabinet, TargetFolder& target, Memory& memory)
        : target_(target), cabinet_(cabinet), folder_(cabinet_, memory) {}
    Unpacker(const Unpacker&) = delete;
    Unpacker& operator=(const Unpacker&) = delete;

    /// Unpacks every member. After a fault the file that was being written is not complete.
    Fault Run();

    /// What the fault is about: the name of a member, or nullptr for the cabinet.
    const char* Subject() const { return subject_; }

 private:
    Fault CheckMembers();
    Fault CheckMember();
    Fault UnpackMember();
    Fault MakeFolders();
    Fault WriteContents();
    Fault FindFolder();

    TargetFolder& target_;
    CabinetReader cabinet_;
    FolderReader folder_;
    Member member_;
    FolderRecord record_;
    uint32_t current_ = kNoFolder;  // the number of the folder in record_
    uint32_t windowFrames_ = 0;
    const char* subject_ = nullptr;
    char lastFolder_[Member::kMaxName + 1] = {};

    static constexpr uint32_t kNoFolder = 0xFFFFFFFF;
};

}  // namespace realmode::unpack
