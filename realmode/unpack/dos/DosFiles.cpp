#include "realmode/unpack/dos/DosFiles.h"

#include "realmode/unpack/dos/Calls.h"

namespace realmode::unpack {

namespace {

constexpr uint16_t kScreen = 1;
constexpr uint16_t kErrors = 2;

// Functions of DOS, AX.
constexpr uint16_t kMakeFolder = 0x3900;
constexpr uint16_t kCreate = 0x3C00;
constexpr uint16_t kClose = 0x3E00;
constexpr uint16_t kDelete = 0x4100;
constexpr uint16_t kGetAttributes = 0x4300;
constexpr uint16_t kSetAttributes = 0x4301;
constexpr uint16_t kGetDeviceData = 0x4400;
constexpr uint16_t kSetTime = 0x5701;

constexpr uint16_t kIsDevice = 0x80;
constexpr uint16_t kFolderAttribute = 0x10;
constexpr uint16_t kUsualAttributes = 0x20;     // of a file that was just written: archive
constexpr uint16_t kSettableAttributes = 0x27;  // read-only, hidden, system, archive

void PrintTo(uint16_t handle, const char* text) {
    uint16_t length = 0;
    while (text[length] != '\0') ++length;
    Registers registers{.Ax = 0x4000, .Bx = handle, .Cx = length, .Dx = OffsetOf(text)};
    CallDos(registers);
}

}  // namespace

void Print(const char* text) {
    PrintTo(kScreen, text);
}

void PrintError(const char* text) {
    PrintTo(kErrors, text);
}

bool DosCabinet::Open(const char* name) {
    Registers registers{.Ax = 0x3D00, .Dx = OffsetOf(name)};
    if (!Dos(registers)) return false;
    handle_ = registers.Ax;
    return true;
}

uint32_t DosCabinet::Size() {
    Registers registers{.Ax = 0x4202, .Bx = handle_};
    return Dos(registers) ? uint32_t{registers.Dx} << 16 | registers.Ax : 0;
}

bool DosCabinet::Read(uint32_t at, uint8_t* to, uint32_t count) {
    return Read(at, OwnSegment(), OffsetOf(to), count);
}

bool DosCabinet::Read(uint32_t at, FarBytes to, uint32_t count) {
    return Read(at, to.Segment(), 0, count);
}

bool DosCabinet::Read(uint32_t at, uint16_t segment, uint16_t offset, uint32_t count) {
    Registers seek{
        .Ax = 0x4200, .Bx = handle_, .Cx = static_cast<uint16_t>(at >> 16), .Dx = static_cast<uint16_t>(at)};
    Registers read{
        .Ax = 0x3F00, .Bx = handle_, .Cx = static_cast<uint16_t>(count), .Dx = offset, .Ds = segment};
    return Dos(seek) && Dos(read) && read.Ax == count;
}

// Makes each folder of the path, and leaves the path with its separator.
void DosTarget::MakeTarget() {
    const char* const folder = folder_;
    folder_ = nullptr;
    uint32_t length = 0;
    for (; folder[length] != '\0'; ++length) {
        const char c = folder[length] == '/' ? '\\' : folder[length];
        if (c == '\\') {
            path_[length] = '\0';
            CallWithPath(kMakeFolder);
        }
        path_[length] = c;
    }
    path_[length] = '\0';
    if (length == 0) return;
    CallWithPath(kMakeFolder);
    if (path_[length - 1] != '\\' && path_[length - 1] != ':') path_[length++] = '\\';
    folderLength_ = length;
}

void DosTarget::SetPath(const char* name) {
    if (folder_ != nullptr) MakeTarget();
    uint32_t length = folderLength_;
    do {
        path_[length++] = *name;
    } while (*name++ != '\0');
}

Registers DosTarget::CallWithPath(uint16_t function, uint16_t cx) {
    Registers registers{.Ax = function, .Cx = cx, .Dx = OffsetOf(path_)};
    CallDos(registers);
    return registers;
}

Registers DosTarget::CallWithHandle(uint16_t function, uint16_t cx, uint16_t dx) {
    Registers registers{.Ax = function, .Bx = handle_, .Cx = cx, .Dx = dx};
    CallDos(registers);
    return registers;
}

Fault DosTarget::MakeFolder(const char* name) {
    SetPath(name);
    if (!CallWithPath(kMakeFolder).Carry) return Fault::None;
    const Registers existing = CallWithPath(kGetAttributes);
    const bool isFolder = !existing.Carry && (existing.Cx & kFolderAttribute) != 0;
    return isFolder ? Fault::None : Fault::CannotMakeFolder;
}

Fault DosTarget::Create(const char* name) {
    SetPath(name);
    Print(path_);
    Print("\r\n");
    Registers file = CallWithPath(kCreate);
    if (file.Carry) {
        // DOS refuses to replace a read-only, hidden or system file.
        CallWithPath(kSetAttributes, 0);
        file = CallWithPath(kCreate);
    }
    if (file.Carry) return Fault::CannotCreate;
    handle_ = file.Ax;
    isOpen_ = true;
    if ((CallWithHandle(kGetDeviceData).Dx & kIsDevice) == 0) return Fault::None;
    Close();
    return Fault::IsADevice;
}

Fault DosTarget::Write(FarBytes from, uint32_t at, uint32_t count) {
    Registers registers{.Ax = 0x4000,
                        .Bx = handle_,
                        .Cx = static_cast<uint16_t>(count),
                        .Dx = static_cast<uint16_t>(at),
                        .Ds = from.Segment()};
    CallDos(registers);
    if (registers.Carry) return Fault::CannotWrite;
    return registers.Ax == count ? Fault::None : Fault::DiskFull;
}

Fault DosTarget::Finish(const FileStamp& stamp) {
    bool isDone = !CallWithHandle(kSetTime, stamp.Time, stamp.Date).Carry;
    isDone &= Close();
    const uint16_t attributes = stamp.Attributes & kSettableAttributes;
    if (attributes != kUsualAttributes) isDone &= !CallWithPath(kSetAttributes, attributes).Carry;
    return isDone ? Fault::None : Fault::CannotWrite;
}

bool DosTarget::Close() {
    isOpen_ = false;
    return !CallWithHandle(kClose).Carry;
}

void DosTarget::Discard() {
    if (!isOpen_) return;
    Close();
    CallWithPath(kDelete);
}

bool DosTarget::IsStopped() {
    return isStopped;
}

}  // namespace realmode::unpack
