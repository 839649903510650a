#include "tests/fuzz/MspackReader.h"

#include <mspack.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace fuzz {

namespace {

constexpr const char* kCabinetName = "cabinet";

struct MemorySystem;

// An open file: the cabinet for reading, or a member that is extracted.
struct MemoryFile : mspack_file {
    MemorySystem* Owner = nullptr;
    Bytes* Contents = nullptr;
    std::size_t Position = 0;
};

// libmspack passes back a pointer to the first member of this object.
struct MemorySystem : mspack_system {
    Bytes Cabinet;
    Bytes Extracted;
    bool Warned = false;
};

MemoryFile& FileOf(mspack_file* file) {
    return *static_cast<MemoryFile*>(file);
}

mspack_file* Open(mspack_system* self, const char* name, int mode) {
    auto& system = *static_cast<MemorySystem*>(self);
    auto file = std::make_unique<MemoryFile>();
    file->Owner = &system;
    file->Contents = std::strcmp(name, kCabinetName) == 0 ? &system.Cabinet : &system.Extracted;
    if (mode == MSPACK_SYS_OPEN_WRITE) file->Contents->clear();
    return file.release();
}

void Close(mspack_file* file) {
    delete static_cast<MemoryFile*>(file);
}

int Read(mspack_file* handle, void* buffer, int bytes) {
    MemoryFile& file = FileOf(handle);
    const std::size_t left = file.Contents->size() - std::min(file.Position, file.Contents->size());
    const std::size_t count = std::min(left, static_cast<std::size_t>(bytes));
    if (count > 0) std::memcpy(buffer, file.Contents->data() + file.Position, count);
    file.Position += count;
    return static_cast<int>(count);
}

int Write(mspack_file* handle, void* buffer, int bytes) {
    Bytes& contents = *FileOf(handle).Contents;
    const auto* const begin = static_cast<const std::uint8_t*>(buffer);
    contents.insert(contents.end(), begin, begin + bytes);
    return bytes;
}

int Seek(mspack_file* handle, off_t offset, int mode) {
    MemoryFile& file = FileOf(handle);
    off_t base = 0;
    if (mode == MSPACK_SYS_SEEK_CUR) base = static_cast<off_t>(file.Position);
    if (mode == MSPACK_SYS_SEEK_END) base = static_cast<off_t>(file.Contents->size());
    if (base + offset < 0) return -1;
    file.Position = static_cast<std::size_t>(base + offset);
    return 0;
}

off_t Tell(mspack_file* handle) {
    return static_cast<off_t>(FileOf(handle).Position);
}

// The system that a warning belongs to is known only while a file is open, and ours always are.
void Message(mspack_file* handle, const char*, ...) {
    if (handle != nullptr) FileOf(handle).Owner->Warned = true;
}

void* Allocate(mspack_system*, std::size_t bytes) {
    return std::malloc(bytes);
}

void Free(void* memory) {
    std::free(memory);
}

void Copy(void* source, void* target, std::size_t bytes) {
    std::memcpy(target, source, bytes);
}

void FillIn(MemorySystem& system) {
    system.open = Open;
    system.close = Close;
    system.read = Read;
    system.write = Write;
    system.seek = Seek;
    system.tell = Tell;
    system.message = Message;
    system.alloc = Allocate;
    system.free = Free;
    system.copy = Copy;
    system.null_ptr = nullptr;
}

// A decompressor and the cabinet that it has opened.
class Decompressor {
 public:
    explicit Decompressor(MemorySystem& system) : cab_(mspack_create_cab_decompressor(&system)) {
        Require(cab_ != nullptr, "libmspack starts");
    }
    ~Decompressor() {
        if (cabinet_ != nullptr) cab_->close(cab_, cabinet_);
        mspack_destroy_cab_decompressor(cab_);
    }
    Decompressor(const Decompressor&) = delete;
    Decompressor& operator=(const Decompressor&) = delete;

    mscabd_file* Open() {
        cabinet_ = cab_->open(cab_, kCabinetName);
        Require(cabinet_ != nullptr,
                "libmspack opens the cabinet, error " + std::to_string(cab_->last_error(cab_)));
        return cabinet_->files;
    }

    void Extract(mscabd_file* file) {
        const int error = cab_->extract(cab_, file, "member");
        Require(error == MSPACK_ERR_OK,
                std::string("libmspack extracts ") + file->filename + ", error " + std::to_string(error));
    }

 private:
    mscab_decompressor* cab_;
    mscabd_cabinet* cabinet_ = nullptr;
};

unsigned Unsigned(int value) {
    return static_cast<unsigned>(value);
}

}  // namespace

std::vector<MspackMember> ReadWithMspack(const Bytes& cabinet) {
    MemorySystem system;
    FillIn(system);
    system.Cabinet = cabinet;
    Decompressor decompressor(system);
    std::vector<MspackMember> members;
    for (mscabd_file* file = decompressor.Open(); file != nullptr; file = file->next) {
        system.Extracted.clear();
        decompressor.Extract(file);
        MspackMember member;
        member.Name = file->filename;
        member.Contents = system.Extracted;
        member.Attributes = Unsigned(file->attribs);
        member.Date =
            Unsigned(file->date_y - 1980) << 9 | Unsigned(file->date_m) << 5 | Unsigned(file->date_d);
        member.Time = Unsigned(file->time_h) << 11 | Unsigned(file->time_m) << 5 | Unsigned(file->time_s) / 2;
        Require(member.Contents.size() == file->length, "libmspack extracts the whole member");
        members.push_back(std::move(member));
    }
    Require(!system.Warned, "libmspack has nothing to warn of");
    return members;
}

}  // namespace fuzz
