#include "tests/realmode/unpack/FlatMachine.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "realmode/unpack/Unpacker.h"

namespace realmode::unpack::testing {

namespace {

void Require(bool holds, const char* rule) {
    if (!holds) throw std::logic_error(rule);
}

}  // namespace

bool FlatCabinet::Read(uint32_t at, uint8_t* to, uint32_t count) {
    if (at > bytes_.size() || count > bytes_.size() - at) return false;
    if (count > 0) std::memcpy(to, bytes_.data() + at, count);
    return true;
}

Fault FlatTarget::MakeFolder(const char* name) {
    const std::string path = name;
    const std::size_t end = path.find_last_of('\\');
    Require(end == std::string::npos || Folders.contains(path.substr(0, end)),
            "folders are created from the top");
    Folders.insert(path);
    return Fault::None;
}

Fault FlatTarget::Create(const char* name) {
    const std::string path = name;
    const std::size_t end = path.find_last_of('\\');
    if (end != std::string::npos && !Folders.contains(path.substr(0, end))) return Fault::CannotCreate;
    file_ = &Files[path];
    *file_ = {};
    Created.push_back(path);
    return Fault::None;
}

Fault FlatTarget::Write(FarBytes from, uint32_t at, uint32_t count) {
    Require(file_ != nullptr && !file_->IsFinished, "only an unfinished file is written to");
    Require(count > 0, "no empty write, which would cut a file of DOS");
    if (count > Capacity) return Fault::DiskFull;
    Capacity -= count;
    file_->Contents.insert(file_->Contents.end(), from.Pointer() + at, from.Pointer() + at + count);
    return Fault::None;
}

Fault FlatTarget::Finish(const FileStamp& stamp) {
    Require(file_ != nullptr && !file_->IsFinished, "only an unfinished file is finished");
    file_->Stamp = stamp;
    file_->IsFinished = true;
    return Fault::None;
}

bool FlatMemory::Allocate(uint32_t bytes, FarBytes& memory) {
    if (pieces_ == 0) return false;
    --pieces_;
    allocated_.push_back(std::make_unique<std::uint8_t[]>(bytes));
    memory = FarBytes(allocated_.back().get());
    return true;
}

bool FlatMemory::AllocateStore(uint32_t frames) {
    if (frames > storeFrames_) return false;
    store_.resize(std::size_t{frames} * kFrameBytes);
    return true;
}

bool FlatMemory::PutInStore(uint32_t frame, FarBytes from) {
    const std::size_t at = std::size_t{frame} * kFrameBytes;
    Require(at + kFrameBytes <= store_.size(), "the frame lies within the store");
    std::copy_n(from.Pointer(), kFrameBytes, store_.begin() + static_cast<std::ptrdiff_t>(at));
    return true;
}

const uint8_t* FlatMemory::GetFromStore(uint32_t frame, uint32_t at, uint32_t count) {
    Require(count <= kMaxMatchBytes && at + count <= kFrameBytes, "a part of one frame is wanted");
    const auto begin = store_.begin() + static_cast<std::ptrdiff_t>(std::size_t{frame} * kFrameBytes + at);
    match_.assign(begin, begin + count);
    return match_.data();
}

std::map<std::string, Bytes> Outcome::Tree() const {
    std::map<std::string, Bytes> tree;
    for (const auto& [name, file] : Target.Files) {
        std::string path = name;
        std::replace(path.begin(), path.end(), '\\', '/');
        tree[path] = file.Contents;
    }
    return tree;
}

Outcome Unpack(const Bytes& cabinet) {
    FlatMemory memory;
    return Unpack(cabinet, memory);
}

Outcome Unpack(const Bytes& cabinet, FlatMemory& memory) {
    Outcome outcome;
    FlatCabinet file(cabinet);
    // Too large for a stack.
    const auto unpacker = std::make_unique<Unpacker>(file, outcome.Target, memory);
    outcome.Result = unpacker->Run();
    if (unpacker->Subject() != nullptr) outcome.Subject = unpacker->Subject();
    return outcome;
}

}  // namespace realmode::unpack::testing
