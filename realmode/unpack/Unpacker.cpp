#include "realmode/unpack/Unpacker.h"

#include "realmode/unpack/MemberPath.h"

namespace realmode::unpack {

namespace {

constexpr uint16_t kIsFolder = 0x10;  // an attribute that a few packers store

}  // namespace

Fault Unpacker::Run() {
    Fault fault = cabinet_.Open();
    if (fault == Fault::None) fault = CheckMembers();
    if (fault == Fault::None) fault = folder_.Allocate(windowFrames_);
    current_ = kNoFolder;
    cabinet_.Rewind();
    for (uint32_t left = cabinet_.MemberCount(); left > 0 && fault == Fault::None; --left) {
        fault = cabinet_.NextMember(member_);
        if (fault == Fault::None) fault = UnpackMember();
    }
    return fault;
}

Fault Unpacker::CheckMembers() {
    for (uint32_t left = cabinet_.MemberCount(); left > 0; --left) {
        Fault fault = cabinet_.NextMember(member_);
        if (fault == Fault::None) fault = CheckMember();
        if (fault != Fault::None) return fault;
    }
    return Fault::None;
}

Fault Unpacker::CheckMember() {
    subject_ = member_.Name;
    Fault fault = CheckPath(member_.Name);
    if (fault != Fault::None) return fault;
    subject_ = nullptr;
    if (member_.Folder != current_) {
        fault = cabinet_.ReadFolder(member_.Folder, record_);
        if (fault != Fault::None) return fault;
        current_ = member_.Folder;
    }
    if (member_.Size == 0) return Fault::None;
    const uint32_t frames = FolderReader::WindowFrames(record_);
    if (frames > windowFrames_) windowFrames_ = frames;
    // A folder has fewer than 2^31 bytes.
    const uint32_t bytes = record_.Records * kFrameBytes;
    const bool isInside = member_.Offset <= bytes && member_.Size <= bytes - member_.Offset;
    return isInside ? Fault::None : Fault::BadDirectory;
}

Fault Unpacker::UnpackMember() {
    subject_ = member_.Name;
    Fault fault = CheckPath(member_.Name);
    if (fault == Fault::None) fault = MakeFolders();
    if (fault != Fault::None) return fault;
    if (member_.Size == 0 && (member_.Stamp.Attributes & kIsFolder) != 0)
        return target_.MakeFolder(member_.Name);
    fault = target_.Create(member_.Name);
    if (fault == Fault::None && member_.Size > 0) fault = WriteContents();
    return fault == Fault::None ? target_.Finish(member_.Stamp) : fault;
}

// Makes the folders above the member, from the top.
Fault Unpacker::MakeFolders() {
    char* const name = member_.Name;
    const uint32_t length = FolderLength(name);
    bool isNew = lastFolder_[length] != '\0';
    for (uint32_t i = 0; i < length; ++i) isNew |= lastFolder_[i] != name[i];
    if (!isNew) return Fault::None;
    for (uint32_t i = 0; i <= length; ++i) {
        lastFolder_[i] = '\0';
        if (name[i] == '\\') {
            const Fault fault = target_.MakeFolder(lastFolder_);
            if (fault != Fault::None) return fault;
        }
        lastFolder_[i] = name[i];
    }
    lastFolder_[length] = '\0';
    return Fault::None;
}

// Brings the folder reader to the member's folder and first byte. Members stand in the order of their data.
Fault Unpacker::FindFolder() {
    if (member_.Folder != current_) {
        const Fault fault = cabinet_.ReadFolder(member_.Folder, record_);
        if (fault != Fault::None) return fault;
        current_ = member_.Folder;
        folder_.Begin(record_);
    }
    return member_.Offset >= folder_.FrameStart() ? Fault::None : Fault::BadDirectory;
}

Fault Unpacker::WriteContents() {
    subject_ = nullptr;
    Fault fault = FindFolder();
    uint32_t at = member_.Offset;
    const uint32_t end = at + member_.Size;
    while (at < end && fault == Fault::None) {
        if (target_.IsStopped()) return Fault::Stopped;
        if (at >= folder_.FrameEnd()) {
            fault = folder_.NextFrame();
            continue;
        }
        const uint32_t stop = end < folder_.FrameEnd() ? end : folder_.FrameEnd();
        fault = target_.Write(folder_.Frame(), at - folder_.FrameStart(), stop - at);
        if (fault != Fault::None) subject_ = member_.Name;
        at = stop;
    }
    return fault;
}

}  // namespace realmode::unpack
